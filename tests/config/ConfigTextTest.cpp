// What a configuration looks like as a file, and what comes back from it.

#include "tests/config/Samples.h"
#include "tests/fakes/FakeHost.h"

namespace tvx::test::configtexttest {

TEST(ConfigText, HeaderPutsTitleAndVersionAtTheirPlaces) {
  const std::string header = BuildConfigHeader("X-Plane", "12.11.00", "2024-03-05 14:30:15");
  EXPECT_EQ(header,
            "Program Name: Control Program for X-Plane Simulator       , Version: 1.0.0      ,"
            "Connected Simulator: X-Plane ,Version: 12.11.00 ,Date/Time saved: 2024-03-05 14:30:15\r\n");
}

TEST(ConfigText, GoldenPieces) {
  ConfigModel model;
  model.General = {.ConfigHeader = "head\r\n",
                   .ComPortEC = 1,
                   .ComPortGS = 2,
                   .TransferInterval = 50,
                   .BlockUSEL = 1,
                   .GeneralText2 = "two,\"2\"",
                   .GeneralText5 = {},
                   .GeneralText6 = {},
                   .ByteOrderReverse = -1,
                   .ComPortIOM1 = 3,
                   .ComPortIOM2 = 4,
                   .ComPortYoke1 = 5,
                   .ComPortYoke2 = 6};
  model.IOModuleInputs = {{1, 2, -3, 4, 5, 'd', 0.5f, -1.25e-3f, 9, 10, 1e10f, 12, 13}, {}};
  model.Functions[0] = {"short", "#1:a\r\n", 1,  2,   3,  -4, 5,  6,  7,  0.1f, 8,
                        9,       10,         11, -12, 13, 14, 15, 16, 17, 18};
  model.Gaugetypes[127] = {-7, "own"};
  model.Gauges[255] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  model.EngineCluster[10] = {1, -2, 3};
  model.Plates.resize(1);
  model.Plates[0].Name = "face";
  model.Plates[0].Value[0] = 1.0 / 3;
  model.Plates[0].Value[24] = 1e-7;
  model.Plates[0].Value[25] = 99;  // room only: not in the file
  model.Plates[0].Position[24] = 1079;
  model.GeneralFFB.MasterYoke = 1;
  model.GeneralFFB.GripThreshold = 2;
  model.GeneralFFB.PitchTrimRange = 8;
  model.GeneralFFB.ForceTable[12] = {1, 2, 3, 4.5f};

  auto sections = Sections(model);
  EXPECT_EQ(
      sections["General"],
      "\"General\"\r\n\"head\r\n\",1,2,50,1,32,0,\"127.0.0.1\",\"two,'2'\",\"49000\",\"49003\",\"\",\"\",-1,"
      "3,4,5,6\r\n");
  EXPECT_EQ(sections["IOM"], "\"IOM\"\r\n1\r\n1,2,-3,4,5,100,0.5,-0.00125,9,10,10000000000,12,13\r\n");
  EXPECT_TRUE(sections["Functions"].starts_with(
      "\"Functions\"\r\n\"short\",\"#1:a\r\n\",1,2,3,-4,5,6,7,0.1,8,9,10,11,-12,13,14,15,16,17,18\r\n"
      "\"\",\"\",0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0\r\n"));
  EXPECT_TRUE(sections["Gaugetypes"].ends_with("\r\n0,\"\"\r\n-7,\"own\"\r\n"));
  EXPECT_TRUE(sections["Gauges"].ends_with("\r\n1,2,3,4,5,6,7,8,9,10,11\r\n"));
  EXPECT_TRUE(sections["Engine Cluster Settings"].ends_with("\r\n0,0,0\r\n1,-2,3\r\n"));
  EXPECT_EQ(sections["Plates"],
            "\"Plates\"\r\n1\r\n\"face\",0.3333333333333333,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,"
            "0.0000001\r\n0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1079\r\n");
  EXPECT_TRUE(
      sections["GeneralFFB"].starts_with("\"GeneralFFB\"\r\n1\r\n2\r\n0\r\n0\r\n0\r\n0\r\n0\r\n8\r\n"));
  EXPECT_TRUE(sections["GeneralFFB"].ends_with("\r\n0\r\n1\r\n2\r\n3\r\n4.5\r\n"));
  EXPECT_TRUE(WriteConfigText(model).ends_with("\"end\"\r\n"));
}

// How text editors and other systems may leave a file.
TEST(ConfigText, GivesEveryFieldBackHoweverItsLinesAre) {
  const ConfigModel saved = DistinctModel();
  const std::string written = WriteConfigText(saved);
  std::string bare = written;  // line feeds only; those in texts stay, they belong to the texts
  for (std::size_t at = 0, quotes = 0; at < bare.size(); ++at) {
    quotes += bare[at] == '"';
    if (bare[at] == '\r' && quotes % 2 == 0) bare.erase(at, 1);
  }
  const std::string blanks = Replaced(written, "\"IOM\"\r\n3\r\n", " \"IOM\"\t \r\n \t3 \r\n");
  for (const std::string& text : {written, bare, Replaced(blanks, "\r\n\",-15998,", "\r\n\" ,\t-15998 ,"),
                                  written.substr(0, written.size() - 2)}) {
    ConfigModel loaded;
    FakeMessageBoxes boxes;
    std::string error;
    ASSERT_EQ(ReadConfigText(text, loaded, boxes, error), ConfigReadResult::Loaded) << error;
    EXPECT_TRUE(boxes.asked.empty());
    EXPECT_EQ(AllFields(loaded), AllFields(saved));
  }
}

// The header without its line end puts the general record on one line.
TEST(ConfigText, HeaderOnOneLine) {
  const std::string text = Replaced(WriteConfigText(DistinctModel()), "14:30:15\r\n\"", "14:30:15\"");
  ConfigModel model;
  FakeMessageBoxes boxes;
  std::string error;
  EXPECT_EQ(ReadConfigText(text, model, boxes, error), ConfigReadResult::Loaded) << error;
  EXPECT_TRUE(model.General.ConfigHeader.ends_with("14:30:15"));
}

TEST(ConfigText, SecondYokeIsReadOneLineAside) {
  const ConfigModel saved = DistinctModel();
  const std::string written = Sections(saved)["Yoke2"];
  EXPECT_TRUE(Holds(written, "\r\n7\r\n11\r\n12\r\n13\r\n14\r\n100.25\r\n30\r\n101.25\r\n31\r\n"));
  EXPECT_TRUE(written.ends_with("\r\n111.25\r\n41\r\n"));
  ConfigModel loaded;
  loaded.Yoke2.Effects[11].Level = 200;
  FakeMessageBoxes boxes;
  std::string error;
  ASSERT_EQ(ReadConfigText(WriteConfigText(saved), loaded, boxes, error), ConfigReadResult::Loaded) << error;
  const YokeRecord& yoke = loaded.Yoke2;
  EXPECT_EQ((std::array<int, 6>{yoke.StallMargin, yoke.TailZero, yoke.StallSpeed, yoke.NeverExceedSpeed,
                                yoke.ServoSpeed, yoke.RunwayBumps}),
            (std::array<int, 6>{7, 11, 12, 13, 14, 100}));
  for (std::size_t i = 0; i < 12; ++i) {
    EXPECT_EQ(yoke.Effects[i].Frequency, static_cast<float>(30 + i)) << i;
    EXPECT_EQ(yoke.Effects[i].Level, i < 11 ? 101 + i : 0) << i;
  }
}

}  // namespace tvx::test::configtexttest
