// IO module and engine cluster of the demonstration, through both programs.
#include "tests/e2e/Flight.h"

namespace tvx::e2e {
namespace {

// The demonstration's definitions: switches A1 parking brake, A5 flaps by command, A7 a keystroke, B1/B2 an
// encoder of the heading bug; axis 1 the throttle; lamp 1 the parking brake.
constexpr int kParkingBrakeSwitch = 0, kFlapsSwitch = 4, kKeySwitch = 6, kHeadingEncoder = 8;
const char* const kBrakeDataref = "sim/flightmodel/controls/parkbrake";
const char* const kHeadingDataref = "sim/cockpit2/autopilot/heading_dial_deg_mag_pilot";
const char* const kThrottleDataref = "sim/cockpit2/engine/actuators/throttle_ratio_all";

struct ModulesTest : testing::Test {
  ModulesTest() {
    flight.Sim().RestartFlight(130);
    flight.Run();
  }
  double Dataref(const char* name) { return flight.Sim().Datarefs().ValueOf(name).value_or(-1); }
  vc::IOModuleUnit& Hardware() { return flight.TheCockpit().IOModuleOf(1); }
  vc::ClusterUnit& Cluster() { return flight.TheCockpit().Cluster(); }
  IOModule& Module() { return flight.TheProgram().IOModule1().Module(); }

  // Without the gauges, whose knobs write some of the same values.
  Flight flight{[](ConfigModel& model) { model.Gauges.fill({}); }};
};

TEST_F(ModulesTest, ASwitchActsAndItsLampFollows) {
  ASSERT_TRUE(Eventually([&] { return Module().SwitchesKnown(); }));
  Hardware().SetSwitch(kParkingBrakeSwitch, true);
  EXPECT_TRUE(Eventually([&] { return Dataref(kBrakeDataref) == 1.0; }));
  EXPECT_TRUE(Eventually([&] { return Hardware().Lamp(0); })) << "the lamp shows what the simulator says";
  Hardware().SetSwitch(kParkingBrakeSwitch, false);
  EXPECT_TRUE(Eventually([&] { return Dataref(kBrakeDataref) == 0.0 && !Hardware().Lamp(0); }));
  EXPECT_EQ(Module().StatusText(), "Running");
  flight.TheProgram().HardwareBus().WriteGaugeCommand(kIOModule1Address, iom_command::kDebounce, 256 * 3 + 7);
  EXPECT_TRUE(Eventually([&] { return Hardware().Debounce(3) == 7; })) << "a gauge command for the module";
}

TEST_F(ModulesTest, EncoderAxisCommandAndKeystroke) {
  auto& datarefs = flight.Sim().Datarefs();
  datarefs.Write(datarefs.Find(kHeadingDataref), 90);
  ASSERT_TRUE(Eventually([&] { return Module().SwitchesKnown(); }));
  // The encoder's second half reads the value by a definition of its own.
  const int definition = Module().SwitchDefinitionNr(kHeadingEncoder + 1);
  ASSERT_TRUE(Eventually([&] { return Module().CurrentValue(definition) == 90; }));
  Hardware().Click(kHeadingEncoder, false);
  EXPECT_TRUE(Eventually([&] { return Dataref(kHeadingDataref) == 89; }));
  Hardware().SetAxis(0, vc::IOModuleUnit::kTop);
  EXPECT_TRUE(Eventually([&] { return Dataref(kThrottleDataref) == 1.0; }));
  Hardware().SetSwitch(kFlapsSwitch, true);
  EXPECT_TRUE(Eventually([&] { return flight.Sim().LastCommand() == "sim/flight_controls/flaps_down"; }));
  Hardware().SetSwitch(kKeySwitch, true);
  ASSERT_TRUE(Eventually([&] { return !flight.boxes.shown.empty(); }));
  EXPECT_EQ(flight.boxes.shown[0],
            "Keystroke received from IO module: w\r\nTo send to FS this window must be minimized");
}

TEST_F(ModulesTest, AModuleThatWasUnpluggedIsLitAgain) {
  Hardware().SetSwitch(kParkingBrakeSwitch, true);
  ASSERT_TRUE(Eventually([&] { return Hardware().Lamp(0); }));
  flight.TheCockpit().IOModuleLine(1)->Unplug();
  ASSERT_TRUE(Eventually([&] { return Module().StatusText().find("unplugged") != std::string::npos; }));
  Hardware().SetSwitch(kParkingBrakeSwitch, false);
  ASSERT_TRUE(flight.TheCockpit().IOModuleLine(1)->Plug());
  EXPECT_TRUE(Eventually([&] { return Dataref(kBrakeDataref) == 0.0 && !Hardware().Lamp(0); }));
  EXPECT_TRUE(flight.boxes.shown.empty());
}

TEST_F(ModulesTest, NeedlesFollowAndSweepOnceForARecalibration) {
  EngineCluster& cluster = flight.TheProgram().Cluster().Cluster();
  ASSERT_TRUE(
      Eventually([&] { return cluster.Position(0) > 200 && Cluster().Needle(0) == cluster.Position(0); }));
  EXPECT_TRUE(Eventually([&] { return cluster.boxUnitReply() == "Version: 2.1"; }));
  EXPECT_TRUE(Eventually([&] { return Cluster().BusPowered(); }));
  cluster.Recalibrate();
  ASSERT_TRUE(Eventually([&] { return Cluster().Sweeping(); }));
  EXPECT_TRUE(
      Eventually([&] { return !Cluster().Sweeping() && Cluster().Needle(0) == cluster.Position(0); }));
  EXPECT_EQ(Cluster().Sweeps(), 1u);
}

}  // namespace
}  // namespace tvx::e2e
