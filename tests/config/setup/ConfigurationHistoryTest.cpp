// Undo and redo of everything that a configuration can change, by name.
#include "config/ConfigFile.h"
#include "config/setup/ConfigurationHistory.h"
#include "config/setup/MainConfigurePresenter.h"
#include "tests/Test.h"
#include "tests/fakes/FakeHost.h"

namespace tvx::configurationhistorytest {

std::unique_ptr<ConfigModel> Cockpit() {
  auto model = std::make_unique<ConfigModel>();
  model->Plates.resize(2);
  model->Plates[1].Name = "Oil";
  for (std::size_t gauge = 5; gauge < 9; ++gauge) model->Gauges[gauge].GaugeType = 1;
  model->Functions[120].ShortName = "Prop RPM";
  model->IOModuleInputs.resize(2);
  model->IOModuleInputs[0].Input = 1007;
  return model;
}

// Each change has its name, comes back whole and goes forward whole.
TEST(ConfigurationHistory, TakesBackWhateverWasChanged) {
  const std::pair<const char*, std::function<void(ConfigModel&)>> rows[] = {
      {"port of the engine cluster", [](ConfigModel& m) { m.General.ComPortEC = 7; }},
      {"link to the simulator", [](ConfigModel& m) { m.General.RemotePort = "1"; }},
      {"link to the simulator", [](ConfigModel& m) { m.General.SetSetting(kHearAllSetting, "yes"); }},
      {"lights of the instruments", [](ConfigModel& m) { SetLightsMode(m, 2); }},
      {"gauge 007", [](ConfigModel& m) { m.Gauges[7].GaugeSetting5 = 4; }},
      {"new gauge 200", [](ConfigModel& m) { m.Gauges[200].GaugeType = 3; }},
      {"4 gauges", [](ConfigModel& m) { ClearAllGauges(m); }},
      {"Function 120 Prop RPM cleared", [](ConfigModel& m) { m.Functions[120] = {}; }},
      {"Plate 001 Oil cleared", [](ConfigModel& m) { m.Plates.pop_back(); }},
      {"new Plate 002 New", [](ConfigModel& m) { m.Plates.emplace_back().Name = "New"; }},
      {"input 7 of IO module 1 cleared",
       [](ConfigModel& m) { m.IOModuleInputs.erase(m.IOModuleInputs.begin()); }},
      {"new channel 3 of the engine cluster", [](ConfigModel& m) { m.EngineCluster[2].Value2 = 9; }},
      {"yoke 2", [](ConfigModel& m) { m.Yoke2.Buttons[3].Text = "sim/x"; }},
      {"forces of the yokes", [](ConfigModel& m) { m.GeneralFFB.Friction = 3; }},
      {"categories", [](ConfigModel& m) { m.Categories[1] = "Lights"; }},
      {"transfer interval, gauge 008",
       [](ConfigModel& m) { m.General.TransferInterval = 250, m.Gauges[8].GaugeFunction1 = 1; }},
  };
  for (const auto& [name, change] : rows) {
    SCOPED_TRACE(name);
    const auto model = Cockpit();
    FakeClock clock;
    ConfigurationHistory history(*model, clock);
    const std::string before = WriteConfigText(*model);
    change(*model);
    model->ConfigChanged = true;
    const std::string after = WriteConfigText(*model);
    EXPECT_TRUE(history.Look());
    EXPECT_EQ(history.UndoName(), name);
    EXPECT_TRUE(history.Undo());
    EXPECT_EQ(WriteConfigText(*model), before);
    EXPECT_FALSE(model->ConfigChanged) << "the file holds just this";
    EXPECT_FALSE(history.Undo());
    EXPECT_EQ(history.RedoName(), name);
    EXPECT_TRUE(history.Redo());
    EXPECT_EQ(WriteConfigText(*model), after);
    EXPECT_TRUE(model->ConfigChanged);
    EXPECT_FALSE(history.Redo());
  }
}

TEST(ConfigurationHistory, OneGoIsOneStepAndTheOldestIsForgotten) {
  const auto model = Cockpit();
  FakeClock clock;
  ConfigurationHistory history(*model, clock);
  for (int i = 1; i <= 10; ++i) {  // a slider that is being pulled
    model->General.TransferInterval = static_cast<std::int16_t>(100 + i);
    history.Look();
    clock.Advance(200);
  }
  EXPECT_TRUE(history.Undo());
  EXPECT_EQ(model->General.TransferInterval, 100);
  for (std::size_t i = 0; i < ConfigurationHistory::kSteps + 5; ++i) {
    clock.Advance(ConfigurationHistory::kOneGoMs);
    model->General.TransferInterval = static_cast<std::int16_t>(500 + i);
    history.Look();
  }
  EXPECT_TRUE(history.RedoName().empty()) << "what was taken back before is another road";
  std::size_t steps = 0;
  while (history.Undo()) ++steps;
  EXPECT_EQ(steps, ConfigurationHistory::kSteps);
}

// A save is no step, and what was saved is told from what was not; a load is one step, file name and all.
TEST(ConfigurationHistory, FollowsSavesAndLoads) {
  const auto model = Cockpit();
  FakeClock clock;
  ConfigurationHistory history(*model, clock);
  model->General.ComPortEC = 7;
  model->ConfigChanged = true;
  history.Look();
  model->ConfigFileName = "Other.cfg";  // saved as
  model->ConfigChanged = false;
  EXPECT_FALSE(history.Look());
  EXPECT_TRUE(history.Undo());
  EXPECT_EQ(model->ConfigFileName, "Other.cfg");
  EXPECT_TRUE(model->ConfigChanged) << "the file holds the port";
  EXPECT_TRUE(history.Redo());
  EXPECT_FALSE(model->ConfigChanged);
  model->ConfigFileName = "Friend.cfg";  // loaded
  model->Gauges[99].GaugeType = 2;
  history.Look();
  EXPECT_EQ(history.UndoName(), "loading of Friend.cfg");
  EXPECT_TRUE(history.Undo());
  EXPECT_EQ(model->ConfigFileName, "Other.cfg");
  EXPECT_EQ(model->Gauges[99].GaugeType, 0);
  EXPECT_FALSE(model->ConfigChanged);
  EXPECT_TRUE(history.Redo());
  EXPECT_EQ(model->ConfigFileName, "Friend.cfg");
  EXPECT_FALSE(model->ConfigChanged);
}

}  // namespace tvx::configurationhistorytest
