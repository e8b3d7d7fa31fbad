#include <gtest/gtest.h>

#include <cmath>

#include "ffb/YokeSettings.h"
#include "ffb/forces/Feel.h"
#include "ffb/forces/ForceShaper.h"
#include "ffb/forces/Forces.h"

namespace tvx::test {
namespace {

const double kNan = std::nan("");

// The standard settings, and a flight whose values a test sets.
struct ForcesTest : testing::Test {
  const ForceSettings settings = ReadFfbSettings(ConfigModel{}).forces;
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

TEST_F(ForcesTest, TrimMovesTheCentreWithinItsRange) {
  values.ElevatorTrim = -0.5f;
  values.AileronTrim = 3;
  EXPECT_NEAR(Wanted(false).axes[0].centre, 0.2 * 511, 1e-9);
  EXPECT_NEAR(Wanted(false).axes[1].centre, -0.5 * 0.4 * 511, 1e-9);
}

TEST(Forces, EffectsByTheirCurves) {
  struct Row {
    const char* what;
    double value, expected;
  };
  const Row rows[] = {
      {"buffet halfway", StallBuffet(52.5, 50, 0.1), 0.5},
      {"buffet at the stall", StallBuffet(50, 50, 0.1), 1},
      {"buffet without air", StallBuffet(5, 50, 0.1), 0},
      {"stall speed at 4 g", StallSpeedUnderLoad(50, 4), 100},
      {"stall speed weightless", StallSpeedUnderLoad(50, -1), 25},
      {"at the line", OverspeedVibration(163.2, 160), 0.5},
      {"rolling", RunwayRumble(30), 0.5},
      {"bumps at 30 kt", RumbleFrequency(30, 3, 20), 30 * 0.514444 / 3},
      {"bumps at speed", RumbleFrequency(300, 3, 20), 20},
      {"hard touch later", WheelShock(9, 0.1), 0.5},
      {"not touched", WheelShock(2, -1), 0},
      {"rough air", GustStrength(-0.6), 1},
      {"no number",
       StallBuffet(kNan, 50, 0.1) + OverspeedVibration(kNan, 160) + RunwayRumble(kNan) + WheelShock(kNan, 0) +
           GustStrength(kNan),
       0},
  };
  for (const Row& row : rows) EXPECT_NEAR(row.value, row.expected, 1e-9) << row.what;
}

// What is felt where: the strongest vibration's frequency tells which.
TEST_F(ForcesTest, EffectsInTheFlight) {
  struct Row {
    const char* what;
    FfbVariables values;
    double frequency;
  };
  FfbVariables cruise, stall, fast, taxi, gearUp, paused, loaded;
  cruise.Airspeed = 100;
  stall.Airspeed = 50;
  fast.Airspeed = 175;
  taxi.OnGround = true, taxi.GroundSpeed = 20;
  gearUp = taxi, gearUp.GearDown = false;
  paused = fast, paused.Paused = true;
  loaded.Airspeed = 100, loaded.NormalG = 4;
  const Row rows[] = {{"cruise", cruise, 0}, {"stall", stall, 8},    {"accelerated stall", loaded, 8},
                      {"fast", fast, 18},    {"gear up", gearUp, 0}, {"paused", paused, 0},
                      {"taxi", taxi, 3}};
  for (const Row& row : rows) {
    feel = {};
    values = row.values;
    Pass(50);
    const AxisForce pitch = Wanted().axes[1];
    EXPECT_EQ(pitch.amplitude > 0, row.frequency > 0) << row.what;
    if (row.frequency > 0) {
      EXPECT_NEAR(pitch.frequency, row.frequency, 1e-9) << row.what;
    }
    EXPECT_EQ(Wanted(false).axes[1].amplitude, 0) << row.what;
  }
}

TEST_F(ForcesTest, TouchDownShakesOnceAndGroundForceComesIn) {
  values.Airspeed = 20;
  values.NormalG = 1;
  Pass(25);
  const double inTheAir = Wanted().axes[0].gradient;
  values.OnGround = true;
  values.NormalG = 2.5f;
  Pass();
  EXPECT_NEAR(Wanted().axes[1].amplitude, 0.35, 0.1);
  values.NormalG = 1;
  Pass(30);
  EXPECT_EQ(Wanted().axes[1].amplitude, 0);
  EXPECT_GT(Wanted().axes[0].gradient, inTheAir);
}

TEST_F(ForcesTest, GustsAreBoundedAndGoWithTheAir) {
  values.Airspeed = 100;
  double largest = 0;
  for (int i = 0; i < 2000; ++i) {
    values.NormalG = i < 1000 ? (i % 10 < 5 ? 0.5f : 1.5f) : 1.0f;
    Pass();
    const double bias = std::abs(Wanted().axes[0].bias);
    ASSERT_LE(bias, 0.15);
    if (i < 1000) largest = std::max(largest, bias);
    if (i > 1500) {
      ASSERT_LT(bias, 0.001) << i;
    }
  }
  EXPECT_GT(largest, 0.05);
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
                                          std::array{30000, 60000, 50000}, std::array{0, 60000, 60100}}) {
    EXPECT_FALSE(CalibrateAxis(low, centre, high, axis)) << centre;
  }
}

}  // namespace
}  // namespace tvx::test
