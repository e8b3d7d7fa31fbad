// IO module and engine cluster of the demonstration, through both programs.
#include "tests/e2e/Flight.h"
#include "tests/e2e/Hands.h"

namespace tvx::e2e {
namespace {

// The demonstration's definitions: switches A1 parking brake, A5 flaps by command, A7 a keystroke, B1/B2 an
// encoder of the heading bug; axis 1 the throttle; lamp 1 the parking brake. C5 is free.
constexpr int kParkingBrakeSwitch = 0, kFlapsSwitch = 4, kKeySwitch = 6, kHeadingEncoder = 8,
              kFreeSwitch = 20;
const char* const kBrakeDataref = "sim/flightmodel/controls/parkbrake";
const char* const kHeadingDataref = "sim/cockpit2/autopilot/heading_dial_deg_mag_pilot";
const char* const kThrottleDataref = "sim/cockpit2/engine/actuators/throttle_ratio_all";

struct ModulesTest : testing::Test {
  double Heading() { return flight.Dataref(kHeadingDataref); }
  vc::IOModuleUnit& Hardware() { return flight.TheCockpit().IOModuleOf(1); }
  vc::ClusterUnit& Cluster() { return flight.TheCockpit().Cluster(); }
  IOModule& Module() { return flight.TheProgram().IOModule1().Module(); }
  // The hand puts the parking brake's switch there, and simulator and lamp follow.
  void ExpectBrake(bool on) {
    Hardware().SetSwitch(kParkingBrakeSwitch, on);
    EXPECT_TRUE(Eventually([&] { return flight.Dataref(kBrakeDataref) == on && Hardware().Lamp(0) == on; }))
        << on;
  }
  // The heading bug at 90, as the encoder's second half knows it by its definition, whose number is returned.
  int BeginWithHeading() {
    flight.SetDataref(kHeadingDataref, 90);
    EXPECT_TRUE(Eventually([&] { return Module().SwitchesKnown(); }));
    const int definition = Module().SwitchDefinitionNr(kHeadingEncoder + 1);
    EXPECT_TRUE(Eventually([&] { return Module().CurrentValue(definition) == 90; }));
    return definition;
  }

