// What the program does to yokes that move, on lines as slow as real ones.
#include "tests/ffb/Chain.h"

namespace tvx::test::chaintest {

double Ratio(Chain& chain) {
  return chain.Written("yoke_roll_ratio");
}

// At 150 kt, with the forces on.
struct FastChain : Chain {
  explicit FastChain(int laterMs = 0) {
    SetValue(6, 150);
    Begin(5000 + laterMs);
    EXPECT_NEAR(Of(1).limit, 0.8, 0.001);
    EXPECT_NEAR(Of(1).device.Limit(), 0.8, 0.001);
  }
  void ExpectForcesWithoutAJump() {
    EXPECT_EQ(pair.StateText(1), "Forces on");
    EXPECT_LE(largestJump, FlownRatios::kLargestStep + 1e-6);
  }
};

// A program that was stopped finds yokes that have faded. Whatever its loop handles first, and whenever in
// the cycle it was stopped, their forces rise slowly.
TEST(Chain, AfterAStallForcesRiseSlowly) {
  for (int trial = 0; trial < 16; ++trial) {
    SCOPED_TRACE(trial);
    FastChain chain(6 * (trial / 2));
    chain.repliesFirst = trial % 2 == 0;
    chain.Suspend(trial < 8 ? 1000 : 350);
    std::vector<double> limits{chain.Of(1).limit};
    chain.after = [&] { limits.push_back(chain.Of(1).limit); };
    chain.Pass(6000);
    const auto shut = std::find(limits.begin(), limits.end(), 0);
    EXPECT_LE(shut - limits.begin(), kFadeMs / YokePair::kIntervalMs + 1);
    for (auto at = limits.begin() + 1; at != limits.end(); ++at)
      ASSERT_LE(*at - *(at - 1), at <= shut ? 0 : 0.04) << at - shut;
    const auto whole = std::find_if(shut, limits.end(), [](double limit) { return limit > 0.79; });
    EXPECT_GE(whole - shut, 1900 / YokePair::kIntervalMs);
    EXPECT_NEAR(chain.Of(1).device.Limit(), 0.8, 0.001) << "and come back";
    EXPECT_LE(chain.largestJump, FlownRatios::kLargestStep + 1e-6);
  }
}

// A yoke that says it has faded had no commands, however well the program's own cycle goes.
TEST(Chain, AYokeThatFadedByItselfShutsTheGate) {
  Chain chain;
  chain.Begin();
  chain.ports[0].RefuseWrites = true;
  chain.Pass(320);
  chain.ports[0].RefuseWrites = false;
  chain.Play("run 120; state 1 = No force: It was without commands for a moment; run 600");
  EXPECT_LT(chain.Of(1).limit, 0.1);
  chain.Play("run 2400; state 1 = Forces on");
}

// Position held for the hand-over's second, then blended to the other yoke's place; which stays where it is.
TEST(Chain, ALostMastersPlaceIsHeldAndBlended) {
  Chain chain(2);
  chain.Begin();
  chain.Of(1).device.Grip(0, 0.6);
  chain.Pass(2000);
  const double flown = Ratio(chain);
  const double follower = chain.Of(2).device.Position(0);
  ASSERT_GT(flown, 0.4);
  ASSERT_NEAR(follower, flown, 0.05);
  chain.Plug(1, false);
  for (int ms = 0; ms < 960; ms += 40) {
    chain.Pass(40);
    ASSERT_NEAR(Ratio(chain), flown, 0.001) << ms;
    ASSERT_NEAR(chain.Of(2).device.Position(0), follower, 0.03) << ms;
  }
  chain.Play("override joystick_roll = 1; run 3000; master = 2");
  EXPECT_NEAR(Ratio(chain), chain.Of(2).device.Position(0), 0.02);
  EXPECT_LE(chain.largestJump, FlownRatios::kLargestStep + 1e-6);
  chain.Plug(2, false);  // and nobody is left
  chain.Play("run 2500; override joystick_roll = 0");
  EXPECT_LE(chain.largestJump, FlownRatios::kLargestStep + 1e-6);
}

// The yoke goes to trim and servo; a hand that holds against it switches the servos off, and flies on from
// there.
TEST(Chain, AHandOverpowersTheAutopilot) {
  Chain chain;
  chain.model.Yoke1.StartMode = static_cast<std::int16_t>(YokeMode::FollowAP);
  chain.Play("set 1 2; set 12 0.5; (trim: by 0.5 * 40 % of the travel); set 11 0.5; (half of what is left)");
  chain.Begin();
  EXPECT_NEAR(chain.Of(1).device.Position(1), 0.2 + 0.5 * 0.8, 0.02);
  EXPECT_EQ(chain.Override("joystick_roll"), -1);
  chain.Of(1).device.Grip(1, 0.1);
  chain.Play("run 1500; wrote autopilot_mode = 1; override joystick_pitch = 1");
  EXPECT_LE(chain.largestJump, FlownRatios::kLargestStep + 1e-6);
  chain.Pass(1500);
  EXPECT_NEAR(chain.Written("yoke_pitch_ratio"), (chain.Of(1).device.Position(1) - 0.2) / 1.2, 0.03);
}

TEST(Chain, FullTrimKeepsFullAuthority) {
  Chain chain;
  chain.SetValue(6, 150);
  chain.SetValue(12, 1);
  chain.Begin();
  EXPECT_NEAR(chain.Written("yoke_pitch_ratio"), 0, 0.04) << "hands off: but for friction";
  for (const double stop : {-1.0, 1.0}) {
    chain.Of(1).device.Grip(1, stop);
    for (int i = 0; i < 20; ++i) chain.Of(1).device.Place(1, stop), chain.Pass(100);
    EXPECT_NEAR(chain.Written("yoke_pitch_ratio"), stop, 0.02);
  }
}

// Vibration has its part of the greatest force, and no more than half of it.
TEST(Chain, TheGreatestForceIsABudgetForEverything) {
  for (const int percent : {10, 40, 100}) {
    Chain chain;
    chain.model.GeneralFFB = StandardGeneralFFB();
    chain.model.GeneralFFB.MaximumForce = static_cast<Byte>(percent);
    chain.SetValue(6, 49);  // the stall buffet's 20 %
    chain.after = [&] { ASSERT_LE(chain.Of(1).Sum(), percent / 100.0 + 1e-4); };
    chain.Begin();
    EXPECT_NEAR(chain.Of(1).amplitude[1], std::min(0.2, percent / 200.0), 0.001) << percent;
    EXPECT_NEAR(chain.Of(1).Most(), percent / 100.0, 0.01);
    chain.SetValue(6, 120);
    chain.Pass(2000);
    EXPECT_NEAR(chain.Of(1).limit, percent / 100.0, 0.001);
  }
}

// Another calibration counts when the forces have gone, and then they rise anew.
TEST(Chain, ACalibrationInFlightShutsTheGateFirst) {
  FastChain chain;
  const AxisCalibration before = chain.pair.Of(1).Settings().pitch;
  chain.model.Yoke1.PitchCentre = static_cast<std::int16_t>(chain.model.Yoke1.PitchCentre + 4000);
  chain.pair.ApplySettings();
  while (chain.Of(1).limit > 0) {
    ASSERT_EQ(chain.pair.Of(1).Settings().pitch, before);
    chain.Pass(40);
  }
  chain.Pass(40);
  EXPECT_EQ(chain.pair.Of(1).Settings().pitch.centre, before.centre + 4000);
  EXPECT_LE(chain.Of(1).limit, 0.02);
  chain.Pass(3000);
  chain.ExpectForcesWithoutAJump();
}

// So does another address, though nothing else is changed: the yoke that gives the forces is told to fade.
TEST(Chain, AnAddressInFlightShutsTheGateFirst) {
  FastChain chain;
  chain.model.Yoke1.Address = 7;
  chain.pair.ApplySettings();
  EXPECT_EQ(chain.pair.Of(1).Settings().address, 1);
  double before = chain.Of(1).device.Limit();
  for (int ms = 0; ms < kFadeMs; ms += 40) {
    ASSERT_LE(chain.Of(1).device.Limit(), before);
    before = chain.Of(1).device.Limit();
    chain.Pass(40);
  }
  chain.Pass(120);
  EXPECT_EQ(chain.Of(1).Most(), 0) << "not left to its hold time";
  EXPECT_EQ(chain.pair.Of(1).Settings().address, 7);
  chain.Play("run 1000; state 1 = No force: The yoke does not answer");
  chain.model.Yoke1.Address = 1;
  chain.pair.ApplySettings();
  chain.Play("run 3500; state 1 = Forces on");
}

// A weak servo moves the other yoke slowly and leaves it off its place: no hand is there.
TEST(Chain, AWeakServoIsNoHand) {
  for (const auto& [maximum, friction, grip] :
       {std::tuple{80, 5, true}, {30, 5, true}, {14, 10, true}, {10, 30, false}, {5, 5, false}}) {
    SCOPED_TRACE(maximum);
    Chain chain(2);
    chain.model.GeneralFFB = StandardGeneralFFB();
    chain.model.GeneralFFB.MaximumForce = static_cast<Byte>(maximum);
    chain.model.GeneralFFB.Friction = static_cast<Byte>(friction);
    chain.Begin();
    EXPECT_EQ(chain.pair.GripFrom(2).has_value(), grip);
    for (const double place : {0.7, -0.7, 0.2}) {
      chain.Of(1).device.Grip(0, place);
      chain.Pass(5000);
      EXPECT_EQ(chain.pair.Master(), 1) << place;
    }
    chain.Pass(8000);
    chain.Of(2).device.Grip(0, -0.6);
    chain.Pass(1500);
    EXPECT_EQ(chain.pair.Master(), grip ? 2 : 1);
  }
}

// A switch that stays down does not act when its yoke answers again, nor when the program starts.
TEST(Chain, AHeldSwitchActsOnce) {
  Chain chain(2);
  chain.model.Yoke2.Buttons[0].Action = static_cast<Byte>(ButtonAction::TakeControl);
  chain.verbs.emplace("button", [&](bool down) { chain.Of(2).device.SetButton(1, down); });
  chain.verbs.emplace("answers", [&](bool now) {
    chain.Of(2).device.SetFault(now ? vc::YokeFault::None : vc::YokeFault::Silent);
  });
  chain.Play(
      "button 1; start 5000; master = 1; button 0; run 200; button 1; run 200; master = 2; hand 1; "
      "answers 0; run 1000; answers 1; run 1000; master = 1");
}

}  // namespace tvx::test::chaintest
