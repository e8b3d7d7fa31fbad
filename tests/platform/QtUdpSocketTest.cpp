// The real datagram socket, over loopback.
#include "platform/qt/QtUdpSocket.h"
#include "tests/Test.h"
#include "tests/platform/WaitUntil.h"

namespace tvx {
namespace {

std::int32_t FreePort() {
  QUdpSocket socket;
  socket.bind(QHostAddress(QHostAddress::AnyIPv4), 0);
  return socket.localPort();
}

struct QtUdpSocketTest : testing::Test {
  QtUdpSocketTest() {
    arrivals = socket.SetArrivalHandler([this](std::size_t bytesTotal) {
      totals.push_back(bytesTotal);
      senders.push_back(socket.WaitingSender().port);
      fromRemote.push_back(socket.WaitingSender().isRemote);
      if (!reads) return;
      Byte room[100];
      const std::size_t count = socket.Receive(room);
      got.emplace_back(room, room + count);
    });
    failures = socket.SetErrorHandler([this](int, std::string_view) { ++errors; });
    sim.bind(QHostAddress(QHostAddress::LocalHost), 0);
    here = {"127.0.0.1", sim.localPort(), FreePort()};
  }
  void FromSim(const Bytes& bytes) {
    sim.writeDatagram(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()),
                      QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(here.localPort));
  }

