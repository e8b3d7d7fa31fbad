#include <numbers>

#include "ffb/YokeSettings.h"
#include "ffb/forces/Feel.h"
#include "ffb/forces/ForceShaper.h"
#include "ffb/forces/Forces.h"
#include "ffb/forces/SafetyGate.h"
#include "tests/Test.h"

namespace tvx::test::forcestest {

const double kNan = std::nan("");

// The standard settings, and a flight whose values a test sets.
struct ForcesTest : testing::Test {
  ForceSettings settings = ReadFfbSettings(ConfigModel{}).forces;
  FfbVariables values;
  Feel feel;
  // Time passes with these values, in cycles of 40 ms.
  void Pass(int cycles = 1) {
    for (int i = 0; i < cycles; ++i) feel.Advance(values, settings, 0.04);
  }
  ForceCommand Wanted(bool effects = true, bool trim = true) const {
    return feel.Wanted(values, settings, effects, trim);
  }
};

TEST(Forces, DynamicPressureIsThatOfTheStandardAtmosphere) {
  EXPECT_NEAR(DynamicPressure(100), 1621, 1);  // half of 1.225 kg/m3 by (51.44 m/s) squared
  EXPECT_DOUBLE_EQ(DynamicPressure(200), 4 * DynamicPressure(100));
  EXPECT_EQ(DynamicPressure(kNan), 0);
}

TEST(Forces, CurveGoesThroughItsPointsAndWithThePressureBetween) {
  GeneralFFBRecord record;
  record.ForceTable[0] = {100, 40, 0, 0};
  record.ForceTable[1] = {0, 10, 0, 0};     // out of order
  record.ForceTable[2] = {200, 200, 0, 0};  // above 100 %
  record.ForceTable[3] = {std::nanf(""), 90, 0, 0};
  record.ForceTable[4] = {100, 99, 0, 0};  // a second at one airspeed
  for (std::size_t i = 5; i < 13; ++i) record.ForceTable[i] = {0, 10, 0, 0};
  const ForceCurve curve = MakeForceCurve(record, Axis::Roll);
  ASSERT_EQ(curve.count, 3u);
  const std::pair<double, double> rows[] = {{-10, 0.1}, {0, 0.1},   {50, 0.1 + 0.3 / 4}, {100, 0.4},
                                            {200, 1.0}, {900, 1.0}, {kNan, 0.1}};
  for (const auto& [knots, force] : rows) EXPECT_NEAR(ForceAt(curve, knots), force, 1e-9) << knots;
}

// The whole hand force of FFB Mode, over airspeed and deflection: grows with airspeed, is symmetric, bounded,
// and has no jumps.
TEST_F(ForcesTest, HandForceOverAirspeed) {
  double before[2] = {0, 0};
  for (double knots = 0; knots <= 400; knots += 0.5) {
    values.Airspeed = static_cast<float>(knots);
    feel = {};
    Pass();
    const ForceCommand command = Wanted(false);
    for (const Axis axis : {Axis::Roll, Axis::Pitch}) {
      const double full = HandForce(command, axis, -511);
      ASSERT_GT(full, 0) << "towards the centre at " << knots;
      ASSERT_LE(full, settings.maximum) << knots;
      double& last = before[static_cast<std::size_t>(axis)];
      ASSERT_GE(full, last) << knots;
      if (knots > 0) {
        ASSERT_LT(full - last, 0.005) << knots;
      }
      last = full;
      for (double deflection = 0; deflection <= 511; deflection += 7) {
        ASSERT_DOUBLE_EQ(HandForce(command, axis, deflection), -HandForce(command, axis, -deflection));
        ASSERT_LE(std::abs(HandForce(command, axis, deflection)), full);
      }
    }
  }
}

// A centre near the stop, or beyond it, leaves some way to either side.
TEST(Forces, PlaceAndRatioAgreeWhereverTheCentreIs) {
  for (const double centre : {-2000.0, -460.0, 0.0, 300.0, 511.0, 2000.0}) {
    for (const double ratio : {-1.0, -0.5, 0.0, 0.25, 1.0}) {
      const double place = PlaceOfRatio(ratio, centre);
      EXPECT_NEAR(RatioOfPlace(place, centre), ratio, 1e-9) << centre;
      EXPECT_LE(std::fabs(place), 511) << centre;
    }
    EXPECT_GE(PlaceOfRatio(1, centre) - PlaceOfRatio(0, centre), 51) << centre;
    EXPECT_GE(PlaceOfRatio(0, centre) - PlaceOfRatio(-1, centre), 51) << centre;
    EXPECT_EQ(RatioOfPlace(511, centre), 1) << centre;
  }
}

TEST_F(ForcesTest, TrimMovesTheCentreWithinItsRange) {
  values.ElevatorTrim = -0.5f;
  values.AileronTrim = 3;
  EXPECT_NEAR(Wanted(false).axes[0].centre, 0.2 * 511, 1e-9);
  EXPECT_NEAR(Wanted(false).axes[1].centre, -0.5 * 0.4 * 511, 1e-9);
}

TEST(Forces, EffectsByTheirCurves) {
  const std::tuple<const char*, double, double> rows[] = {
      {"buffet halfway", StallBuffet(52.5, 50, 0.1), 0.5},
      {"buffet at the stall", StallBuffet(50, 50, 0.1), 1},
      {"buffet without air", StallBuffet(5, 50, 0.1), 0},
      {"stall speed at 4 g", StallSpeedUnderLoad(50, 4), 100},
      {"stall speed weightless", StallSpeedUnderLoad(50, -1), 25},
      {"at the line", OverspeedVibration(163.2, 160), 0.5},
      {"rolling", RunwayRumble(30), 0.5},
      {"bumps at 30 kt", RumbleFrequency(30, 3, 20), 30 * 0.514444 / 3},
      {"bumps at speed", RumbleFrequency(300, 3, 20), 20},
      {"bumps at no distance", RumbleFrequency(30, 0, 20), 3},
      {"bumps at standstill", RumbleFrequency(0, 3, 20), 3},
      {"bumps slower than the slowest", RumbleFrequency(300, 3, 2), 3},
      {"buffet, no margin given", StallBuffet(50.25, 50, 0), 0.5},
      {"buffet a little below its stall", StallBuffet(20, 50, 0.1), 0.5},
      {"no stall speed", StallBuffet(0, 0, 0.1), 0},
      {"no highest speed", OverspeedVibration(100, 0), 0},
      {"below the line", OverspeedVibration(155.2, 160), 0},
      {"far above the line", OverspeedVibration(171.2, 160), 1},
      {"stall speed at 16 g", StallSpeedUnderLoad(50, 16), 150},
      {"stall speed, load unknown", StallSpeedUnderLoad(50, kNan), 50},
      {"light touch", WheelShock(1, 0), 0},
      {"slightly rough", GustStrength(0.31), 0.5},
      {"hard touch later", WheelShock(9, 0.1), 0.5},
      {"not touched", WheelShock(2, -1), 0},
      {"rough air", GustStrength(-0.6), 1},
      {"no number",
       StallBuffet(kNan, 50, 0.1) + OverspeedVibration(kNan, 160) + RunwayRumble(kNan) + WheelShock(kNan, 0) +
           GustStrength(kNan),
       0},
  };
  for (const auto& [what, value, expected] : rows) EXPECT_NEAR(value, expected, 1e-9) << what;
}

// What is felt where, and how strongly: each effect with a frequency and levels of its own.
TEST_F(ForcesTest, EffectsInTheFlight) {
  for (std::size_t i = 0; i < kEffects; ++i) {
    const double level = 0.1 * static_cast<double>(i + 1), frequency = 10.0 + static_cast<double>(i);
    settings.effects[i] = {EffectSetting{frequency, level}, EffectSetting{frequency, level / 2}};
  }
  settings.bumps = 3;
  using V = FfbVariables;
  using enum Effect;
  const std::tuple<const char*, void (*)(V&), Effect, double, double> rows[] = {
      {"cruise", [](V& v) { v.Airspeed = 100; }, StallBuffet, 0, 0},
      {"near the stall", [](V& v) { v.Airspeed = 52.5f; }, StallBuffet, 0.5, 10},
      {"accelerated stall", [](V& v) { v.Airspeed = 100, v.NormalG = 4; }, StallBuffet, 1, 10},
      {"as slow on the ground", [](V& v) { v.Airspeed = 50, v.OnGround = true; }, StallBuffet, 0, 0},
      {"stall warning", [](V& v) { v.Airspeed = 90, v.StallWarning = true; }, Shaker, 1, 15},
      {"stall warning on the ground", [](V& v) { v.OnGround = v.StallWarning = true; }, Shaker, 0, 0},
      {"too fast", [](V& v) { v.Airspeed = 163.2f; }, Overspeed, 0.5, 11},
      {"overspeed warning", [](V& v) { v.Airspeed = 90, v.OverspeedWarning = true; }, Overspeed, 1, 11},
      {"paused", [](V& v) { v.Airspeed = 50, v.Paused = true; }, StallBuffet, 0, 0},
      {"rolling", [](V& v) { v.OnGround = true, v.GroundSpeed = 30; }, RunwayRumble, 0.5, 30 * 0.514444 / 3},
      {"rolling fast", [](V& v) { v.OnGround = true, v.GroundSpeed = 90; }, RunwayRumble, 1, 14},
      {"sliding with the gear up", [](V& v) { v.OnGround = true, v.GroundSpeed = 30, v.GearDown = false; },
       RunwayRumble, 0, 0},
  };
  for (const auto& [what, in, effect, strength, frequency] : rows) {
    SCOPED_TRACE(what);
    feel = {};
    values = {};
    in(values);
    Pass(50);
    for (std::size_t axis = 0; axis < kAxes; ++axis) {
      const double level = settings.effects[static_cast<std::size_t>(effect)][axis].level;
      EXPECT_NEAR(Wanted().axes[axis].amplitude, strength * level, 1e-5);
      EXPECT_NEAR(Wanted().axes[axis].frequency, frequency, 1e-5);
      EXPECT_EQ(Wanted(false).axes[axis].amplitude, 0) << "switched off";
      EXPECT_EQ(Wanted(false).axes[axis].bias, 0);
    }
  }
  values = {};
  values.Airspeed = 50, values.OverspeedWarning = true;  // two at once: their powers add up
  feel = {};
  Pass();
  EXPECT_NEAR(Wanted().axes[0].amplitude, std::hypot(0.1, 0.2), 1e-9);
  EXPECT_EQ(Wanted().axes[0].frequency, 11) << "the stronger one's";
}

TEST_F(ForcesTest, TouchDownShakesOnceAndGroundForceComesIn) {
  const double level = settings.effects[static_cast<std::size_t>(Effect::WheelShock)][1].level;
  settings.effects[static_cast<std::size_t>(Effect::StallBuffet)] = {};
  // With the gear down or not: load at the touch, and so many cycles later, and the strength then.
  const std::tuple<bool, float, float, int, double> rows[] = {
      {true, 2.5f, 1, 0, 1},
      {true, 2.5f, 1, 5, 0.25},  // half of it is left after a tenth of a second
      {true, 1.75f, 1, 0, 0.5},
      {false, 2.5f, 1, 0, 0.5},             // on its belly
      {true, 1, 2.5f, 2, std::exp2(-0.8)},  // the hardest load comes a little later
      {true, 1, 2.5f, 6, 0},                // or long after: another bump
      {true, 2.5f, 1, 24, std::exp2(-9.6)},
      {true, 2.5f, 1, 26, 0}};
  for (const auto& [gear, first, second, cycles, strength] : rows) {
    feel = {};
    values = {};
    values.Airspeed = 20;
    Pass(25);
    EXPECT_EQ(Wanted().axes[1].amplitude, 0);
    EXPECT_FALSE(feel.Grounded());
    values.OnGround = true;
    values.GearDown = gear;
    values.NormalG = first;
    Pass();
    for (int i = 0; i < cycles; ++i) {
      values.NormalG = i + 1 == cycles ? second : 1;
      Pass();
    }
    EXPECT_NEAR(Wanted().axes[1].amplitude, strength * level, 1e-6) << first << ' ' << cycles;
  }
  EXPECT_TRUE(feel.Grounded());
  const double air = ForceAt(settings.curves[0], 20);
  ASSERT_LT(air, settings.groundForce);
  EXPECT_NEAR(Wanted().axes[0].gradient, settings.groundForce, 1e-9);
  values.OnGround = false;
  Pass(5);
  EXPECT_NEAR(Wanted().axes[0].gradient, (air + settings.groundForce) / 2, 1e-9) << "half of the change";
  Pass(5);
  EXPECT_NEAR(Wanted().axes[0].gradient, air, 1e-9);
  values.Airspeed = 240;
  EXPECT_NEAR(Wanted().axes[1].gradient, settings.maximum, 1e-9);
  settings.maximum = 0.3;
  EXPECT_NEAR(Wanted().axes[1].gradient, 0.3, 1e-9);
}

TEST_F(ForcesTest, CentreModeIsASpringAndServoModeGoesToAPlace) {
  settings.friction = 0.11, settings.damping = 0.22;
  const ForceCommand centred = Feel::Centred(settings), held = Feel::Held(settings, {100, -50});
  EXPECT_EQ(centred.drive, Drive::Spring);
  EXPECT_EQ(held.drive, Drive::Servo);
  EXPECT_EQ((std::array{held.axes[0].centre, held.axes[1].centre}), (std::array{100.0, -50.0}));
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    EXPECT_NEAR(centred.axes[axis].gradient, 2 * settings.groundForce, 1e-9);
    EXPECT_EQ(centred.axes[axis].centre, 0);
    EXPECT_NEAR(held.axes[axis].gradient, 0.6 * settings.maximum, 1e-9) << "a pilot can overpower it";
  }
  for (const ForceCommand& command : {centred, held, Wanted()}) {
    EXPECT_EQ((std::array{command.limit, command.friction, command.damping}),
              (std::array{settings.maximum, 0.11, 0.22}));
  }
  settings.groundForce = 0.6;
  EXPECT_NEAR(Feel::Centred(settings).axes[0].gradient, settings.maximum, 1e-9);
}

