#include "core/Lighting.h"
#include "tests/fakes/CockpitRig.h"

namespace tvx::lightingtest {

struct Inputs {
  double level, bus1, bus2, navigation;
};

TEST(Lighting, ChangesInStepsAndKeepsQuietBetweenThem) {
  const std::tuple<const char*, Inputs, bool, int> cases[] = {
      {"dark, as it starts", {0, 0, 0, 0}, false, 0},
      {"half: step 8, lit, instrument lights", {512, 0, 0, 0}, true, 0x4081},
      {"another step, but within 20", {530, 0, 0, 0}, false, 0x4081},
      {"20 away, another step", {545, 0, 0, 0}, true, 0x4091},
      {"the full level is the brightest step", {1023, 0, 0, 0}, true, 0x40F1},
      {"a level far out of range", {1e9, 0, 0, 0}, false, 0x40F1},
      {"the first bus is powered", {1023, 28, 0, 0}, true, 0x40F3},
      {"its voltage sags, not by more than 6", {1023, 22.1, 0, 0}, false, 0x40F3},
      {"both", {1023, 28, 13.8, 0}, true, 0x40F7},
      {"navigation lights", {1023, 28, 13.8, 1}, true, 0xC0F7},
      {"instrument lights off", {0, 28, 13.8, 1}, true, 0x8006},
      {"power off", {0, 2, 2, 0}, true, 0x0000},
  };
  Lighting lighting;
  for (const auto& [what, in, changed, word] : cases) {
    EXPECT_EQ(lighting.Update(in.level, in.bus1, in.bus2, in.navigation, 32, 0), changed) << what;
    EXPECT_EQ(lighting.Word(), word) << what;
  }
}

TEST(Lighting, ABusIsPoweredFromEightVoltsOn) {
  Lighting lighting;
  lighting.Update(0, 8, 7.99, 0, 0, 0);
  EXPECT_EQ(lighting.Word(), 0x0002);
}

TEST(Lighting, TheModeTellsWhichLightsLightTheFaces) {
  const struct {
    int setting1, setting2;
    bool byInstruments, byNavigation, byNothing;
  } modes[] = {{32, 0, true, false, false},
               {0, 1, true, true, true},
               {0, 2, false, false, false},
               {1, 0, false, true, false},
               {63, 0, true, true, false}};
  for (const auto& mode : modes) {
    const auto lit = [&mode](double level, double navigation) {
      Lighting lighting;
      lighting.Update(level, 0, 0, navigation, mode.setting1, mode.setting2);
      return (lighting.Word() & 1) != 0;
    };
    EXPECT_EQ(lit(512, 0), mode.byInstruments) << mode.setting1 << "," << mode.setting2;
    EXPECT_EQ(lit(0, 1), mode.byNavigation) << mode.setting1 << "," << mode.setting2;
    EXPECT_EQ(lit(0, 0), mode.byNothing) << mode.setting1 << "," << mode.setting2;
  }
}

struct LitRig : CockpitRig {
  LitRig() {
    for (const int n : {9, 14, 16, 51}) Define(n);
    model.Gauges[12] = {.GaugeType = 1, .GaugeFunction1 = 51};
    model.Gauges[13] = {.GaugeType = 1, .GaugeFunction1 = 51, .GaugeSetting5 = kOptionUnlit};
    AddPlate(0, 100, 1000);
  }
};

TEST(Lighting, ATickInWhichItChangesCarriesItAlone) {
  LitRig rig;
  rig.Play(
      "start; tick = 12 5 0, 13 5 0; tick = 12 8 0, 13 8 0; (what an earlier run left is set right); "
      "set 14 512; set 51 50; tick = 12 8 16513, 13 8 0; (gauge 13 takes no lighting)");
  EXPECT_EQ(rig.cycle.Boxes().BoxInstrLights, "ON");
  EXPECT_EQ(rig.cycle.Boxes().boxNavLights, "OFF");
  rig.Play("tick = 12 5 500, 13 5 500");
}

TEST(Lighting, AlwaysLitFacesAreLitWithTheValuesAndWithoutExceptions) {
  LitRig rig;
  rig.model.General.LightsSetting1 = 0;
  rig.model.General.LightsSetting2 = 1;
  rig.Play("start; tick = 12 8 1, 13 8 1, 12 5 0, 13 5 0");
}

TEST(Lighting, IsSentAgainWhenItsBatchWasDropped) {
  LitRig().Play(
      "start; tick = 12 5 0, 13 5 0; tick = 12 8 0, 13 8 0; refuse 1; set 14 512; tick =; "
      "refuse 0; tick = 12 8 16513, 13 8 0; tick =");
}

TEST(Lighting, DoesNotHoldUpTheValuesWhileTheBusIsAway) {
  LitRig rig;
  rig.Start();
  rig.Bus().Unplug();
  for (int i = 0; i < 5; ++i) rig.Tick();
  rig.Set(9, 28);
  for (int i = 0; i < 5; ++i) rig.Tick();
  EXPECT_EQ(rig.cycle.Boxes().boxVoltage.View(), "28.0");
  EXPECT_GE(rig.cycle.TickCount, 8);
}

}  // namespace tvx::lightingtest
