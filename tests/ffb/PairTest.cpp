// Both yokes with the simulator link and serial ports in memory: the watchdog, the modes, the roles.
#include "tests/fakes/ScratchFolder.h"
#include "tests/ffb/YokeRig.h"

namespace tvx::test::pairtest {

using Ratio = std::array<double, 2>;

struct Cause {
  const char* name;
  void (*happens)(YokeRig&, bool);  // and, with false, is over
  const char* words;
  int noForceMs = 520;  // after the cause; docs/force-feedback.md states these times
};

// Every cause takes the forces away, steadily, within its stated time; and when it is over they rise again.
TEST(Watchdog, EveryCauseRampsToZeroAndBack) {
  const char* noAnswer = "No force: The yoke does not answer";
  const char* noPower = "No force: Its stop button is pressed, or its motors have no power";
  const Cause causes[] = {
      {"simulator silent", [](YokeRig& r, bool now) { r.simulatorAlive = !now; },
       "No force: The simulator is silent", 920},
      {"not a number", [](YokeRig& r, bool now) { r.SetValue(6, now ? std::nanf("") : 120); },
       "No force: The simulator sends values that are no numbers"},
      {"airspeed frozen", [](YokeRig& r, bool now) { r.frozen = now ? std::set{6} : std::set<int>{}; },
       "No force: The simulator does not send often enough: Airspeed", 920},
      {"yoke silent", [](YokeRig& r, bool now) { r.hardware[0].silent = now; }, noAnswer, 800},
      {"yoke garbled", [](YokeRig& r, bool now) { r.hardware[0].garbled = now; }, noAnswer, 800},
      {"halted", [](YokeRig& r, bool now) { now ? r.pair.cmdStop_Click() : r.pair.cmdRun_Click(); },
       "No force: Halted"},
      {"OFF mode", [](YokeRig& r, bool now) { r.pair.SelectMode(1, now ? YokeMode::Off : YokeMode::Ffb); },
       "No force: OFF mode"},
      {"stop button",
       [](YokeRig& r, bool now) {
         r.hardware[0].status = static_cast<Byte>(yokestatus::kPower | (now ? yokestatus::kStopButton : 0));
       },
       noPower, 560},
      {"motors without power",
       [](YokeRig& r, bool now) { r.hardware[0].status = now ? 0 : yokestatus::kPower; }, noPower, 560},
      {"calibration taken away",
       [](YokeRig& r, bool) {
         std::swap(r.model.Yoke1.RollLeft, r.model.Yoke1.RollCentre), r.pair.ApplySettings();
       },
       "No force: Not calibrated: set centre and limits in its configuration"},
  };
  for (const Cause& cause : causes) {
    SCOPED_TRACE(cause.name);
    YokeRig rig;
    rig.SetValue(6, 120);
    rig.Start(5000);
    FakeYoke& yoke = rig.hardware[0];
    ASSERT_NEAR(yoke.limit, 0.8, 0.01);
    EXPECT_EQ(rig.pair.StateText(1), "Forces on");
    EXPECT_GT(yoke.gradient[1], 0);
    cause.happens(rig, true);
    double before = yoke.limit;
    for (int ms = 40; ms <= cause.noForceMs; ms += 40) {
      ASSERT_GT(before, 0) << "earlier than stated, " << ms;
      rig.Cycle();
      ASSERT_TRUE(yoke.limit <= before + 1e-9 && before - yoke.limit < 0.8 * kLargestStep) << ms;
      before = yoke.limit;
    }
    EXPECT_TRUE(yoke.limit == 0 && yoke.released);
    rig.Cycle();
    EXPECT_EQ(rig.pair.StateText(1), cause.words);
    cause.happens(rig, false);
    for (int ms = 0; ms < 3800; ms += 40) {
      before = yoke.limit;
      rig.Cycle();
      ASSERT_GE(yoke.limit, before) << ms;
      ASSERT_LT(yoke.limit, ms < 800 ? 0.5 : 0.81) << "slowly, " << ms;
      // A program that dies sends nothing more: the yoke fades by itself after this time.
      ASSERT_TRUE(yoke.released || yoke.holdMs == kHoldMs) << ms;
    }
    EXPECT_NEAR(yoke.limit, 0.8, 0.01);
  }
}

TEST(Watchdog, ExitReleasesAtOnceAndAnUnpluggedYokeIsSaidSo) {
  YokeRig rig;
  rig.Start(3000);
  rig.ports[0].Unplug();
  rig.Play("run 1000; state 1 = No force: Its serial port is not open");
  rig.ports[0].OpenResult = SerialState::Open;
  rig.ports[0].Open(5);
  rig.Run(3000);
  EXPECT_GT(rig.hardware[0].limit, 0.5);
  rig.pair.Unload();
  rig.Deliver();
  EXPECT_TRUE(rig.hardware[0].released && !rig.timer.enabled);
  rig.Play("override joystick_roll = 0; run 40");
  EXPECT_FALSE(rig.hardware[0].asked) << "nothing is sent any more";
}

TEST(Modes, SendWhatTheTableSays) {
  const std::tuple<YokeMode, float, std::set<int>> rows[] = {
      {YokeMode::Ffb, 0, {1, 2, 3, 4, 7}},
      {YokeMode::FollowAP, 0, {1, 2, 3, 4, 7}},
      {YokeMode::FollowAP, 1, {2, 3, 4, 5, 7}},
      {YokeMode::Servo, 0, {1, 2, 3, 4, 7}},  // nobody to follow
      {YokeMode::Off, 0, {6, 7}}};
  for (const auto& [mode, servos, commands] : rows) {
    YokeRig rig;
    rig.SetValue(1, servos + 1);
    rig.Start();
    rig.pair.SelectMode(1, mode);
    rig.Run(1000);
    rig.hardware[0].commands.clear();
    rig.Run(1200);
    EXPECT_EQ(rig.hardware[0].commands, commands) << static_cast<int>(mode);
  }
}

TEST(Modes, TheFeelIsToldOnceASecondAndAtOnceWhenItChanges) {
  YokeRig rig;
  rig.Start(2000);
  rig.hardware[0].told.clear();
  rig.Run(1000);
  const int feel = static_cast<int>(YokeCommand::Feel);
  EXPECT_EQ(rig.hardware[0].told[feel], 1);
  EXPECT_EQ(rig.hardware[0].told[static_cast<int>(YokeCommand::Bias)], 25);
  rig.model.GeneralFFB.Friction = 77;
  rig.pair.ApplySettings();
  rig.hardware[0].told.clear();
  rig.Cycle();
  EXPECT_EQ(rig.hardware[0].told[feel], 1);
}

TEST(Modes, FollowsTheAutopilotAndGivesTheControlsBackMeanwhile) {
  YokeRig rig;
  rig.model.Yoke1.StartMode = static_cast<std::int16_t>(YokeMode::FollowAP);
  rig.Play(
      "start 3000; override joystick_roll = 1; set 1 2; set 10 0.5; set 11 -0.25; run 3000; "
      "override joystick_roll = 0; override joystick_pitch = 0");
  EXPECT_NEAR(rig.pair.Of(1).Line().RollPosition(), 255, 20);
  EXPECT_NEAR(rig.pair.Of(1).Line().PitchPosition(), -128, 20);
  EXPECT_NEAR(rig.hardware[0].force, 0.6 * 0.8, 0.001) << "a pilot can overpower the servo";
  rig.SetValue(1, 0);  // it lets go: no jump from its place
  rig.Cycle();
  EXPECT_NEAR(rig.Written("yoke_roll_ratio"), 0.5, 0.06);
}

// Neither what the simulator gets nor what either hand, held still, feels jumps.
void ExpectBumpless(YokeRig& rig, int cycles) {
  for (int i = 0; i < cycles; ++i) {
    const Ratio ratio{rig.Written("yoke_roll_ratio"), rig.Written("yoke_pitch_ratio")};
    const ForceCommand before[] = {rig.pair.Of(1).Commanded(), rig.pair.Of(2).Commanded()};
    const Ratio hands[] = {rig.pair.Of(1).Position(), rig.pair.Of(2).Position()};
    rig.Cycle();
    ASSERT_LT(std::abs(rig.Written("yoke_roll_ratio") - ratio[0]), 0.1) << i;
    ASSERT_LT(std::abs(rig.Written("yoke_pitch_ratio") - ratio[1]), 0.1) << i;
    for (const auto& [y, axis] :
         {std::pair{0, Axis::Roll}, {0, Axis::Pitch}, {1, Axis::Roll}, {1, Axis::Pitch}}) {
      const double hand = hands[y][static_cast<std::size_t>(axis)];
      const double now = HandForce(rig.pair.Of(y + 1).Commanded(), axis, hand);
      ASSERT_LT(std::abs(now - HandForce(before[y], axis, hand)), kLargestStep)
          << "yoke " << y + 1 << ' ' << i;
    }
  }
}

TEST(Roles, HandOverByButtonIsBumpless) {
  YokeRig rig(2);
  rig.SetValue(6, 150);
  rig.model.Yoke2.Buttons[3].Action = static_cast<Byte>(ButtonAction::TakeControl);
  rig.Play(
      "start 3000; hold 1 250; hold 2 150; (a hand keeps it from following all the way); run 2000; "
      "press 2 8");
  ExpectBumpless(rig, 50);
  rig.Play("master = 2; role 1 = Slave, Servo Mode");
  EXPECT_NEAR(rig.Written("yoke_roll_ratio"), 150.0 / 511, 0.02);
  for (int cycle = 0; cycle < 30; ++cycle) rig.Cycle(35);  // however short the servo's first step is
  EXPECT_EQ(rig.pair.Master(), 2) << "the pilot who still holds the other has not gripped it";
}

TEST(Roles, HandOverByGrip) {
  YokeRig rig(2);
  rig.Play(
      "start 4000; hold 2 30; (below the threshold of 40: a hand that rests on it); run 1000; "
      "master = 1; hold 2 120");
  ExpectBumpless(rig, 30);
  rig.Play(
      "master = 2; hold 1 -200; (and back); run 200; master = 2; (it has not settled yet); let 1; "
      "run 3000; hold 1 -100; run 1000; master = 1");
}

// A following yoke is always a little behind; and a program that was held up has not seen a hand meanwhile.
TEST(Roles, LagAndLateCyclesAreNoGrip) {
  YokeRig rig(2);
  rig.Start(4000);
  // It catches up in the end; a heavy one takes longer for it than a grip lasts.
  for (const auto& [behind, pace] : {std::pair(60, 1.0), std::pair(125, 0.7), std::pair(125, 0.5)}) {
    rig.hardware[1].behind = behind;
    rig.hardware[1].pace = pace;
    for (const double place : {400.0, -400.0, 300.0}) {
      rig.hardware[0].Hold(0, place);
      rig.Run(2400);
      EXPECT_EQ(rig.pair.Master(), 1) << place << ", behind " << behind;
    }
  }
  rig.hardware[1].behind = 0;
  rig.hardware[1].pace = 1;
  rig.Run(1000);
  rig.hardware[1].Hold(0, 100);
  rig.Cycle();  // its answer says so
  rig.clock.Advance(220);
  rig.Cycle();
  rig.Cycle();
  rig.Play("master = 1; run 400; master = 2");
}

TEST(Roles, AYokeThatIsSwitchedOffStaysOffAtAHandOver) {
  YokeRig rig(2);
  rig.Start(2000);
  rig.pair.SelectMode(1, YokeMode::Off);
  rig.Play("run 400; hand 2; run 1000; role 1 = Slave, OFF mode; role 2 = Master, FFB Mode");
  EXPECT_TRUE(rig.hardware[0].released);
}

TEST(Roles, TheOtherYokeTakesOverFromOneThatIsGone) {
  YokeRig rig(2);
  rig.Start(3000);
  rig.hardware[0].silent = true;
  rig.Play(
      "run 1200; master = 1; (a second's patience); run 400; master = 2; role 2 = Master, FFB Mode; "
      "hand 1; master = 2; (not to one that does not answer)");
}

// A master that has not flown leaves no place behind: the next one goes from the middle to its own.
TEST(Roles, WhoTakesOverFromOneThatDidNotFlyGoesToItsOwnPlaceSteadily) {
  YokeRig rig(2);
  rig.model.Yoke1.OptionBits = 0;
  rig.Start(3000);
  rig.hardware[1].Hold(0, 300), rig.hardware[1].Hold(1, -300);
  rig.Run(200);
  rig.pair.HandOver(2);
  rig.Cycle();
  EXPECT_NEAR(rig.Written("yoke_roll_ratio"), 0, FlownRatios::kLargestStep);
  rig.Run(800);
  EXPECT_NEAR(rig.Written("yoke_roll_ratio"), 300.0 / 511, 0.01);
  EXPECT_NEAR(rig.Written("yoke_pitch_ratio"), -300.0 / 511, 0.01);
}

TEST(Roles, WhoIsMasterAtTheStart) {
  for (const auto& [wanted, first, second, master] :
       {std::array{1, 5, 6, 1}, std::array{2, 5, 6, 2}, std::array{2, 5, 0, 1}, std::array{1, 0, 6, 2}}) {
    SCOPED_TRACE(std::to_string(wanted) + std::to_string(first) + std::to_string(second));
    YokeRig rig;
    rig.model.GeneralFFB = StandardGeneralFFB();
    rig.model.GeneralFFB.MasterYoke = static_cast<std::int16_t>(wanted);
    rig.model.General.ComPortYoke1 = static_cast<std::int16_t>(first);
    rig.model.General.ComPortYoke2 = static_cast<std::int16_t>(second);
    rig.pair.Load();
    EXPECT_EQ(rig.pair.Master(), master);
    EXPECT_EQ(std::pair(rig.timer.enabled, rig.timer.interval), std::pair(true, 40));
    const bool both = first != 0 && second != 0;
    EXPECT_EQ(rig.pair.RoleText(3 - master), both ? "Slave, Servo Mode" : "Not configured");
    EXPECT_EQ(rig.pair.RoleText(master), "Master, FFB Mode");
    rig.pair.HandOver(3 - master);
    EXPECT_EQ(rig.pair.Master(), both ? 3 - master : master);
  }
}

TEST(Modes, HaveTheirColoursAndTheStateItsWords) {
  YokeRig rig;
  rig.Play("start 400; state 1 = Forces are rising; state 2 =");
  rig.hardware[0].status = yokestatus::kPower | yokestatus::kHot;
  rig.Play("run 4000; state 1 = Its motors are hot");
  EXPECT_EQ(rig.pair.GroundText(), "Airborne");
  rig.Play("set 0 1; run 1000");
  EXPECT_EQ(rig.pair.GroundText(), "On Ground");
  using enum YokeMode;
  for (const auto& [mode, colour] : {std::pair{Centre, 255},
                                     {Ffb, int{kModeBlue}},
                                     {FollowAP, 49152},
                                     {Off, int{kModeGrey}},
                                     {Servo, int{kModeAmber}}}) {
    rig.pair.SelectMode(1, mode);
    EXPECT_EQ(rig.pair.Of(1).ModeColour(), colour);
  }
}

// The yoke counts in its own raw values: an axis of half the travel is half as many of them to a count, and
// one that counts the other way takes its forces the other way.
TEST(Modes, ForcesGoToTheYokeInItsOwnUnits) {
  std::array<YokeRig, 2> rigs;
  YokeRecord& record = rigs[1].model.Yoke1;
  std::swap(record.RollLeft, record.RollRight);
  record.PitchForward = StoredRaw(32768 - 25 * 511), record.PitchBack = StoredRaw(32768 + 25 * 511);
  const FakeYoke &usual = rigs[0].hardware[0], &other = rigs[1].hardware[0];
  for (YokeRig& rig : rigs) {
    rig.SetValue(6, 60);
    rig.Start(4000);
    rig.pair.SelectMode(1, YokeMode::Centre);
    rig.Run(1200);
  }
  const double gradient = 0.16 * 32768 / 50 / 511;  // twice the ground's force, over half of the raw range
  EXPECT_NEAR(usual.gradient[0], gradient, 0.001);
  EXPECT_NEAR(usual.gradient[1], gradient, 0.001);
  EXPECT_NEAR(other.gradient[0], gradient, 0.001);
  EXPECT_NEAR(other.gradient[1], 2 * gradient, 0.001);
  for (YokeRig& rig : rigs) rig.pair.SelectMode(1, YokeMode::Ffb);
  double largest = 0;
  for (int i = 0; i < 100; ++i) {
    for (YokeRig& rig : rigs) rig.SetValue(14, i % 10 < 5 ? 0.5f : 1.5f), rig.Cycle();
    EXPECT_NEAR(usual.bias[0], -other.bias[0], 0.001) << i;
    EXPECT_NEAR(usual.bias[1], other.bias[1], 0.001) << i;
    largest = std::max(largest, std::min(std::abs(usual.bias[0]), std::abs(usual.bias[1])));
  }
  EXPECT_GT(largest, 0.01);
  for (YokeRig& rig : rigs) {
    rig.SetValue(1, 2);
    rig.pair.SelectMode(1, YokeMode::FollowAP);
    rig.Run(400);
    EXPECT_NEAR(rig.hardware[0].servoSpeed, 600, 1) << "fast enough for the longer axis";
  }
}

TEST(Watchdog, PiecesOfAReplyDoNotSilenceTheYoke) {
  YokeRig rig;
  rig.Start(3000);
  rig.ports[0].Arrive({1, 2, 3});
  rig.Play("run 2000; state 1 = Forces on");
}

}  // namespace tvx::test::pairtest
