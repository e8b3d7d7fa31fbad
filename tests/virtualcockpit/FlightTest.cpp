#include "tests/Test.h"
#include "virtualcockpit/sim/flight/Flight.h"

namespace tvx::vc {
namespace {

const Flight& TheFlight() {
  static const Flight flight;
  return flight;
}

// Through two rounds, the beginning of the second included, nothing jumps and nothing is no number.
TEST(Flight, ChangesNoFasterThanAnAircraftCan) {
  using S = FlightState;
  const struct {
    const char* name;
    double FlightState::*member;
    double perSecond;  // the most it may change in a second
    bool angle = false;
  } cases[] = {{"airspeed", &S::airspeed, 6},
               {"altitude", &S::indicatedAltitude, 25},
               {"verticalSpeed", &S::verticalSpeed, 260},
               {"heading", &S::heading, 7, true},
               {"compass", &S::compass, 14, true},
               {"bank", &S::bank, 14},
               {"rpm", &S::rpm, 1200},
               {"fuelLeft", &S::fuelLeft, 1},
               {"deviation", &S::nav1Deviation, 30},
               {"glide", &S::nav1Glide, 1.5},
               {"latitude", &S::latitude, 0.001}};
  constexpr double kStep = 0.05;
  FlightState last = TheFlight().StateAt(0);
  for (double t = kStep; t < 2 * Flight::kSeconds; t += kStep) {
    const FlightState now = TheFlight().StateAt(t);
    for (const auto& c : cases) {
      ASSERT_TRUE(std::isfinite(now.*c.member)) << c.name << " at " << t;
      const double change = now.*c.member - last.*c.member;
      ASSERT_LE(std::abs(c.angle ? std::remainder(change, 360) : change), c.perSecond * kStep)
          << c.name << " at " << t << " s";
    }
    last = now;
  }
}

TEST(Flight, IsAWholeFlight) {
  std::set<std::string_view> phases;
  double highest = 0, turned = 0;
  bool to = false, from = false;
  for (double t = 0; t < Flight::kSeconds; t += 0.5) {
    const FlightState s = TheFlight().StateAt(t);
    phases.insert(s.phase);
    highest = std::max(highest, s.heightAboveGround);
    turned += s.turnRate * 0.5;
    to = to || s.nav1Flag == 1;
    from = from || s.nav1Flag == 2;
  }
  EXPECT_EQ(phases.size(), 10u);
  EXPECT_GT(highest, 900);
  EXPECT_NEAR(turned, -360, 5) << "one circuit";
  EXPECT_TRUE(to && from);
  const FlightState down = TheFlight().StateAt(250);
  EXPECT_NEAR(down.heightAboveGround, 0, 5);
  EXPECT_NEAR(down.headingMagnetic, 240, 3);
}

TEST(Flight, TakesAnyTime) {
  for (const double t :
       {-1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
    EXPECT_EQ(TheFlight().StateAt(t).time, 0);
  EXPECT_TRUE(std::isfinite(TheFlight().StateAt(1e300).altitude));
}

}  // namespace
}  // namespace tvx::vc
