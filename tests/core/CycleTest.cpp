#include <gtest/gtest.h>

#include <limits>

#include "core/ProcessCycle.h"
#include "tests/fakes/CockpitRig.h"

namespace tvx {
namespace {

using Commands = std::vector<SentCommand>;

TEST(Cycle, MovesANeedleOnlyWhenItsPositionChanges) {
  CockpitRig rig;
  rig.Define(51);
  GaugeRecord& gauge = rig.AddGauge(12, 4);
  gauge.GaugeFunction1 = 51;
  gauge.GaugeSetting3 = static_cast<Byte>(rig.AddPlate(0, 100, 1000));
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
  GaugeRecord& inches = rig.AddGauge(31, 101);
  inches.GaugeFunction2 = 8;
  inches.GaugeSetting1 = 1;
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
  EXPECT_EQ(
      seen,
      (Commands{
          {60, 6, 0}, {31, 7, 0}, {61, 6, 0}, {30, 7, 0}, {60, 6, 0}, {31, 7, 0}, {61, 6, 0}, {30, 7, 0}}));
}

TEST(Cycle, IOModuleSendsWhatIsPendingOnItsTurnOnly) {
  CockpitRig rig;
  rig.Define(51);
  rig.Define(52);
  GaugeRecord& module = rig.AddGauge(60, 10);
  module.GaugeFunction1 = 51;
  module.GaugeFunction2 = 52;
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
  ASSERT_EQ(rig.Bus().Writes.size(), 1u);
  EXPECT_EQ(rig.Bus().Writes[0], (std::vector<Byte>{0x00, 0x05, 0x48, 0x01, 0x02, 0xFF, 0xFF, 0x00, 0x05,
                                                    0x78, 0x01, 0x02, 0xFF}));
}

TEST(Cycle, DroppedBatchIsCountedAndSentAgainFromTheNewestValues) {
  CockpitRig rig;
  rig.Define(51);
  GaugeRecord& gauge = rig.AddGauge(12, 1);
  gauge.GaugeFunction1 = 51;
  gauge.GaugeSetting3 = static_cast<Byte>(rig.AddPlate(0, 100, 1000));
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
  CockpitRig rig;
  rig.Define(51);
  GaugeRecord& gauge = rig.AddGauge(12, 1);
  gauge.GaugeFunction1 = 51;
  gauge.GaugeSetting3 = static_cast<Byte>(rig.AddPlate(0, 100, 1000));
  rig.Bus().OpenResult = SerialState::Opening;
  rig.Start();
  rig.serial.WriteGaugeCommand(9, 3, -300);
  rig.Set(51, 50);
  EXPECT_EQ(rig.Tick(), Commands{});
  EXPECT_EQ(rig.cycle.DroppedBatches(), 0u);
  rig.Bus().Answer(SerialState::Open);
  EXPECT_EQ(rig.Tick(), (Commands{{9, 3, -300}, {12, 5, 500}}));
}

TEST(Cycle, AFrameQueuedOutsideTheCycleGoesOutWithTheBatch) {
  CockpitRig rig;
  rig.Start();
  rig.serial.WriteGaugeCommand(9, 3, -300);
  EXPECT_EQ(rig.Tick(), (Commands{{9, 3, -300}}));
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
  EXPECT_EQ(boxes.BoxIAS.View(), "085.13");
  EXPECT_EQ(boxes.BoxAltitude.View(), "1234");
  EXPECT_EQ(boxes.boxBank.View(), "-2.3");
  EXPECT_EQ(boxes.boxPitch.View(), ".50");
  EXPECT_EQ(boxes.BoxVS.View(), "-512.3");
  EXPECT_EQ(boxes.boxCompass.View(), "360.00");
  EXPECT_EQ(boxes.BoxAirPressmBar.View(), "1013");
  EXPECT_EQ(boxes.boxVoltage.View(), "28.0");
}

}  // namespace
}  // namespace tvx
