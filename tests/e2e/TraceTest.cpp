// What happened in flight is saved, and the virtual cockpit plays it again.
#include "drawn/devices/NeedleDevice.h"
#include "tests/e2e/Flight.h"
#include "virtualcockpit/Replay.h"

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
  flight.TheProgram().Watch().Cockpit()->findChild<QPushButton*>("cmdTrace")->click();
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
  vc::Replay replay(trace, again, {}, {vc::kThisComputer, program.localPort()});
  replay.PlayUntil(trace.entries.back().ms / 2);
  EXPECT_FALSE(replay.Ended());
  replay.PlayUntil(trace.entries.back().ms);
  EXPECT_TRUE(replay.Ended());
  EXPECT_EQ(needlesOf(again), atTheEnd);
  EXPECT_TRUE(Eventually([&] { return program.hasPendingDatagrams(); })) << "the simulator speaks again";
}

// A yoke whose raw positions fall from left to right; its answers come in pieces.
TEST(Trace, YokesStandWhereTheirAnswersSay) {
  ConfigModel model;
  model.General.ComPortYoke2 = 9;
  model.Yoke2.RollLeft = 10000, model.Yoke2.RollCentre = 2000, model.Yoke2.RollRight = -2000;
  vc::Cockpit cockpit(model, {.port = 0, .links = false, .simulator = false});
  const auto yokes = vc::MakeYokes(model, {}, {}, {});
  ASSERT_EQ(yokes.size(), 1u);
  Bytes answer(25, 0);
  const auto put = [&answer](std::size_t at, int value) {
    answer[at] = static_cast<Byte>(value >> 8);
    answer[at + 1] = static_cast<Byte>(value);
  };
  put(6, 32768);  // half of the way from the centre to the right
  put(9, vc::YokeDevice::kRawCentre - vc::YokeDevice::kRawTravel);
  put(12, 0x0005);
  answer[8] = 'P', answer[11] = 'S', answer[24] = 0xFF;
  const Bytes bias{0x00, 0x80, 0x82, 0x80, 0xC0, 0x80, 0xC0, 0xFF, 0xFF, 0xE8, 0x87, 0xFF, 0xFF};
  Trace trace;
  trace.entries = {{0, TraceSource::Yoke2, true, bias},
                   {1, TraceSource::Yoke2, false, {answer.begin(), answer.begin() + 10}},
                   {2, TraceSource::Yoke2, false, {answer.begin() + 10, answer.end()}}};
  vc::Replay replay(trace, cockpit, yokes, {});
  const vc::YokeDevice& yoke = yokes[0]->Device();
  replay.PlayUntil(1);
  EXPECT_EQ(yoke.Position(0), 0);
  EXPECT_EQ(yoke.Commands(), 1u);
  replay.PlayUntil(2);
  EXPECT_DOUBLE_EQ(yoke.Position(0), 0.5);
  EXPECT_DOUBLE_EQ(yoke.Position(1), -1);
  EXPECT_EQ(yoke.Buttons(), 0x0005);
  yokes[0]->Device().Advance(1);
  EXPECT_DOUBLE_EQ(yoke.Position(1), -1) << "no force moves it";
}

}  // namespace
}  // namespace tvx::e2e