  Registration arrivals, failures;
  QtUdpSocket socket;
  QUdpSocket sim;
  UdpEndpoints here;
  std::vector<std::size_t> totals;
  std::vector<Bytes> got;
  std::vector<std::int32_t> senders;
  std::vector<bool> fromRemote;
  bool reads = true;
  int errors = 0;
};

TEST_F(QtUdpSocketTest, KnowsTheRemoteHostsDatagrams) {
  const struct {
    const char *remote, *sender;
    bool isRemote;
  } cases[] = {{"127.0.0.1", "127.0.0.1", true},
               {"127.0.0.1", "127.0.0.2", true},  // this computer, over another of its addresses
               {"127.0.0.3", "127.0.0.2", true},
               {"192.0.2.7", "127.0.0.1", false}};
  for (const auto& row : cases) {
    here.remoteHost = row.remote;
    ASSERT_TRUE(socket.SetUp(here)) << socket.LastError();
    QUdpSocket sender;
    ASSERT_TRUE(sender.bind(QHostAddress(row.sender), 0));
    fromRemote.clear();
    sender.writeDatagram("x", 1, QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(here.localPort));
    ASSERT_TRUE(WaitUntil([&] { return !fromRemote.empty(); }));
    EXPECT_EQ(fromRemote[0], row.isRemote) << row.remote << " " << row.sender;
  }
}

TEST_F(QtUdpSocketTest, DatagramsTravelBothWaysAndTheRemotePortCanChange) {
  ASSERT_TRUE(socket.SetUp(here)) << socket.LastError();
  EXPECT_TRUE(socket.Send(Bytes{'D', 'S', 0, 0xFF}));
  ASSERT_TRUE(WaitUntil([&] { return sim.hasPendingDatagrams(); }));
  char room[10];
  EXPECT_EQ(sim.readDatagram(room, sizeof room), 4);
  FromSim({1, 2, 3});
  FromSim({4});
  ASSERT_TRUE(WaitUntil([&] { return got.size() == 2; }));
  EXPECT_EQ(got, (std::vector<Bytes>{{1, 2, 3}, {4}}));
  EXPECT_EQ(totals, (std::vector<std::size_t>{3, 1}));
  EXPECT_EQ(senders, (std::vector<std::int32_t>{sim.localPort(), sim.localPort()}));
  QUdpSocket other;
  other.bind(QHostAddress(QHostAddress::LocalHost), 0);
  socket.SetRemotePort(other.localPort());
  EXPECT_TRUE(socket.Send(Bytes{9}));
  EXPECT_TRUE(WaitUntil([&] { return other.hasPendingDatagrams(); }));
}

TEST_F(QtUdpSocketTest, ARepeatedSetUpLosesNothingThatHasArrived) {
  ASSERT_TRUE(socket.SetUp(here));
  FromSim({1});
  ASSERT_TRUE(socket.SetUp(here));
  FromSim({2});
  UdpEndpoints elsewhere = here;
  elsewhere.localPort = FreePort();
  ASSERT_TRUE(socket.SetUp(elsewhere));
  EXPECT_EQ(got, (std::vector<Bytes>{{1}, {2}}));  // handed over before the port was given up
  FromSim({3});                                    // nobody is there any more
  here = elsewhere;
  FromSim({4});
  ASSERT_TRUE(WaitUntil([&] { return got.size() == 3; }));
  EXPECT_EQ(got.back(), Bytes{4});
}

TEST_F(QtUdpSocketTest, ATakenPortAndBadAddressesAreRefusedInWords) {
  QUdpSocket taker;
  ASSERT_TRUE(taker.bind(QHostAddress(QHostAddress::AnyIPv4), 0));
  const std::int32_t local = here.localPort;
  const std::pair<UdpEndpoints, const char*> cases[] = {
      {{"127.0.0.1", 49000, taker.localPort()}, "is used by another program"},
      {{"localhost", 49000, local}, "\"localhost\" is no IPv4 address"},
      {{"127.0.0.1", 0, local}, "remote port"},
      {{"127.0.0.1", 65536, local}, "remote port"},
      {{"127.0.0.1", 49000, -1}, "local port"},
      {{"127.0.0.256", 49000, local}, "no IPv4 address"},
      {{"127.0.1", 49000, local}, "no IPv4 address"},
  };
  for (const auto& [endpoints, words] : cases) {
    ASSERT_TRUE(socket.SetUp(here));
    EXPECT_FALSE(socket.SetUp(endpoints));
    EXPECT_TRUE(Holds(socket.LastError(), words));
    EXPECT_FALSE(socket.Send(Bytes{1}));
  }
  EXPECT_EQ(errors, 0);
}

TEST_F(QtUdpSocketTest, OddDatagramsNeverBlockTheNext) {
  ASSERT_TRUE(socket.SetUp(here));
  FromSim(Bytes(5000, 7));
  FromSim({});
  FromSim({1});
  ASSERT_TRUE(WaitUntil([&] { return got.size() == 3; }));
  EXPECT_EQ(totals, (std::vector<std::size_t>{5000, 0, 1}));
  EXPECT_EQ(got, (std::vector<Bytes>{Bytes(100, 7), {}, {1}}));

  reads = false;  // a handler that leaves them alone
  FromSim({2});
  FromSim({3});
  ASSERT_TRUE(WaitUntil([&] { return totals.size() == 5; }));
  Byte room[10];
  EXPECT_EQ(socket.Receive(room), 0u);
  EXPECT_EQ(errors, 0);
}

TEST_F(QtUdpSocketTest, AnAbsentSimulatorIsNoError) {
  sim.close();
  ASSERT_TRUE(socket.SetUp(here));
  for (int i = 0; i < 5; ++i) EXPECT_TRUE(socket.Send(Bytes{1}));
  EXPECT_FALSE(socket.Send(Bytes(70000)));  // the system takes no datagram of that size
  ASSERT_TRUE(sim.bind(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(here.remotePort)));
  FromSim({1});
  EXPECT_TRUE(WaitUntil([&] { return got.size() == 1; }));
  EXPECT_EQ(errors, 0);
}

TEST_F(QtUdpSocketTest, AHandlerMayCloseTheSocket) {
  ASSERT_TRUE(socket.SetUp(here));
  int calls = 0;
  arrivals = socket.SetArrivalHandler([&](std::size_t) {
    ++calls;
    socket.Close();
  });
  FromSim({1});
  FromSim({2});
  ASSERT_TRUE(WaitUntil([&] { return calls > 0; }));
  ASSERT_TRUE(socket.SetUp(here));
  FromSim({3});
  ASSERT_TRUE(WaitUntil([&] { return calls > 1; }));
  EXPECT_EQ(calls, 2);
}

}  // namespace
}  // namespace tvx
