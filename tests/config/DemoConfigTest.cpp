// The demonstration cockpit: its committed file is the generator's, and what it says fits together.

#include "config/StandardFunctions.h"
#include "config/StartFile.h"
#include "demo/DemoConfig.h"
#include "tests/config/Samples.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/SourceFolder.h"

namespace tvx::test::democonfigtest {

const std::filesystem::path kDemoFolder = SourceFolder() / "demo";

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

}  // namespace tvx::test::democonfigtest
