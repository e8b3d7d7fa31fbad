#include "core/ProcessCycle.h"
#include "tests/fakes/CockpitRig.h"

namespace tvx::cycletest {

struct NeedleRig : CockpitRig {
  NeedleRig() {
    Define(51);
    AddPlate(0, 100, 1000);
    model.Gauges[12] = {.GaugeType = 4, .GaugeFunction1 = 51};
  }
};

TEST(Cycle, MovesANeedleOnlyWhenItsPositionChanges) {
  NeedleRig().Play(
      "start; tick = 12 5 0; (the first sends every value); tick = 12 8 0; tick =; "
      "set 51 50; tick = 12 5 500; set 51 50.05; tick =; (the same position); set 51 nan; "
      "tick = 12 5 0; (no number counts as no value)");
}

TEST(Cycle, VorIndicatorStartsEveryRunFromItsOwnValues) {
  CockpitRig rig;
  for (int n = 33; n <= 36; ++n) rig.Define(n);
  rig.AddGauge(50, 106);
  rig.Play(
      "start; set 34 127; (as every run starts: not sent); set 35 15; set 36 15; values = 50 5 472; "
      "values = 50 8 0; set 35 2; set 36 1; values = 50 11 258; set 35 300; values =; "
      "(a flag that is no byte)");
}

TEST(Cycle, AltimeterGetsThePressureInItsUnit) {
  CockpitRig rig;
  for (const int n : {2, 8}) rig.Define(n);
  rig.model.Gauges[31] = {.GaugeType = 101, .GaugeSetting1 = 1, .GaugeFunction2 = 8};  // inches
  rig.Play("start; set 8 29.92; set 2 70000; (an altitude that no frame carries); tick = 31 12 2992, 31 7 0");
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
  rig.Play(
      "start; set 51 5; set 52 77; tick =; (not its turn); tick = 60 8 0; "
      "tick = 60 6 5, 60 4 77, 60 5 0; tick =; tick = 60 6 5; (none is pending)");
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
  NeedleRig().Play(
      "start; tick = 12 5 0; tick = 12 8 0; refuse 1; set 51 50; tick =; dropped = 1; "
      "set 51 60; refuse 0; tick = 12 5 600; tick =; refuse 1; set 51 70; tick =; refuse 0; "
      "tick = 12 5 700; (the needle did not move meanwhile, but it missed its frame)");
}

TEST(Cycle, WhatChangesWhileTheLineIsBeingOpenedGoesOutOnceItIs) {
  NeedleRig rig;
  rig.Bus().OpenResult = SerialState::Opening;
  rig.Start();
  rig.serial.WriteGaugeCommand(9, 3, -300);
  rig.Play("set 51 50; tick =; dropped = 0");
  rig.Bus().Answer(SerialState::Open);
  rig.Play("tick = 9 3 -300, 12 5 500");
  EXPECT_FALSE(rig.serial.TransmitPending());
}

TEST(Cycle, WorksWithoutAnyGaugeOrPort) {
  CockpitRig rig;
  rig.model.General.ComPortGS = 0;
  rig.Play("start; tick =; dropped = 0");
  EXPECT_EQ(rig.cycle.ActiveGaugeCount(), 1);
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

}  // namespace tvx::cycletest
