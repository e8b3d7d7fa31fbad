#include "config/ConfigFile.h"
#include "ffb/YokeSettings.h"
#include "ffb/pedals/Pedals.h"
#include "tests/ffb/YokeRig.h"

namespace tvx::test::pedalstest {

YokeRecord GoodPedals() {
  YokeRig rig;
  rig.UsePedals();
  return rig.model.Yoke1;
}

TEST(PedalSettings, EachFaultHasItsMessage) {
  const char* range = "The Center is not in Range; Set Left and Right limts first";
  const std::pair<void (*)(YokeRecord&), const char*> rows[] = {
      {[](YokeRecord& r) { r.RudderAxis = 7; }, "No Rudder axe defined"},
      {[](YokeRecord& r) { r.LeftBrakeAxis = 0; }, "No Brake axe defined"},
      {[](YokeRecord& r) { r.RudderCentre = r.RudderLeft; }, range},
      {[](YokeRecord& r) { r.LeftBrakePressed = r.LeftBrakeReleased; },
       "Left brake not correctly calibrated"},
      {[](YokeRecord& r) { r.RightBrakePressed = r.RightBrakeReleased; },
       "Right brake not correctly calibrated"},
  };
  EXPECT_TRUE(CheckJoystick(GoodPedals()).empty());
  for (const auto& [change, message] : rows) {
    YokeRecord record = GoodPedals();
    change(record);
    EXPECT_EQ(CheckJoystick(record), (std::vector<std::string_view>{message}));
  }
  EXPECT_EQ(CheckJoystick(YokeRecord{}).size(), 5u);
}

TEST(PedalSettings, RatiosOfRudderAndBrakes) {
  const YokeRecord record = GoodPedals();  // 1000, 30000, 60000
  YokeRecord reversed = record;
  std::swap(reversed.RudderLeft, reversed.RudderRight);
  const std::pair<int, float> rows[] = {{0, -1},    {15500, -0.5f}, {29800, 0},
                                        {30200, 0}, {45000, 0.5f},  {65535, 1}};
  for (const auto& [raw, ratio] : rows) {
    EXPECT_FLOAT_EQ(RudderRatio(raw, record), ratio) << raw;
    EXPECT_FLOAT_EQ(RudderRatio(raw, reversed), -ratio) << raw;
  }
  EXPECT_EQ(RudderRatio(60000, YokeRecord{}), 0);
  const std::pair<float, float> brakes[] = {{BrakeRatio(900, 0, 60000), 0},
                                            {BrakeRatio(65535, 0, 60000), 1},
                                            {BrakeRatio(30000, 60000, 0), 0.5f},
                                            {BrakeRatio(500, 0, 0), 0}};
  for (const auto& [is, expected] : brakes) EXPECT_FLOAT_EQ(is, expected);
}

TEST(Joystick, EachPlaceReadsItsAxis) {
  FakeJoystick device;
  clsJoy joy(device);
  device.info.XPos = 2, device.info.YPos = 3, device.info.ZPos = 4;
  device.info.RPos = 1, device.info.UPos = 5, device.info.VPos = 6;
  for (int place = 1; place <= 6; ++place) EXPECT_EQ(ReadAxis(joy, place), place);
  joy.SetJoyX(77);
  EXPECT_EQ(joy.JoyX(), 2) << "an assigned position is not kept";
}

TEST(FfbTable, TheUsersOwnFunctionsServeInPlaceOfTheStandardOnes) {
  YokeRig rig;
  FfbPorts ports(rig.model, rig.sim, rig.boxes);
  rig.sim.OpenUDP();
  for (int i = 0; i < kFfbOffsets; ++i) {
    DefineFunction(rig.model, 100 + i, DataType::Float, 20 + i);
    rig.model.Yoke1.FfbFunctions[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(100 + i);
  }
  ports.Open();
  for (int i = 0; i < kFfbOffsets; ++i) rig.socket.Deliver(DataDatagram({{20 + i, i == 8 ? -2.5f : 0.5f}}));
  ports.ReadAll(rig.clock.now);
  EXPECT_FALSE(ports.Variables.OverspeedWarning) << "below 0";
  EXPECT_TRUE(ports.Variables.GearDown);
  EXPECT_EQ(ports.Variables.NormalG, 0.5f);
  EXPECT_TRUE(ports.AllFinite());
  ports.GetPortFFB(18);
  ports.PutPortFFB(-1);
  EXPECT_EQ(rig.boxes.shown, (Texts{"Error getting FFB Port, Offset number: 18",
                                    "Error writing to FFB Port, Offset number: -1"}));
}

TEST(FfbTable, TheStandardDatarefsAreReadAndWrittenInTheirUnits) {
  YokeRig rig;
  FfbPorts ports(rig.model, rig.sim, rig.boxes);
  DefineFfbFunctions(rig.model);
  rig.sim.OpenUDP();
  ports.Open();
  for (int port = 0; port < rig.sim.PortCount(); ++port) rig.socket.Deliver(RrefDatagram({{port, 3.0f}}));
  ports.ReadAll(rig.clock.now);
  FfbVariables& v = ports.Variables;
  EXPECT_TRUE(v.OnGround && v.AutopilotServos && v.StallWarning && v.Paused && v.GearDown);
  EXPECT_FALSE(v.OverspeedWarning);
  EXPECT_EQ(
      (std::array{v.Airspeed, v.AutopilotRoll, v.AutopilotPitch, v.ElevatorTrim, v.AileronTrim, v.NormalG}),
      (std::array{3.0f, 3.0f, 3.0f, 3.0f, 3.0f, 3.0f}));
  EXPECT_NEAR(v.GroundSpeed, 3 * 1.943844, 1e-5);
  EXPECT_EQ((std::array{v.YokeRoll, v.YokePitch, v.Rudder, v.LeftBrake, v.RightBrake}),
            (std::array<float, 5>{}))
      << "these are only written";
  for (int offset = 0; offset < kFfbOffsets; ++offset) {
    if (const FfbOffset& row = FfbOffsets()[static_cast<std::size_t>(offset)]; row.value != nullptr)
      v.*row.value = 0.5f;
    rig.socket.TakeSent();
    ports.PutPortFFB(offset);
    const auto sent = rig.socket.TakeSent();
    const bool written = offset == 1 || offset == 4 || offset == 5 || (offset >= 12 && offset != 14);
    ASSERT_EQ(sent.size(), written ? 1u : 0u) << offset;
    if (!written) continue;
    EXPECT_EQ(FloatAt(sent[0], 5), offset == 1 ? 2.0f : 0.5f) << offset;
  }
  for (std::size_t number = 282; number < 300; ++number) {
    const FunctionRecord& f = rig.model.Functions[number];
    if (f.ShortName.empty()) continue;
    EXPECT_EQ(std::tuple(f.boxMinimumValue, f.boxMaximumValue, f.ComboClass), std::tuple(-1.0f, 1.0f, 2));
  }
}

TEST(FfbTable, StandardFunctionsLeaveTheUsersAlone) {
  ConfigModel model;
  model.Functions[288].ShortName = "mine";
  DefineFfbFunctions(model);
  EXPECT_EQ(model.Functions[288].FullName, "");
  EXPECT_EQ(model.Functions[283].FullName, "#1:sim/cockpit/autopilot/autopilot_mode\r\n");
  EXPECT_EQ(model.Functions[290].ShortName, "") << "no dataref tells overspeed";
}

// Settings survive saving and loading any number of times, and yoke 2's section always reads back.
TEST(YokeSettings, SurviveTheFileAndItsSecondYoke) {
  ConfigModel model;
  model.Plates.resize(1);
  model.General.ConfigHeader = BuildConfigHeader("", "", "");
  model.GeneralFFB = StandardGeneralFFB();
  SetStandardEffects(model.Yoke1);
  model.Yoke1.GustTime = 0.75f;
  model.Yoke2.RollRight = 30000;
  model.Yoke2.OptionBits = yokeoption::kStandard;
  model.Yoke2.Effects[3] = {12.5f, 200};  // a file from elsewhere
  YokeRecord::TailNumbers(model.Yoke2, [](std::string_view, auto& number) { number = 99; });
  model.Yoke2.StallMargin = 9, model.Yoke2.TailZero = 9, model.Yoke2.GustTime = 9;
  for (int round = 0; round < 4; ++round) {
    ClearYoke2Tail(model);
    ConfigModel loaded;
    FakeMessageBoxes boxes;
    std::string error;
    ASSERT_EQ(ReadConfigText(WriteConfigText(model), loaded, boxes, error), ConfigReadResult::Loaded)
        << error;
    EXPECT_EQ((std::tuple{loaded.Yoke2.RollRight, loaded.Yoke2.OptionBits,
                          loaded.Yoke2.StallMargin + loaded.Yoke2.TailZero, loaded.Yoke2.GustTime}),
              (std::tuple{30000, yokeoption::kStandard, 0, 0}));
    YokeRecord::TailNumbers(loaded.Yoke2,
                            [](std::string_view name, auto number) { EXPECT_EQ(number, 0) << name; });
    EXPECT_TRUE(EffectsAreBlank(loaded.Yoke2));
    EXPECT_EQ(ReadFfbSettings(loaded).forces.gustTime, 0.75);
    EXPECT_EQ(ReadFfbSettings(loaded).forces.effects[0][1].level, 0.2);
    model = loaded;
  }
}

TEST(YokeSettings, NeverSetMeansStandardAndOutOfRangeIsBroughtIn) {
  ConfigModel model;
  EXPECT_EQ(ReadFfbSettings(model).forces.maximum, 0.8);
  model.GeneralFFB.MasterYoke = 9;
  model.GeneralFFB.MaximumForce = 250;
  model.GeneralFFB.GripThreshold = -5;
  model.Yoke1.GustTime = std::nanf("");
  model.Yoke1.Effects[0] = {std::nanf(""), 255};
  const FfbSettings settings = ReadFfbSettings(model);
  EXPECT_EQ(std::tuple(settings.master, settings.gripThreshold, settings.forces.maximum),
            std::tuple(1, 0, 1));
  EXPECT_EQ(settings.forces.gustTime, 0.5);
  const EffectSetting& effect = settings.forces.effects[0][0];
  EXPECT_EQ(std::pair(effect.frequency, effect.level), std::pair(0.0, 1.0));
  EXPECT_FALSE(ReadYokeSettings(YokeRecord{}).calibrated);
  model.Yoke1.StartMode = 77;
  EXPECT_EQ(ReadYokeSettings(model.Yoke1).startMode, YokeMode::Off);
}

}  // namespace tvx::test::pedalstest
