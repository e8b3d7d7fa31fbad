// The stand-in simulator on real sockets.
#include <QElapsedTimer>
#include <QUdpSocket>

#include "tests/Test.h"
#include "tests/platform/WaitUntil.h"
#include "tests/virtualcockpit/Bytes.h"
#include "virtualcockpit/sim/SimulatorService.h"

namespace tvx::vc {
namespace {

constexpr std::string_view kRpm = "sim/cockpit2/engine/indicators/engine_speed_rpm[0]";

template <typename Condition>
bool Eventually(Condition&& condition) {
  return WaitUntil(condition, std::chrono::seconds(10));
}

struct ServiceTest : testing::Test {
  ServiceTest() {
    client_.bind(QHostAddress::LocalHost, 0);
    service_.SetBeaconTarget({kThisComputer, client_.localPort()});
  }
  void Send(const Bytes& datagram) {
    client_.writeDatagram(reinterpret_cast<const char*>(datagram.data()),
                          static_cast<qint64>(datagram.size()), QHostAddress::LocalHost, service_.Port());
  }

  SimulatorService service_;
  QUdpSocket client_;
};

// A burst of more than the socket's buffer holds is cut by the computer; what got in is read in portions.
TEST_F(ServiceTest, ReadsOnceAFrameAndABurstIsLost) {
  SimTraits traits;
  traits.frameMs = 10;
  service_.SetTraits(traits);
  ASSERT_TRUE(service_.Start(0));
  std::vector<std::uint64_t> seen;
  QObject::connect(&service_, &SimulatorService::Ticked,
                   [&] { seen.push_back(service_.Sim().Counters().received); });
  constexpr std::uint64_t kBurst = 3000;
  for (std::uint64_t i = 0; i < kBurst; ++i) Send(test::SubscribeTo(kRpm, 1, static_cast<int>(i)));
  ASSERT_TRUE(Eventually([&] { return seen.size() > 30; }));
  for (std::size_t i = 1; i < seen.size(); ++i) EXPECT_LE(seen[i] - seen[i - 1], 148u);
  EXPECT_EQ(seen[0], 148u);
  EXPECT_LT(seen.back(), kBurst) << "the usual buffer does not hold them";
  EXPECT_EQ(seen.back(), seen[seen.size() - 10]) << "and it is empty by now";
}

TEST_F(ServiceTest, TellsThatItIsThereAndAnswersFromAnotherPort) {
  ASSERT_TRUE(service_.Start(0));
  QByteArray beacon(100, 0);
  ASSERT_TRUE(Eventually([&] { return client_.hasPendingDatagrams(); }));
  beacon.resize(static_cast<int>(client_.readDatagram(beacon.data(), beacon.size())));
  EXPECT_TRUE(beacon.startsWith("BECN"));
  EXPECT_EQ(static_cast<unsigned char>(beacon[19]) + 256 * static_cast<unsigned char>(beacon[20]),
            service_.Port());
  Send(test::SubscribeTo(kRpm, 20, 7));
  quint16 from = 0;
  ASSERT_TRUE(Eventually([&] {
    QByteArray datagram(2000, 0);
    while (client_.hasPendingDatagrams()) {
      client_.readDatagram(datagram.data(), datagram.size(), nullptr, &from);
      if (datagram.startsWith("RREF")) return true;
    }
    return false;
  }));
  EXPECT_NE(from, service_.Port());
}

TEST_F(ServiceTest, WhileAnAircraftLoadsItNeitherReadsNorSends) {
  ASSERT_TRUE(service_.Start(0));
  Send(test::SubscribeTo(kRpm, 20, 7));
  ASSERT_TRUE(Eventually([&] { return service_.Sim().Subscriptions() == 1; }));
  service_.ChangeAircraft(100, 300);
  EXPECT_EQ(service_.Sim().Subscriptions(), 0u);
  const std::uint64_t received = service_.Sim().Counters().received;
  Send(test::SubscribeTo(kRpm, 20, 7));
  QElapsedTimer passed;
  passed.start();
  ASSERT_TRUE(Eventually([&] { return service_.Sim().Counters().received > received; }));
  EXPECT_GT(passed.elapsed(), 250);
  EXPECT_EQ(service_.Sim().Subscriptions(), 0u) << "the aircraft does not have it";
}

}  // namespace
}  // namespace tvx::vc
