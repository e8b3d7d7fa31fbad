// Names of computers in place of addresses, over a network in memory.
#include "platform/HostName.h"
#include "platform/NamedHostSocket.h"
#include "tests/Test.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeUdpSocket.h"

namespace tvx {
namespace {

TEST(HostName, TellsAddressesFromNames) {
  const std::string part(63, 'a');
  const std::string longest = part + '.' + part + '.' + part + '.' + part.substr(2);
  const std::string tooLong = longest + 'a', tooLongPart = part + 'a';
  const auto expect = [](std::initializer_list<std::string_view> texts, bool address, bool name) {
    for (const std::string_view text : texts) {
      EXPECT_EQ(ParseIPv4(text).has_value(), address) << text;
      EXPECT_EQ(IsHostName(text), name) << text;
    }
  };
  expect({"192.168.1.20", "0.0.0.0"}, true, false);
  expect({"simpc", "sim-pc_2.local", "7seas", "h\xC3\xBChne", longest}, false, true);
  expect({"192.168.1", "192.168.1.256", "1.2.3.4.5", "1.2.3.0004", "1.2.3.-4", " 1.2.3.4"}, false, false);
  expect({"", "sim pc", "-sim", "sim.", "sim..local", "sim;pc", tooLong, tooLongPart}, false, false);
  EXPECT_EQ(ParseIPv4("1.2.3.4"), 0x01020304u);
}

// Answers when the test says so.
class FakeResolver final : public HostResolver {
 public:
  Texts asked;

  Registration Lookup(const std::string& name, Done done) override {
    asked.push_back(name);
    return done_.Give(std::move(done));
  }
  void Answer(const HostLookup& result) { done_(result); }

 private:
  Callback<const HostLookup&> done_;
};

struct NamedHostSocketTest : testing::Test {
  Texts Hosts() const {
    Texts hosts;
    for (const UdpEndpoints& endpoints : inner.SetUps) hosts.push_back(endpoints.remoteHost);
    return hosts;
  }

  FakeUdpSocket inner;
  FakeResolver resolver;
  FakeClock clock;
  NamedHostSocket socket{inner, resolver, clock};
  const UdpEndpoints named{"simpc", 49000, 49003};
};

TEST_F(NamedHostSocketTest, AnAddressGoesStraightThroughAndSoDoesWhatIsNeither) {
  EXPECT_TRUE(socket.SetUp({"10.0.0.2", 49000, 49003}));
  inner.SetUpError = "\"10.0.0\" is no IPv4 address";
  EXPECT_FALSE(socket.SetUp({"10.0.0", 49000, 49003}));
  EXPECT_EQ(socket.LastError(), inner.SetUpError);
  EXPECT_EQ(Hosts(), (Texts{"10.0.0.2", "10.0.0"}));
  EXPECT_TRUE(resolver.asked.empty());
}

TEST_F(NamedHostSocketTest, ANameIsLookedUpOnceAndTheSocketThenOpensByItself) {
  EXPECT_FALSE(socket.SetUp(named));
  EXPECT_FALSE(socket.SetUp({"simpc", 49001, 49004})) << "asked for differently while the lookup goes on";
  EXPECT_EQ(socket.LastError(), "the address of \"simpc\" is being looked up");
  EXPECT_FALSE(socket.IsOpen());
  resolver.Answer({"10.0.0.7", {}});
  EXPECT_EQ(resolver.asked, Texts{"simpc"});
  EXPECT_EQ(inner.SetUps, (std::vector<UdpEndpoints>{{"10.0.0.7", 49001, 49004}}));
  EXPECT_TRUE(socket.IsOpen());
  EXPECT_EQ(socket.LastError(), "");
  EXPECT_TRUE(socket.SetUp(named)) << "known from now on";
  EXPECT_EQ(Hosts().back(), "10.0.0.7");
  EXPECT_EQ(resolver.asked.size(), 1u);
}

TEST_F(NamedHostSocketTest, AClosedSocketStaysClosedAndTheAddressIsKept) {
  socket.SetUp(named);
  socket.Close();
  resolver.Answer({"10.0.0.7", {}});
  EXPECT_FALSE(socket.IsOpen());
  EXPECT_TRUE(socket.SetUp(named));
}

TEST_F(NamedHostSocketTest, ANameThatIsNotFoundIsLookedUpAgainAfterAWhile) {
  socket.SetUp(named);
  resolver.Answer({{}, "Host not found"});
  EXPECT_EQ(socket.LastError(), "no computer with the name \"simpc\" was found (Host not found)");
  clock.Advance(NamedHostSocket::kAskAgainMs - 1);
  EXPECT_FALSE(socket.SetUp(named));
  EXPECT_EQ(resolver.asked.size(), 1u);
  clock.Advance(1);
  EXPECT_FALSE(socket.SetUp(named));
  EXPECT_EQ(resolver.asked.size(), 2u);
  EXPECT_TRUE(Holds(socket.LastError(), "was found")) << "the words stay until there is news";
  resolver.Answer({"10.0.0.7", {}});
  EXPECT_TRUE(socket.IsOpen());
}

TEST_F(NamedHostSocketTest, ASilentComputerIsLookedUpAgainAndFollowedWhileTheSocketWorksOn) {
  socket.SetUp(named);
  resolver.Answer({"10.0.0.7", {}});
  clock.Advance(NamedHostSocket::kSilenceToAskMs - 1);
  inner.Deliver("DATA*");
  clock.Advance(NamedHostSocket::kSilenceToAskMs - 1);
  socket.Send({});
  EXPECT_EQ(resolver.asked.size(), 1u) << "it is not silent yet";
  inner.Sender = {0x0A000063, 49001, false};
  inner.Deliver("DATA*");  // of another computer, or of its own new address
  clock.Advance(1);
  socket.Send({});
  socket.Send({});
  EXPECT_EQ(resolver.asked.size(), 2u);
  EXPECT_TRUE(socket.SetUp(named)) << "with the address of before";
  resolver.Answer({{}, "Host not found"});
  EXPECT_TRUE(socket.IsOpen());
  clock.Advance(NamedHostSocket::kSilenceToAskMs);
  EXPECT_TRUE(socket.SetUp(named));
  resolver.Answer({"10.0.0.8", {}});
  EXPECT_EQ(Hosts().back(), "10.0.0.8");
  EXPECT_EQ(resolver.asked.size(), 3u);
}

TEST_F(NamedHostSocketTest, AnotherNameOrAnAddressMakesTheOldLookupVain) {
  socket.SetUp(named);
  socket.SetUp({"other", 49000, 49003});
  EXPECT_EQ(resolver.asked, (Texts{"simpc", "other"}));
  socket.SetUp({"10.0.0.2", 49000, 49003});
  resolver.Answer({"10.0.0.9", {}});
  EXPECT_EQ(Hosts(), Texts{"10.0.0.2"});
}

TEST_F(NamedHostSocketTest, WhatArrivesAndWhatFailsIsHandedOn) {
  std::size_t bytes = 0;
  int code = 0;
  const Registration arrivals = socket.SetArrivalHandler([&](std::size_t total) { bytes = total; });
  const Registration errors = socket.SetErrorHandler([&](int failed, std::string_view) { code = failed; });
  inner.Deliver("DATA*");
  inner.RaiseError(7, "gone");
  EXPECT_EQ(bytes, 5u);
  EXPECT_EQ(code, 7);
}

}  // namespace
}  // namespace tvx