// Loads that a pilot flies are no gusts: the slower ones leave the yoke still, whatever their size.
TEST_F(ForcesTest, GustsAreBoundedAndGoWithTheAirAndCalmAirIsCalm) {
  // The least and the most of the largest bias; a yoke's own bearings hold 0.02.
  const std::tuple<const char*, double (*)(double seconds), double, double> rows[] = {
      {"steady turn", [](double) { return 2.0; }, 0, 0},
      {"phugoid", [](double t) { return 1 + std::sin(0.3 * t); }, 0, 0},
      {"pull-up within a second", [](double t) { return 1 + 1.5 * std::clamp(t - 5, 0.0, 1.0); }, 0, 0.02},
      {"half a hertz", [](double t) { return 1 + 0.9 * std::sin(std::numbers::pi * t); }, 0, 0.005},
      {"light chop", [](double t) { return 1 + 0.1 * std::sin(6 * std::numbers::pi * t); }, 0.002, 0.03},
      {"gusts", [](double t) { return 1 + 0.6 * std::sin(6 * std::numbers::pi * t); }, 0.05, 0.15},
      {"hard ones", [](double t) { return std::fmod(t, 0.4) < 0.2 ? 0.5 : 1.5; }, 0.05, 0.15},
  };
  for (const auto& [what, load, least, most] : rows) {
    feel = {};
    values.Airspeed = 100;
    double largest = 0;
    for (double t = 0; t < 20; t += 0.04) {
      values.NormalG = static_cast<float>(load(t));
      Pass();
      largest = std::max(largest, std::abs(Wanted().axes[0].bias));
    }
    EXPECT_GE(largest, least) << what;
    EXPECT_LE(largest, most) << what;
    values.NormalG = 1;
    Pass(500);
    EXPECT_LT(std::abs(Wanted().axes[0].bias), 0.001) << what << ", over";
  }
}

