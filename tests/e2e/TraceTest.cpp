// What happened in flight is saved, and the virtual cockpit plays it again.
#include "tests/e2e/Flight.h"
#include "virtualcockpit/Replay.h"
#include "virtualcockpit/devices/NeedleDevice.h"

namespace tvx::e2e {
namespace {

TEST(Trace, IsSavedAndPlayedAgainToTheSameNeedles) {
  Flight flight;
  flight.Run();
  const auto needlesOf = [](const vc::Cockpit& cockpit) {
    std::vector<std::optional<int>> needles;
    for (const auto& device : cockpit.Gauges().Devices()) {
      if (const auto* gauge = dynamic_cast<const vc::NeedleDevice*>(device.get()))
        needles.insert(needles.end(), {gauge->First(), gauge->Second()});
    }
    return needles;
  };
  const auto atTheStart = needlesOf(flight.TheCockpit());
  flight.Sim().SetSpeed(20);
  EXPECT_TRUE(Eventually([&] { return flight.Sim().State().time > 30; }));
  flight.Sim().SetPaused(true);
  const std::uint64_t heard = flight.Sim().Counters().sent;
  EXPECT_TRUE(Eventually([&] { return flight.Sim().Counters().sent > heard + 60; })) << "all has arrived";
  flight.TheProgram().Run().cmdStop_Click();
  auto* status = flight.TheProgram().StatusWindow();
  status->findChild<QPushButton*>("cmdCockpit")->click();
  flight.TheProgram().CockpitWindow()->findChild<QPushButton*>("cmdTrace")->click();
  ASSERT_TRUE(flight.boxes.shown.back().starts_with("What happened")) << flight.boxes.shown.back();
  const auto atTheEnd = needlesOf(flight.TheCockpit());
  EXPECT_NE(atTheStart, atTheEnd);

  Trace trace;
  ConfigModel model;
  std::string error;
  ASSERT_TRUE(vc::LoadTrace("TVXTrace.txt", trace, model, error)) << error;
  vc::Cockpit again(model, {.port = 0, .links = false, .simulator = false});
  QUdpSocket program;
  ASSERT_TRUE(program.bind(QHostAddress::LocalHost, 0));
  vc::Replay replay(trace, again, {vc::kThisComputer, program.localPort()});
  replay.PlayUntil(trace.entries.back().ms / 2);
  EXPECT_FALSE(replay.Ended());
  replay.PlayUntil(trace.entries.back().ms);
  EXPECT_TRUE(replay.Ended());
  EXPECT_EQ(needlesOf(again), atTheEnd);
  EXPECT_TRUE(Eventually([&] { return program.hasPendingDatagrams(); })) << "the simulator speaks again";
}

}  // namespace
}  // namespace tvx::e2e
