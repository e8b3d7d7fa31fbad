// The program flies with two yokes on pseudo-terminals, against the stand-in simulator.

#include "tests/e2e/Flight.h"

namespace tvx::e2e {
namespace {

constexpr double kInTheAir = 100;  // s into the flight

struct YokesTest : testing::Test {
  YokesTest()
      : flight_([](ConfigModel& model) {
          model.General.ComPortYoke1 = 31;
          model.General.ComPortYoke2 = 32;
          constexpr int kOptions = yokeoption::kStandard & ~yokeoption::kEffects;  // no gusts
          Calibrate(model.Yoke1, 1, kOptions);
          Calibrate(model.Yoke2, 2, kOptions);
        }),
        yokes_(YokesOf(flight_.Model(), flight_.TheCockpit())) {
    flight_.Sim().RestartFlight(kInTheAir);
  }
  vc::YokeDevice& Device(int which) { return yokes_[which == 2 ? 1 : 0]->Device(); }
  YokePair& Pair() { return flight_.TheProgram().Yokes().Pair(); }
  void RunUntilForces() {
    flight_.Run();
    ASSERT_TRUE(Eventually([this] { return Pair().Of(1).Opening() == 1 && Pair().Of(2).Opening() == 1; }))
        << Pair().StateText(1) << " / " << Pair().StateText(2);
  }

  Flight flight_;
  std::vector<std::unique_ptr<vc::YokeLine>> yokes_;
};

TEST_F(YokesTest, FlyFollowAndHandOver) {
  RunUntilForces();
  EXPECT_EQ(flight_.Dataref("sim/operation/override/override_joystick_roll"), 1);
  EXPECT_GT(Pair().Ports().Variables.Airspeed, 40) << "the simulator's airspeed arrives";
  Device(1).Grip(0, 0.5);
  EXPECT_TRUE(
      Eventually([this] { return std::abs(flight_.Dataref("sim/joystick/yoke_roll_ratio") - 0.45) < 0.1; }));
  EXPECT_TRUE(Eventually([this] { return std::abs(Device(2).Position(0) - Device(1).Position(0)) < 0.04; }))
      << "the other yoke follows";
  EXPECT_LT(Device(1).Force(0), -0.01) << "against the hand";
  const double bank = flight_.Sim().State().bank;
  EXPECT_TRUE(Eventually([&] { return flight_.Sim().State().bank > bank + 5; })) << "it banks";
  Device(2).Grip(0, -0.4);
  EXPECT_TRUE(Eventually([this] { return Pair().Master() == 2; })) << "taken by grip";
  EXPECT_TRUE(Eventually([this] { return flight_.Dataref("sim/joystick/yoke_roll_ratio") < -0.2; }));
  flight_.TheProgram().Exit();
  EXPECT_TRUE(Eventually([this] { return Device(1).Slack() && Device(2).Slack(); }));
  EXPECT_TRUE(
      Eventually([this] { return flight_.Dataref("sim/operation/override/override_joystick_pitch") == 0; }));
  EXPECT_EQ(flight_.TheProgram().Yokes().Form(), nullptr);
}

TEST_F(YokesTest, GoSlackSafelyAndGiveTheControlsBack) {
  RunUntilForces();
  const auto port = static_cast<std::uint16_t>(flight_.TheCockpit().Simulation().Port());
  flight_.TheCockpit().Simulation().Stop();
  EXPECT_TRUE(Eventually([this] { return Device(1).Slack() && Device(2).Slack(); })) << "simulator gone";
  ASSERT_TRUE(flight_.TheCockpit().Simulation().Start(port));
  ASSERT_TRUE(Eventually([this] { return !Device(1).Slack() && Pair().Of(1).Opening() == 1; })) << "and back";
  yokes_[0]->Unplug();
  EXPECT_TRUE(Eventually([this] { return Device(1).Slack(); })) << "its own watchdog: nothing comes any more";
  EXPECT_TRUE(Eventually([this] { return Pair().Master() == 2; })) << "the other one flies";
  flight_.TheProgram().Run().cmdStop_Click();
  EXPECT_TRUE(Eventually([this] { return Device(2).Slack(); })) << "halted";
  EXPECT_TRUE(
      Eventually([this] { return flight_.Dataref("sim/operation/override/override_joystick_roll") == 0; }));
}

}  // namespace
}  // namespace tvx::e2e