TEST(Forces, OfACommandOnTheHand) {
  const std::tuple<const char*, Drive, AxisForce, double, double, double> rows[] = {
      {"spring", Drive::Spring, {100, 0.5, 0, 0, 0}, 1, 355.5, -0.25},
      {"spring, the other side", Drive::Spring, {100, 0.5, 0, 0, 0}, 1, -155.5, 0.25},
      {"spring, at rest", Drive::Spring, {100, 0.5, 0, 0, 0}, 1, 100, 0},
      {"spring, limited", Drive::Spring, {0, 1, 0, 0, 0}, 0.3, 511, -0.3},
      {"spring and gust", Drive::Spring, {0, 0.5, 0.125, 0, 0}, 1, 255.5, -0.125},
      {"servo within its band", Drive::Servo, {100, 0.5, 0, 0, 0}, 1, 132, -0.25},
      {"servo beyond its band", Drive::Servo, {100, 0.5, 0, 0, 0}, 1, 400, -0.5},
      {"servo beyond it, the other side", Drive::Servo, {100, 0.5, 0, 0, 0}, 1, -400, 0.5},
      {"servo and gust, limited", Drive::Servo, {0, 0.5, 0.4, 0, 0}, 0.6, -400, 0.6},
  };
  for (const auto& [what, drive, axis, limit, position, force] : rows) {
    ForceCommand command;
    command.drive = drive;
    command.limit = limit;
    command.axes[1] = axis;
    EXPECT_NEAR(HandForce(command, Axis::Pitch, position), force, 1e-9) << what;
    EXPECT_EQ(HandForce(command, Axis::Roll, 0), 0) << what;
  }
}

