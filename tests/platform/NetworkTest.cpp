// Groups of the network, names of computers, and who has a port: on this computer, as far as it has them.
#include <QNetworkDatagram>
#include <QNetworkInterface>

#include "platform/linux/UdpPortUser.h"
#include "platform/qt/QtHostResolver.h"
#include "platform/qt/QtMulticastListener.h"
#include "platform/qt/QtUdpSocket.h"
#include "tests/Test.h"
#include "tests/fakes/ScratchFolder.h"
#include "tests/platform/WaitUntil.h"

namespace tvx {
namespace {

constexpr const char* kGroup = "239.255.1.1";

std::uint16_t FreePort() {
  QUdpSocket socket;
  socket.bind(QHostAddress(QHostAddress::AnyIPv4), 0);
  return socket.localPort();
}

struct Heard {
  explicit Heard(MulticastListener& listener)
      : registration(listener.SetHandler([this](ByteView bytes, const MulticastListener::Sender& from) {
          texts.emplace_back(bytes.begin(), bytes.end());
          sender = from;
        })) {}
  Texts texts;
  MulticastListener::Sender sender;
  Registration registration;
};

TEST(QtMulticastListener, TwoProgramsHearTheGroupAndCloseEndsIt) {
  const std::uint16_t port = FreePort();
  QtMulticastListener one(kGroup, port), other(kGroup, port);
  Heard heard(one), heardByOther(other);
  if (!one.Open()) GTEST_SKIP() << one.LastError();
  ASSERT_TRUE(one.Open()) << "again, for cards that have come up since";
  ASSERT_TRUE(other.Open()) << other.LastError();
  QUdpSocket sender;
  if (sender.writeDatagram("hello", 5, QHostAddress(kGroup), port) != 5) GTEST_SKIP() << "no way to a group";
  if (!WaitUntil([&] { return !heard.texts.empty(); })) GTEST_SKIP() << "nothing comes back from the network";
  EXPECT_TRUE(WaitUntil([&] { return !heardByOther.texts.empty(); }));
  EXPECT_EQ(heard.texts[0], "hello");
  EXPECT_TRUE(heard.sender.thisComputer);
  one.Close();
  const std::size_t before = heard.texts.size();
  sender.writeDatagram("again", 5, QHostAddress(kGroup), port);
  EXPECT_TRUE(WaitUntil([&] { return heardByOther.texts.back() == "again"; }));
  EXPECT_EQ(heard.texts.size(), before);
}

TEST(QtMulticastListener, SaysWhyItHearsNothing) {
  QUdpSocket alone;
  ASSERT_TRUE(alone.bind(QHostAddress(QHostAddress::LocalHost), 0, QAbstractSocket::DontShareAddress));
  QtMulticastListener listener("127.0.0.1", alone.localPort());
  EXPECT_FALSE(listener.Open());
  EXPECT_TRUE(Begins(listener.LastError(), "port " + std::to_string(alone.localPort()) + ": "));
  alone.close();
  EXPECT_TRUE(listener.Open());
  EXPECT_EQ(listener.LastError(), "");
}

TEST(QtHostResolver, FindsThisComputerAndSaysWhatItDoesNotFind) {
  QtHostResolver resolver;
  std::vector<HostLookup> results;
  const auto keep = [&](const HostLookup& result) { results.push_back(result); };
  const Registration first = resolver.Lookup("localhost", keep);
  EXPECT_TRUE(results.empty()) << "it does not wait";
  ASSERT_TRUE(WaitUntil([&] { return results.size() == 1; }));
  EXPECT_EQ(results[0].address, "127.0.0.1");
  Registration given = resolver.Lookup("localhost", keep);
  given.End();
  const Registration second = resolver.Lookup("name.invalid", keep);
  if (!WaitUntil([&] { return results.size() == 2; }))
    GTEST_SKIP() << "this computer's resolver does not answer";
  EXPECT_EQ(results[1].address, "") << "the one that was given up is not told of";
  EXPECT_NE(results[1].error, "");
}

struct UdpPortUserTest : testing::Test, ScratchFolder {};

TEST_F(UdpPortUserTest, ReadsTheTableAndTheOpenFiles) {
  Put("proc/net/udp",
      "   sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout inode\n"
      "  501: 00000000:BF6B 00000000:0000 07 00000000:00000000 00:00000000 00000000  1000        0 4711 2 0 "
      "0\n"
      "  502: 0100007F:BF6C 00000000:0000 07 00000000:00000000 00:00000000 00000000  1000        0 4712 2 0 "
      "0\n"
      "broken\n");
  Put("proc/77/comm", "other-program\n");
  Put("proc/self/comm", "not a number\n");
  Link("socket:[4711]", "proc/self/fd/1");
  Link("socket:[4712]", "proc/77/fd/3");
  Link("socket:[4711]", "proc/77/fd/4");
  EXPECT_EQ(UserOfUdpPort(49003, Path()), "other-program (77)");
  EXPECT_EQ(UserOfUdpPort(49005, Path()), "");
  EXPECT_EQ(UserOfUdpPort(49003, Path() + "/nowhere"), "");
}

TEST(QtUdpSocket, NamesWhoHasThePort) {
  QUdpSocket other;
  other.bind(QHostAddress(QHostAddress::AnyIPv4), 0, QAbstractSocket::DontShareAddress);
  const UdpEndpoints here{"127.0.0.1", 49000, other.localPort()};
  int asked = 0;
  QtUdpSocket socket([&asked](std::int32_t port) {
    ++asked;
    return UserOfUdpPort(port);
  });
  for (int i = 0; i < 50; ++i) EXPECT_FALSE(socket.SetUp(here));
  EXPECT_EQ(asked, 0) << "looking costs time, and nobody wants to know yet";
  const std::string words = "local port " + std::to_string(here.localPort) + " is used by another program: ";
  EXPECT_TRUE(Begins(socket.LastError(), words));
  EXPECT_TRUE(Holds(socket.LastError(), "(" + std::to_string(getpid()) + ")"));
  EXPECT_EQ(asked, 1);
  other.close();
  EXPECT_TRUE(socket.SetUp(here));
  EXPECT_EQ(socket.LastError(), "");
}

}  // namespace
}  // namespace tvx
