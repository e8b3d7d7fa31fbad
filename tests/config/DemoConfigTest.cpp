// The demonstration cockpit: its committed file is the generator's, and what it says fits together.
#include <gtest/gtest.h>

#include "config/NameTables.h"
#include "config/PlateControl.h"
#include "config/StandardFunctions.h"
#include "config/StartFile.h"
#include "demo/DemoConfig.h"
#include "tests/config/Samples.h"
#include "tests/fakes/FakeHost.h"

namespace tvx::test {
namespace {

const std::filesystem::path kDemoFolder = std::filesystem::path(TVX_SOURCE_DIR) / "demo";

TEST(DemoConfig, CommittedFilesAreTheGenerators) {
  ConfigModel model;
  model.ConfigFileName = (kDemoFolder / "Default.cfg").string();
  EXPECT_EQ(FileContent(model.ConfigFileName), WriteConfigText(demo::DemoConfig()))
      << "run make-demo-config in demo/";
  FakeMessageBoxes boxes;
  ConfigFile(model, boxes).LoadConfigFile();
  EXPECT_FALSE(model.ConfigLoadFailed);
  EXPECT_TRUE(boxes.shown.empty() && boxes.asked.empty());
  EXPECT_EQ(AllFields(model), AllFields(demo::DemoConfig()));
  EXPECT_EQ(FileContent(kDemoFolder / "Yokes.cfg"), WriteConfigText(demo::YokesConfig()));
  EXPECT_EQ(FileContent(kDemoFolder / kStartFileName),
            "\"General\"\r\n\"Default.cfg\"\r\n\"Startdelay\"\r\n3\r\n\"End\"\r\n");
}

TEST(StandardFunctions, LeaveWhatTheUserDefined) {
  ConfigModel model;
  model.Functions[59].ShortName = "Mine";
  model.Functions[60].FullName = "nameless";
  FillStandardFunctions(model);
  EXPECT_EQ(model.Functions[59].FullName + model.Functions[59].ShortName, "Mine");
  EXPECT_EQ(model.Functions[60].FullName, "#1:sim/cockpit2/engine/indicators/MPR_in_hg[0]\r\n");
  EXPECT_EQ(model.Functions[300].FunctionNr, 300);
}

TEST(DemoConfig, GaugesShowFunctionsThatExistOnPlatesThatRise) {
  const ConfigModel model = demo::DemoConfig();
  for (const auto& plate : model.Plates) {
    EXPECT_TRUE(CheckPlateBoxes(BoxesOfPlate(plate)).good) << plate.Name;
    for (const auto position : plate.Position) EXPECT_TRUE(position >= 0 && position < 1080) << plate.Name;
  }
  std::string name;
  for (const auto& gauge : model.Gauges) {
    if (gauge.GaugeType == 0) continue;
    name.clear();
    GetGaugetypeName(model, gauge.GaugeType, name);
    SCOPED_TRACE(name);
    EXPECT_NE(name, "");
    // An autopilot panel counts its Functions from 90; dedicated instruments may show fixed ones only.
    const int offset = gauge.GaugeType == 124 ? 90 : 0;
    for (const int function : {gauge.GaugeFunction1, gauge.GaugeFunction2}) {
      EXPECT_TRUE((function == 0 && gauge.GaugeType > 100) || (function == 0 && gauge.GaugeFunction1 != 0) ||
                  !model.FunctionOf(function + offset)->ShortName.empty())
          << function;
    }
    EXPECT_TRUE(model.PlateOf(gauge.GaugeSetting3) && model.PlateOf(gauge.GaugeSetting4));
  }
}

}  // namespace
}  // namespace tvx::test