TEST(SafetyGate, OpensSlowlyAndShutsInTime) {
  SafetyGate gate;
  EXPECT_EQ(gate.Next(SafetyCause::None, 60), 0.05) << "a late cycle counts as a tenth of a second";
  EXPECT_EQ(gate.Next(SafetyCause::None, 0.1), 0.1);
  EXPECT_EQ(gate.Next(SafetyCause::None, kNan), 0.1);
  EXPECT_EQ(gate.Next(SafetyCause::Halted, -1), 0.1);
  for (int i = 0; i < 25; ++i) gate.Next(SafetyCause::None, 0.1);
  EXPECT_EQ(gate.Opening(), 1);
  EXPECT_EQ(gate.Next(SafetyCause::Off, 0.25), 0.5);
  EXPECT_FALSE(gate.Shut());
  EXPECT_EQ(gate.Next(SafetyCause::Off, 10), 0);
  EXPECT_TRUE(gate.Shut());
}

// However abruptly everything changes, what a hand feels does so in steps that it can hold.
TEST(ForceShaper, NoStepIsLargerThanAHandCanHold) {
  std::uint32_t random = 12345;
  const auto next = [&](double low, double high) {
    random = random * 1664525u + 1013904223u;
    return low + (high - low) * (random >> 8) / 16777216.0;
  };
  ForceShaper shaper;
  for (int round = 0; round < 400; ++round) {
    ForceCommand wanted;
    wanted.drive = round % 3 == 0 ? Drive::Servo : Drive::Spring;
    for (AxisForce& axis : wanted.axes) axis = {next(-900, 900), next(0, 3), next(-3, 3), next(0, 2), 10};
    wanted.limit = next(0, 1.5);
    if (round % 7 == 0) wanted.axes[0].centre = wanted.axes[1].bias = wanted.limit = kNan;
    const std::array<double, kAxes> hands{next(-511, 511), next(-511, 511)};
    for (int i = 0; i < 20; ++i) {
      const ForceCommand before = shaper.Last();
      // The servo's own motion is bounded by its speed; 200 counts a second of it are felt here.
      const ForceCommand& now = shaper.Next(wanted, hands, 1, 200, i == 7 ? 30 : 0.04);
      if (round == 0 && i == 0) continue;
      for (const Axis axis : {Axis::Roll, Axis::Pitch}) {
        const double position = hands[static_cast<std::size_t>(axis)];
        const double step = std::abs(HandForce(now, axis, position) - HandForce(before, axis, position));
        ASSERT_LE(std::abs(HandForce(now, axis, position)), 1);
        ASSERT_LE(now.axes[static_cast<std::size_t>(axis)].amplitude, kLargestAmplitude);
        // A new place of the hand is no step of the force that is commanded.
        if (i > 0 && i != 7) {
          ASSERT_LE(step, kLargestStep) << "round " << round << " cycle " << i;
        }
      }
    }
  }
}

