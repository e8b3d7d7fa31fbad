#include "core/ProcessCycle.h"
#include "tests/Test.h"
#include "tests/fakes/CockpitRig.h"

namespace tvx {
namespace {

struct NeedleRig : CockpitRig {
  NeedleRig() {
    Define(51);
    AddPlate(0, 100, 1000);
    model.Gauges[12] = {.GaugeType = 4, .GaugeFunction1 = 51};
  }
};

TEST(Cycle, MovesANeedleOnlyWhenItsPositionChanges) {
  NeedleRig rig;
  rig.Start();
  EXPECT_EQ(rig.Tick(), (Commands{{12, 5, 0}})) << "the first tick sends every value";
  rig.Tick();  // the lighting follows the first values
  EXPECT_EQ(rig.Tick(), Commands{});
  rig.Set(51, 50);
  EXPECT_EQ(rig.Tick(), (Commands{{12, 5, 500}}));
  rig.Set(51, 50.05f);
  EXPECT_EQ(rig.Tick(), Commands{}) << "the same position";
  rig.Set(51, std::numeric_limits<float>::quiet_NaN());
  EXPECT_EQ(rig.Tick(), (Commands{{12, 5, 0}})) << "no number counts as no value";
}

TEST(Cycle, VorIndicatorStartsEveryRunFromItsOwnValues) {
  CockpitRig rig;
  for (int n = 33; n <= 36; ++n) rig.Define(n);
  rig.AddGauge(50, 106);
  rig.Start();
  rig.Set(34, 127);  // as every run starts: not sent
  rig.Set(35, 15);
  rig.Set(36, 15);
  EXPECT_EQ(rig.TickValues(), (Commands{{50, 5, 472}}));
  rig.Tick();
  rig.Set(35, 2);
  rig.Set(36, 1);
  EXPECT_EQ(rig.TickValues(), (Commands{{50, 11, 258}}));
  rig.Set(35, 300);
  EXPECT_EQ(rig.TickValues(), Commands{}) << "a flag that is no byte";
}

TEST(Cycle, AltimeterGetsThePressureInItsUnit) {
  CockpitRig rig;
  for (const int n : {2, 8}) rig.Define(n);
  rig.model.Gauges[31] = {.GaugeType = 101, .GaugeSetting1 = 1, .GaugeFunction2 = 8};  // inches
  rig.Start();
  rig.Set(8, 29.92f);
  rig.Set(2, 70000);  // an altitude that no frame carries
  EXPECT_EQ(rig.Tick(), (Commands{{31, 12, 2992}, {31, 7, 0}}));
}

TEST(Cycle, PollsTakeTurnsWithIOModules) {
  CockpitRig rig;
  rig.Define(51);
  rig.AddGauge(30, 101);
  rig.AddGauge(31, 101);
  for (const int id : {60, 61}) rig.AddGauge(id, 10).GaugeFunction1 = 51;
  rig.Start();
  rig.Tick();
  rig.Tick();  // lighting
  Commands seen;
  for (int tick = 0; tick < 8; ++tick) {
    for (const auto& command : rig.Tick()) {
      if (command.command == 7 || command.command == 6) seen.push_back(command);
    }
  }
  const Commands round{{60, 6, 0}, {31, 7, 0}, {61, 6, 0}, {30, 7, 0}};
  EXPECT_EQ(Commands(seen.begin(), seen.begin() + 4), round);
  EXPECT_EQ(Commands(seen.begin() + 4, seen.end()), round);
}

TEST(Cycle, IOModuleSendsWhatIsPendingOnItsTurnOnly) {
  CockpitRig rig;
  for (const int n : {51, 52}) rig.Define(n);
  rig.model.Gauges[60] = {.GaugeType = 10, .GaugeFunction1 = 51, .GaugeFunction2 = 52};
  rig.Start();
  rig.Set(51, 5);
  rig.Set(52, 77);
  EXPECT_EQ(rig.Tick(), Commands{}) << "not its turn";
  rig.Tick();
  EXPECT_EQ(rig.Tick(), (Commands{{60, 6, 5}, {60, 4, 77}, {60, 5, 0}}));
  rig.Tick();
  EXPECT_EQ(rig.Tick(), (Commands{{60, 6, 5}})) << "nothing pending";
}

TEST(Cycle, OneWriteCarriesTheBatchWithThePollBehindA0xFF) {
  CockpitRig rig;
  rig.Define(2);
  rig.AddGauge(5, 101);
  rig.Start();
  rig.cycle.Tick();
  EXPECT_EQ(
      rig.Bus().Writes,
      (std::vector<Bytes>{{0x00, 0x05, 0x48, 0x01, 0x02, 0xFF, 0xFF, 0x00, 0x05, 0x78, 0x01, 0x02, 0xFF}}));
}

TEST(Cycle, DroppedBatchIsCountedAndSentAgainFromTheNewestValues) {
  NeedleRig rig;
  rig.Start();
  rig.Tick();
  rig.Tick();
  rig.Bus().RefuseWrites = true;
  rig.Set(51, 50);
  EXPECT_EQ(rig.Tick(), Commands{});
  EXPECT_EQ(rig.cycle.DroppedBatches(), 1u);
  rig.Set(51, 60);
  rig.Bus().RefuseWrites = false;
  EXPECT_EQ(rig.Tick(), (Commands{{12, 5, 600}}));
  EXPECT_EQ(rig.Tick(), Commands{});
  rig.Bus().RefuseWrites = true;
  rig.Set(51, 70);
  rig.Tick();
  rig.Bus().RefuseWrites = false;
  EXPECT_EQ(rig.Tick(), (Commands{{12, 5, 700}}))
      << "the needle did not move meanwhile, but it missed its frame";
}

TEST(Cycle, WhatChangesWhileTheLineIsBeingOpenedGoesOutOnceItIs) {
  NeedleRig rig;
  rig.Bus().OpenResult = SerialState::Opening;
  rig.Start();
  rig.serial.WriteGaugeCommand(9, 3, -300);
  rig.Set(51, 50);
  EXPECT_EQ(rig.Tick(), Commands{});
  EXPECT_EQ(rig.cycle.DroppedBatches(), 0u);
  rig.Bus().Answer(SerialState::Open);
  EXPECT_EQ(rig.Tick(), (Commands{{9, 3, -300}, {12, 5, 500}}));
  EXPECT_FALSE(rig.serial.TransmitPending());
}

TEST(Cycle, WorksWithoutAnyGaugeOrPort) {
  CockpitRig rig;
  rig.model.General.ComPortGS = 0;
  rig.Start();
  EXPECT_EQ(rig.Tick(), Commands{});
  EXPECT_EQ(rig.cycle.ActiveGaugeCount(), 1);
  EXPECT_EQ(rig.cycle.DroppedBatches(), 0u);
  for (int i = 0; i < 1100; ++i) rig.Tick();
  EXPECT_LE(rig.cycle.TickCount, 1000);
}

TEST(Cycle, FillsTheBoxesInTheirPatterns) {
  CockpitRig rig;
  for (int n = 1; n <= 9; ++n) rig.Define(n);
  rig.Start();
  const float values[] = {0, 85.126f, 1234.4f, 7.5f, -2.25f, 0.5f, -512.34f, 359.999f, 29.917f, 27.96f};
  for (int n = 1; n <= 9; ++n) rig.Set(n, values[n]);
  rig.Tick();  // the lighting alone: power came on
  rig.Tick();
  const FlightBoxes& boxes = rig.cycle.Boxes();
  EXPECT_EQ(
      (std::vector<std::string_view>{boxes.BoxIAS.View(), boxes.BoxAltitude.View(), boxes.boxBank.View(),
                                     boxes.boxPitch.View(), boxes.BoxVS.View(), boxes.boxCompass.View(),
                                     boxes.BoxAirPressmBar.View(), boxes.boxVoltage.View()}),
      (std::vector<std::string_view>{"085.13", "1234", "-2.3", ".50", "-512.3", "360.00", "1013", "28.0"}));
}

}  // namespace
}  // namespace tvx
