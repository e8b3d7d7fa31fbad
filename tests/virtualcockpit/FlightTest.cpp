#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

#include "virtualcockpit/sim/Flight.h"

namespace tvx::vc {
namespace {

const Flight& TheFlight() {
  static const Flight flight;
  return flight;
}

struct SmoothCase {
  const char* name;
  double FlightState::*member;
  double perSecond;  // the most it may change in a second
  bool angle = false;
};

class Smooth : public testing::TestWithParam<SmoothCase> {};

// Through two rounds, the beginning of the second included, nothing jumps and nothing is no number.
TEST_P(Smooth, ChangesNoFasterThanAnAircraftCan) {
  const SmoothCase& c = GetParam();
  constexpr double kStep = 0.05;
  double last = TheFlight().StateAt(0).*c.member;
  for (double t = kStep; t < 2 * Flight::kSeconds; t += kStep) {
    const double value = TheFlight().StateAt(t).*c.member;
    ASSERT_TRUE(std::isfinite(value)) << t;
    const double change = c.angle ? std::abs(std::remainder(value - last, 360)) : std::abs(value - last);
    ASSERT_LE(change, c.perSecond * kStep) << c.name << " at " << t << " s: " << last << " to " << value;
    last = value;
  }
}
using S = FlightState;
INSTANTIATE_TEST_SUITE_P(
    All, Smooth,
    testing::Values(SmoothCase{"airspeed", &S::airspeed, 6},
                    SmoothCase{"altitude", &S::indicatedAltitude, 25},
                    SmoothCase{"verticalSpeed", &S::verticalSpeed, 260},
                    SmoothCase{"heading", &S::heading, 7, true}, SmoothCase{"compass", &S::compass, 14, true},
                    SmoothCase{"bank", &S::bank, 14}, SmoothCase{"pitch", &S::pitch, 6},
                    SmoothCase{"rpm", &S::rpm, 1200}, SmoothCase{"manifold", &S::manifold, 15},
                    SmoothCase{"fuelLeft", &S::fuelLeft, 1}, SmoothCase{"oilPressure", &S::oilPressure, 90},
                    SmoothCase{"oilTemperature", &S::oilTemperature, 10},
                    SmoothCase{"exhaust", &S::exhaustTemperature, 120}, SmoothCase{"vacuum", &S::vacuum, 6},
                    SmoothCase{"bus1", &S::bus1, 75}, SmoothCase{"deviation", &S::nav1Deviation, 30},
                    SmoothCase{"glide", &S::nav1Glide, 1.5}, SmoothCase{"lights", &S::instrumentLights, 0.4},
                    SmoothCase{"north", &S::north, 70}, SmoothCase{"latitude", &S::latitude, 0.001}),
    [](const auto& one) { return one.param.name; });

TEST(Flight, IsTheSameEveryTimeAndEveryRound) {
  const Flight other;
  for (double t = 0; t < Flight::kSeconds; t += 7.3) {
    const FlightState a = TheFlight().StateAt(t);
    const FlightState b = other.StateAt(t);
    const FlightState next = TheFlight().StateAt(t + 3 * Flight::kSeconds);
    EXPECT_EQ(a.altitude, b.altitude);
    EXPECT_EQ(a.heading, b.heading);
    EXPECT_EQ(a.phase, b.phase);
    EXPECT_NEAR(a.altitude, next.altitude, 1e-6);
  }
}

TEST(Flight, VerticalSpeedAndAltitudeAgree) {
  for (double t = 60; t < 230; t += 10) {
    const double climbed = TheFlight().StateAt(t + 5).altitude - TheFlight().StateAt(t - 5).altitude;
    double mean = 0;
    for (double u = t - 5; u < t + 5; u += 0.1) mean += TheFlight().StateAt(u).verticalSpeed / 100;
    EXPECT_NEAR(climbed * 6, mean, 40) << t;
  }
}

TEST(Flight, IsAWholeFlight) {
  std::set<std::string_view> phases;
  double highest = 0, fastest = 0, turned = 0;
  bool to = false, from = false;
  for (double t = 0; t < Flight::kSeconds; t += 0.5) {
    const FlightState s = TheFlight().StateAt(t);
    phases.insert(s.phase);
    highest = std::max(highest, s.heightAboveGround);
    fastest = std::max(fastest, s.airspeed);
    turned += s.turnRate * 0.5;
    to = to || s.nav1Flag == 1;
    from = from || s.nav1Flag == 2;
    if (s.phase == "Cruise" && t > 145) {
      EXPECT_GT(s.instrumentLights, 0.5) << "dusk has fallen";
    }
  }
  EXPECT_EQ(phases.size(), 10u);
  EXPECT_GT(highest, 900);
  EXPECT_GT(fastest, 110);
  EXPECT_NEAR(turned, -360, 5) << "one circuit";
  EXPECT_TRUE(to && from);
  const FlightState down = TheFlight().StateAt(250);
  EXPECT_NEAR(down.heightAboveGround, 0, 5);
  EXPECT_NEAR(down.headingMagnetic, 240, 3);
}

TEST(Flight, KnobsChangeWhatTheInstrumentsShow) {
  const FlightState standard = TheFlight().StateAt(140);
  const FlightState higher = TheFlight().StateAt(140, {30.02, 240, 60});
  EXPECT_NEAR(higher.indicatedAltitude - standard.indicatedAltitude, 100, 0.1);
  EXPECT_EQ(higher.altitude, standard.altitude);
  FlightSettings towards;
  towards.course1 = standard.nav1Bearing;
  EXPECT_NEAR(TheFlight().StateAt(140, towards).nav1Deviation, 0, 1e-6);
  EXPECT_EQ(TheFlight().StateAt(140, towards).nav1Flag, 1);
}

TEST(Flight, TakesAnyTime) {
  for (const double t :
       {-1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(TheFlight().StateAt(t).time, 0);
  }
  EXPECT_TRUE(std::isfinite(TheFlight().StateAt(1e300).altitude));
}

}  // namespace
}  // namespace tvx::vc
