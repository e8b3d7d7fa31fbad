#include "config/ConfigFile.h"
#include "config/NameTables.h"
#include "core/Dump.h"
#include "platform/AtomicFile.h"
#include "tests/core/ProgramRig.h"
#include "tests/fakes/ScratchFolder.h"

namespace tvx::dumptest {

TEST(Dump, RecordsAreExactAndTheConfigurationFollows) {
  CockpitRig rig;
  FillNameTables(rig.model);
  rig.sim.OpenUDP();
  rig.AddGauge(7, 101);
  rig.Define(51);
  FunctionRecord& dataref = DefineFunction(rig.model, 52, DataType::XplaneDataref, 0, 5);
  dataref.FullName = "#1:sim/a\r\n";
  rig.sim.SetCurrentOpener(7);
  rig.sim.EnableReadSimPort(rig.sim.OpenSimPort(51, 2));
  rig.sim.SetCurrentOpener(opener::kEngineCluster);
  rig.sim.OpenSimPort(52, 1);
  rig.sim.SetCurrentOpener(255);
  rig.AddGauge(255, 101);
  rig.sim.OpenSimPort(51, 1);
  rig.socket.Deliver(std::string("RREF,\x01\0\0\0\0\0\x20\x3F", 13));  // port 1 = 0.625

  const std::string expected =
      "\"Dump of Torvex Control Program\"\r\n"
      "\"\r\nDump Caused by: Module= Test12, Value= why\"\r\n"
      "\"\r\nActivation = -1, running = 0\"\r\n"
      "\"\r\nList of active Ports\"\r\n"
      "\"Port= 0 FX= 51 Seq= 2 Rdf= 1 SdF= 0 Used by= ID:007 ,Device: Digital/Analogue Altimeter \"\r\n"
      "\"Port= 1 FX= 52 Seq= 1 Rdf= 0 SdF= 0.625 Used by= ENGCl\"\r\n"
      "\"Port= 2 FX= 51 Seq= 1 Rdf= 0 SdF= 0 Used by= ID:255 ,Device: Digital/Analogue Altimeter \"\r\n"
      "\"\r\nList of active RREFs\"\r\n"
      "\"RREF#= 0 Freq= 5 Ident= 1 Dataref = sim/a; Value = 0.625\"\r\n"
      "\"\r\nEnd of Dump\"\r\n"
      "\"\r\n========================= CONFIG FILE =======================\"\r\n";
  EXPECT_EQ(DumpText({"Test", 12, "why", true, false}, rig.model, rig.sim),
            expected + WriteConfigText(rig.model));
}

// In a folder of its own, which is taken away again.
struct DumpFile : testing::Test {
  std::string Content() {
    std::string error;
    return ReadWholeFile(std::string(kDumpFileName), error).value_or("");
  }
  const ScratchFolder folder_;
  ProgramRig rig_;
};

TEST_F(DumpFile, IsWrittenOnRequestAndReplaced) {
  rig_.run.cmdDumpTVX_Click();
  EXPECT_EQ(rig_.boxes.shown.back(), "A dump is generated; File name: TVXDumpFile.txt");
  EXPECT_TRUE(Holds(Content(), "Module= Dump on User Request, Date: "));
  rig_.run.DumpTVX("second", 0, "0");
  EXPECT_FALSE(Holds(Content(), "User Request"));
}

TEST_F(DumpFile, ASocketErrorWritesItBeforeTheRunStops) {
  rig_.run.Load();
  rig_.run.Form_Activate();
  rig_.run.cmdRun_Click();
  rig_.socket.RaiseError(111, "refused");
  EXPECT_TRUE(Holds(Content(), "Module= UDP Error, Stopcode: 111, Value= 0"));
  EXPECT_TRUE(Holds(Content(), "running = -1"));
  EXPECT_FALSE(rig_.run.Running());
  EXPECT_EQ(rig_.boxes.shown[0], "Error reading data via UDP: refused\r\nErrorcode= 111");
}

TEST_F(DumpFile, ThatCannotBeWrittenIsReportedAndLeavesNothing) {
  std::filesystem::create_directory(std::string(kDumpFileName));  // a folder stands in its place
  rig_.run.cmdDumpTVX_Click();
  EXPECT_EQ(rig_.boxes.shown.back(), "Error writing Dump");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 1);
}

}  // namespace tvx::dumptest