  // Without the gauges, whose knobs write some of the same values.
  Cruise flight{[](ConfigModel& model) { model.Gauges.fill({}); }};
};

TEST_F(ModulesTest, ASwitchActsAndItsLampFollows) {
  ASSERT_TRUE(Eventually([&] { return Module().SwitchesKnown(); }));
  ExpectBrake(true);
  ExpectBrake(false);
  EXPECT_EQ(Module().StatusText(), "Running");
  flight.TheProgram().HardwareBus().WriteGaugeCommand(kIOModule1Address, iom_command::kDebounce, 256 * 3 + 7);
  EXPECT_TRUE(Eventually([&] { return Hardware().Debounce(3) == 7; })) << "a gauge command for the module";
}

TEST_F(ModulesTest, EncoderAxisCommandAndKeystroke) {
  BeginWithHeading();
  Hardware().Click(kHeadingEncoder, false);
  EXPECT_TRUE(Eventually([&] { return Heading() == 89; }));
  Hardware().SetAxis(0, vc::IOModuleUnit::kTop);
  EXPECT_TRUE(Eventually([&] { return flight.Dataref(kThrottleDataref) == 1.0; }));
  Hardware().SetSwitch(kFlapsSwitch, true);
  EXPECT_TRUE(Eventually([&] { return flight.Sim().LastCommand() == "sim/flight_controls/flaps_down"; }));
  Hardware().SetSwitch(kKeySwitch, true);
  ASSERT_TRUE(Eventually([&] { return !flight.boxes.shown.empty(); }));
  EXPECT_EQ(flight.boxes.shown[0],
            "Keystroke received from IO module: w\r\nTo send to FS this window must be minimized");
}

TEST_F(ModulesTest, AModuleThatWasUnpluggedIsLitAgain) {
  ExpectBrake(true);
  flight.TheCockpit().IOModuleLine(1)->Unplug();
  ASSERT_TRUE(Eventually([&] { return Holds(Module().StatusText(), "unplugged"); }));
  Hardware().SetSwitch(kParkingBrakeSwitch, false);
  ASSERT_TRUE(flight.TheCockpit().IOModuleLine(1)->Plug());
  ExpectBrake(false);
  EXPECT_TRUE(flight.boxes.shown.empty());
}

TEST_F(ModulesTest, NeedlesFollowAndSweepOnceForARecalibration) {
  EngineCluster& cluster = flight.TheProgram().Cluster().Cluster();
  const auto follows = [&] { return !Cluster().Sweeping() && Cluster().Needle(0) == cluster.Position(0); };
  ASSERT_TRUE(Eventually([&] { return cluster.Position(0) > 200 && follows(); }));
  EXPECT_TRUE(Eventually([&] { return cluster.boxUnitReply() == "Version: 2.1" && Cluster().BusPowered(); }));
  cluster.Recalibrate();
  ASSERT_TRUE(Eventually([&] { return Cluster().Sweeping(); }));
  EXPECT_TRUE(Eventually(follows));
  EXPECT_EQ(Cluster().Sweeps(), 1u);
}

TEST_F(ModulesTest, ADefinitionThatIsStoredInFlightActsAtOnceAndInterruptsNothing) {
  const int heading = BeginWithHeading();
  ExpectBrake(true);
  bool dark = false;
  const auto eventually = [&](auto&& condition) {
    return Eventually([&] {
      dark = dark || !Hardware().Lamp(0);
      return condition();
    });
  };
  IOModulePeripheral& module = flight.TheProgram().IOModule1();
  module.Form()->findChild<QPushButton*>("cmdConfigIOM")->click();
  // The first report tells how all stands, the second what was touched.
  Hardware().SetSwitch(kFreeSwitch, true);
  ASSERT_TRUE(eventually([&] { return Module().SwitchState()[kFreeSwitch]; }));
  Hardware().SetSwitch(kFreeSwitch, false);
  ASSERT_TRUE(eventually([&] {
    return module.ConfigurationForm()->Selected() == IOModuleInput{1, IOModuleKind::Switch, kFreeSwitch};
  }));
  OnForm("ConfigIOM").Press("cmdEdit");
  const auto& definition = flight.TheProgram().Model().IOModuleInputs[static_cast<std::size_t>(heading - 1)];
  OnForm(qPrintable(module.ConfigurationForm()->Editor()->objectName()))
      .Do({{"ComboFunction", QString::number(definition.FunctionNr)}, {"BoxOffOnValue", "50"}, {"cmdStore"}});
  EXPECT_EQ(flight.boxes.shown, Texts{});
  Hardware().SetSwitch(kFreeSwitch, true);
  EXPECT_TRUE(eventually([&] { return Heading() == 180; })) << "the new one acts: " << Heading();
  ASSERT_TRUE(eventually([&] { return Module().CurrentValue(heading) == 180; })) << "the simulator says so";
  Hardware().Click(kHeadingEncoder, false);
  EXPECT_TRUE(eventually([&] { return Heading() == 179; })) << "the old ones go on";
  EXPECT_FALSE(dark) << "the lamp was lit all the time";
  EXPECT_EQ(Module().StatusText(), "Running");
  ExpectBrake(false);
}

TEST_F(ModulesTest, TenClicksOfAFastHandAreTenSteps) {
  BeginWithHeading();
  int clicks = 0;
  QTimer hand;
  QObject::connect(&hand, &QTimer::timeout, [&] {
    Hardware().Click(kHeadingEncoder, true);
    if (++clicks == 10) hand.stop();
  });
  hand.start(10);
  EXPECT_TRUE(Eventually([&] { return clicks == 10 && Heading() == 100; })) << Heading();
}

}  // namespace
}  // namespace tvx::e2e
