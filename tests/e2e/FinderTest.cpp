// The way to the simulator: found by its beacon, by its computer's name, and after its port was free again.
#include <QNetworkDatagram>
#include <QSysInfo>

#include "platform/qt/QtMulticastListener.h"
#include "simlink/beacon/Beacon.h"
#include "tests/e2e/Flight.h"
#include "tests/e2e/Hands.h"

namespace tvx::e2e {
namespace {

// Whether what this computer tells the group comes back to it.
bool HasMulticast() {
  QtMulticastListener listener(kBeaconGroup, kBeaconPort);
  bool heard = false;
  const Registration arrivals = listener.SetHandler([&](ByteView, const auto&) { heard = true; });
  if (!listener.Open()) return false;
  QUdpSocket sender;
  sender.writeDatagram("?", 1, QHostAddress(QString::fromUtf8(kBeaconGroup.data(), kBeaconGroup.size())),
                       kBeaconPort);
  const QDeadlineTimer end(1000);
  while (!heard && !end.hasExpired()) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  return heard;
}

// The button of the start form's line that ends with `words`; nullptr while there is none.
QPushButton* TakeButton(Program& program, const QString& words) {
  for (int line = 0; program.StartWindow() != nullptr; ++line) {
    const auto* label = program.StartWindow()->findChild<QLabel*>(QStringLiteral("FoundLine%1").arg(line));
    if (label == nullptr) return nullptr;
    if (label->isVisible() && label->text().endsWith(words))
      return program.StartWindow()->findChild<QPushButton*>(QStringLiteral("FoundTake%1").arg(line));
  }
  return nullptr;
}

// Over the network's own group where this computer has that, otherwise over an address of its own.
TEST(Finder, ASimulatorThatIsHeardIsTakenWithOneClickAndFlown) {
  const bool real = HasMulticast();
  const std::uint16_t port = real ? kBeaconPort : static_cast<std::uint16_t>(FreePort());
  QtMulticastListener beacons(real ? kBeaconGroup : "127.0.0.1", port);
  vc::Traits traits = vc::Traits::Default();
  traits.simulator.beacon = true;
  Flight flight([](ConfigModel&) {}, traits, &beacons);
  if (!real) flight.TheCockpit().Simulation().SetBeaconTarget({vc::kThisComputer, port});
  const QString simulatorsPort = QString::number(flight.TheCockpit().Simulation().Port());
  flight.Model().General.RemotePort = std::to_string(FreePort());  // nobody is there
  ASSERT_TRUE(ConfigFile(flight.Model(), flight.boxes).SaveConfigFile());
  flight.TheProgram().Begin();
  QPushButton* take = nullptr;
  ASSERT_TRUE(Eventually([&] {
    take = TakeButton(flight.TheProgram(),
                      " on host " + QSysInfo::machineHostName() + " at 127.0.0.1 port " + simulatorsPort);
    return take != nullptr;
  }));
  EXPECT_FALSE(flight.TheProgram().Run().Running());
  take->click();
  EXPECT_EQ(flight.TheProgram().Model().General.RemotePort, simulatorsPort.toStdString());
  ASSERT_TRUE(Eventually([&] { return flight.TheProgram().Run().Running(); }));
  EXPECT_TRUE(Eventually([&] { return flight.Sim().Subscriptions() > 0; }));
}

TEST(Finder, AComputersNameLeadsToIt) {
  Flight flight([](ConfigModel& model) { model.General.RemoteIP = "localhost"; });
  flight.TheProgram().Begin();
  EXPECT_TRUE(Eventually([&] { return flight.TheProgram().Run().Running(); }));
  EXPECT_EQ(flight.TheProgram().Model().General.RemoteIP, "localhost") << "as it was typed";
}

}  // namespace
}  // namespace tvx::e2e
