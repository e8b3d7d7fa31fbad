// A user with a box of instruments and an empty folder gets everything flying through the forms alone.

#include "drawn/devices/AltimeterDevice.h"
#include "tests/e2e/NewInstallation.h"

namespace tvx::e2e {
namespace {

// Position for a value on a face whose marks are so far apart, within reach of the simulator's motion.
void ExpectNeedle(NewInstallation& installation, int gaugeID, double position, const char* what) {
  const vc::NeedleDevice& gauge = installation.Box().Needle(gaugeID);
  EXPECT_TRUE(Eventually([&] { return gauge.First() && std::abs(*gauge.First() - position) < 12; })) << what;
}

TEST(FromNothing, AnInstallationIsSetUpAndFlies) {
  NewInstallation installation;
  installation.Everything();
  ASSERT_FALSE(HasFailure());
  vc::Simulator& sim = installation.TheCockpit().Sim();
  sim.SetPaused(true);
  const double airspeed = sim.State().airspeed, rpm = sim.State().rpm;
  ASSERT_TRUE(airspeed > 80 && airspeed < 120 && rpm > 1500 && rpm < 2500) << airspeed << ' ' << rpm;
  ExpectNeedle(installation, 10, 366 + (airspeed - 80) / 40 * (636 - 366),
               "the airspeed on the Plate that was calibrated");
  const double position = 462 + (rpm - 1500) / 1000 * (699 - 462);
  ExpectNeedle(installation, 20, position, "the Function that was defined");
  vc::ClusterUnit& cluster = installation.TheCockpit().Cluster();
  EXPECT_TRUE(Eventually([&] { return std::abs(cluster.Needle(0) - position) < 12; }))
      << "and on the engine cluster";
  const auto& altimeter = dynamic_cast<vc::AltimeterDevice&>(*installation.TheCockpit().Gauges().Find(12));
  EXPECT_TRUE(Eventually([&] {
    return altimeter.Feet() && std::abs(*altimeter.Feet() - sim.State().altitude) < 30;
  })) << "an instrument that needs no Function of its own";
  EXPECT_TRUE(installation.boxes.shown.empty()) << installation.boxes.shown[0];
}

}  // namespace
}  // namespace tvx::e2e