TEST(ForceShaper, ChangeOfDriveKeepsTheHandsForce) {
  ForceShaper shaper;
  ForceCommand spring;
  spring.axes = {AxisForce{0, 0.8, 0, 0, 0}, AxisForce{0, 0.8, 0, 0, 0}};
  spring.limit = 1;
  const std::array<double, kAxes> hands{300, -200};
  for (int i = 0; i < 100; ++i) shaper.Next(spring, hands, 1, 600, 0.04);
  const double held = HandForce(shaper.Last(), Axis::Roll, 300);
  EXPECT_NEAR(held, -0.8 * 300 / 511, 1e-9);
  ForceCommand servo = spring;
  servo.drive = Drive::Servo;
  EXPECT_NEAR(HandForce(shaper.Next(servo, hands, 1, 600, 0), Axis::Roll, 300), held, 1e-9);
  for (int i = 0; i < 100; ++i) shaper.Next(servo, hands, 1, 600, 0.04);
  const double back = HandForce(shaper.Last(), Axis::Pitch, -200);
  EXPECT_NEAR(HandForce(shaper.Next(spring, hands, 1, 600, 0), Axis::Pitch, -200), back, 1e-9);
  EXPECT_NEAR(HandForce(shaper.Next(spring, hands, 0, 600, 0.04), Axis::Pitch, -200), 0, 1e-12);
}

TEST(YokeSettings, CalibrationNeedsACentreBetweenItsEnds) {
  AxisCalibration axis;
  EXPECT_TRUE(CalibrateAxis(10000, 30000, 60000, axis));
  EXPECT_EQ(AxisPosition(10000, axis), -511);
  EXPECT_EQ(AxisPosition(60000, axis), 511);
  EXPECT_TRUE(CalibrateAxis(60000, 30000, 20000, axis)) << "raw values that fall";
  EXPECT_EQ(AxisPosition(20000, axis), 511);
  for (const auto& [low, centre, high] : {std::array{0, 0, 0}, std::array{0, 50, 60000},
                                          std::array{30000, 60000, 50000}, std::array{0, 60000, 60100}})
    EXPECT_FALSE(CalibrateAxis(low, centre, high, axis)) << centre;
}

}  // namespace tvx::test::forcestest
