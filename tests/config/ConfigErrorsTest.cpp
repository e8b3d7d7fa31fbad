// What the reader says to files that are not as they should be, and what stays in the model then.

#include "tests/config/Samples.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/OddFiles.h"

namespace tvx::test::configerrorstest {

// A file in which every number is the default and every text empty, one IO module record and one Plate.
const std::string& PlainText() {
  static const std::string text = [] {
    ConfigModel model;
    model.General.ConfigHeader = BuildConfigHeader("", "", "");
    model.IOModuleInputs.resize(2);
    model.Plates.resize(1);
    return WriteConfigText(model);
  }();
  return text;
}

struct BadFile {
  std::string name;
  std::string from, to;  // the first of these in a plain file is replaced
  std::string error;     // after "Error Configuration file. "
  std::size_t loaded;    // sections that were read whole
};

const BadFile kBadFiles[] = {
    {"header never closed", "saved: \r\n\"", "saved: \r\n",
     "line 2, ConfigHeader: something follows the text's closing quote", 0},
    {"surplus value", "0,0,0,0,0\r\n\"IOM\"", "0,0,0,0,0,0\r\n\"IOM\"", "line 2: more values than are due",
     0},
    {"empty line", "\"IOM\"", "\r\n\"IOM\"", "", 1},
    {"count too high", "\"IOM\"\r\n1", "\"IOM\"\r\n2",
     "line 7, Input: the text \"Functions\" stands where a number is due", 1},
    {"byte too large", "0,0,0,0,0,0,0,0,0,0,0,0,0\r\n\"F", "0,0,0,0,0,256,0,0,0,0,0,0,0\r\n\"F",
     "line 6, ActionKind: \"256\" is not a whole number between 0 and 255", 1},
    {"no number", "\"Functions\"\r\n\"\",\"\",0,0,0,0,0,0,0,0,0",
     "\"Functions\"\r\n\"\",\"\",0,0,0,0,0,0,0,0,abc",
     "line 8, ComboDT: \"abc\" is not a whole number between 0 and 255", 2},
    {"too few records", "\"Gauges\"\r\n0,0,0,0,0,0,0,0,0,0,0\r\n", "\"Gauges\"\r\n",
     "line 694, GaugeType: the text \"Engine Cluster Settings\" stands where a number is due", 4},
    {"too many records", "\"Gauges\"\r\n", "\"Gauges\"\r\n0,0,0,0,0,0,0,0,0,0,0\r\n", "", 5},
    {"unknown section for Plates", "\"Plates\"\r\n1", "\"Plate\"\r\n\"end\"", "", 6},
    {"double too large", "\"Plates\"\r\n1\r\n\"\",0", "\"Plates\"\r\n1\r\n\"\",1e309",
     "line 709, Value: \"1e309\" is not a number of double precision", 6},
    {"control characters", "\"GeneralFFB\"\r\n0",
     std::string("\"GeneralFFB\"\r\n\x01") + std::string(50, '9'),
     "line 712, MasterYoke: \"?999999999999999999999999999999999999999...\" is not a whole number between "
     "-32768 and 32767",
     7},
    {"end too early", "\"Yoke1\"", "\"end\"", "", 8},
    {"yoke 2 does not fit where it is read", "\r\n0\r\n\"end\"", "\r\n0\r\n\"End\"",
     "line 975, Effects.Level: the text \"End\" stands where a number is due", 9},
};

// Loads `text` over a configuration of other values and checks what stays: the first `loaded` sections are
// the file's, those after the next one are the old ones.
void ExpectFailure(const std::string& text, const std::string& expected, std::size_t loaded) {
  ConfigModel model = DistinctModel();
  auto old = Sections(model);
  ConfigModel plain;
  FakeMessageBoxes none;
  std::string error;
  ASSERT_EQ(ReadConfigText(PlainText(), plain, none, error), ConfigReadResult::Loaded);
  auto fresh = Sections(plain);

  FakeMessageBoxes boxes;
  model.ConfigFileName = "bad.cfg";
  ScratchFolder::Put("bad.cfg", text);
  ConfigFile(model, boxes).LoadConfigFile();
  EXPECT_TRUE(model.ConfigLoadFailed);
  EXPECT_TRUE(boxes.asked.empty());
  EXPECT_EQ(boxes.shown, Texts{"Error Configuration file. " + expected});
  auto now = Sections(model);
  for (std::size_t i = 0; i < kSections.size(); ++i) {
    if (i == loaded) continue;
    EXPECT_EQ(now[kSections[i]], (i < loaded ? fresh : old)[kSections[i]]) << kSections[i];
  }
}

class BadConfig : public InEmptyFolder {};

TEST_F(BadConfig, IsReportedAndKeepsWhatWasRead) {
  for (const auto& bad : kBadFiles) {
    SCOPED_TRACE(bad.name);
    ExpectFailure(Replaced(PlainText(), bad.from, bad.to), bad.error, bad.loaded);
  }
}

TEST_F(BadConfig, EndsAnywhere) {
  const std::string& text = PlainText();
  ExpectFailure("", "line 1: the file ends too early", 0);
  ExpectFailure(text.substr(0, text.find("\"Gauges\"")), "line 438: the file ends too early", 4);
  ExpectFailure(text.substr(0, text.rfind("\"end\"")), "line 975: the file ends too early", 9);
}

TEST_F(BadConfig, CountsDropWhatTheTablesHeld) {
  const std::string text = WriteConfigText(DistinctModel());
  for (const std::string count : {"\"IOM\"\r\n3\r\n", "\"Plates\"\r\n3\r\n"}) {
    ConfigModel model = DistinctModel();
    FakeMessageBoxes boxes;
    std::string error;
    ReadConfigText(text.substr(0, text.find(count) + count.size()), model, boxes, error);
    EXPECT_EQ(model.IOModuleInputs.size(), 4u);
    EXPECT_EQ(model.PlateCount(), 3);
    EXPECT_TRUE(count.starts_with("\"IOM") ? model.IOModuleInputs[0].Input == 0
                                           : model.Plates[0].Name.empty());
  }
}

TEST_F(BadConfig, WithoutPlatesLoadsUpToTheEngineClusterOnly) {
  const std::string& text = PlainText();
  const std::size_t plates = text.find("\"Plates\"");
  const std::size_t forces = text.find("\"GeneralFFB\"");
  const std::string words =
      "The file has no Plates.\r\n"
      "All that stands in front of them was read; the settings of the yokes behind them were not.\r\n"
      "To repair it, open Configure and save the configuration: the Plates in use are put into the file.";
  ExpectFailure(text.substr(0, plates) + text.substr(forces), words, 6);
  ExpectFailure(text.substr(0, plates) + "\"end\"\r\n", words, 6);
}

TEST_F(BadConfig, PlatesWithoutForceFeedbackAreAWholeFile) {
  const std::string& text = PlainText();
  ConfigModel model = DistinctModel();
  FakeMessageBoxes boxes;
  std::string error;
  EXPECT_EQ(ReadConfigText(text.substr(0, text.find("\"GeneralFFB\"")) + "\"end\"\r\n", model, boxes, error),
            ConfigReadResult::Loaded);
  EXPECT_EQ(model.PlateCount(), 1);
  EXPECT_EQ(Sections(model)["Yoke1"], Sections(DistinctModel())["Yoke1"]);
}

// Yoke 2's singles are read as bytes one line aside.
TEST_F(BadConfig, YokeTwoValueTooLargeForTheByteItIsReadAs) {
  ConfigModel model = DistinctModel();
  model.Yoke2.Effects[1].Frequency = 300;
  FakeMessageBoxes boxes;
  ConfigModel loaded;
  std::string error;
  EXPECT_EQ(ReadConfigText(WriteConfigText(model), loaded, boxes, error), ConfigReadResult::Failed);
  EXPECT_TRUE(error.ends_with("Effects.Level: \"300\" is not a whole number between 0 and 255")) << error;
  EXPECT_EQ(loaded.Yoke2.Effects[0].Frequency, 30);
}

constexpr char kOtherTitle[] =
    "The selected Configuration file is possibly not compatible with this program.\r\n"
    "In case a config from a previous version, ignore errors save it again.\r\nContinue?";
constexpr char kOtherVersion[] =
    "The version of selected Configuration file differs from program version.\r\n"
    "Possibly the functions differ or are missing. Partially import the functions if needed.\r\n"
    "Correct and/or check and (re)save the configuration file.\r\nContinue?";

TEST_F(BadConfig, QuestionsAboutTheHeader) {
  const std::string title = "Program Name: Other";
  // Of the title only the first 35 characters are compared.
  const std::string version =
      Replaced(Replaced(BuildConfigHeader("", "", ""), "1.0.0 ", "1.0.01"), "Simulator", "Simulat--");
  const std::string cut = BuildConfigHeader("", "", "").substr(0, 69);
  // beyond the general record
  const std::tuple<std::string, std::deque<int>, Texts, std::string, bool, bool> cases[] = {
      {title, {7}, {kOtherTitle}, "7", true, false},
      {title, {6, 6}, {kOtherTitle, kOtherVersion}, "6", false, true},
      {version, {7}, {kOtherVersion}, "7", false, false},
      {version, {6}, {kOtherVersion}, "6", false, true},
      {cut, {7}, {kOtherVersion}, "7", false, false},
      {"", {7}, {kOtherTitle}, "7", true, false},
  };
  for (const auto& [header, answers, asked, lastAnswer, failed, loaded] : cases) {
    SCOPED_TRACE(header);
    Put("q.cfg", Replaced(PlainText(), BuildConfigHeader("", "", ""), header));
    ConfigModel model = DistinctModel();
    model.ConfigFileName = "q.cfg";
    model.ConfigLoadFailed = !failed;
    FakeMessageBoxes boxes;
    boxes.answers = answers;
    ConfigFile file(model, boxes);
    boxes.whileAsking = [&] {
      EXPECT_TRUE(file.Loading());
      file.LoadConfigFile();  // does nothing
    };
    file.LoadConfigFile();
    EXPECT_FALSE(file.Loading());
    EXPECT_EQ(boxes.asked, asked);
    EXPECT_TRUE(boxes.shown.empty());
    EXPECT_EQ(model.LastAnswer, lastAnswer);
    EXPECT_EQ(model.ConfigLoadFailed, failed);
    EXPECT_EQ(model.General.TransferInterval, 100) << "the general record is read before the questions";
    EXPECT_EQ(model.IOMCount(), loaded ? 1 : 3);
  }
}

TEST_F(BadConfig, FileThatCannotBeOpened) {
  ASSERT_TRUE(MakePipe("pipe.cfg"));
  for (const std::string name : {"missing.cfg", "pipe.cfg", "."}) {
    ConfigModel model;
    model.ConfigFileName = name;
    FakeMessageBoxes boxes;
    ConfigFile(model, boxes).LoadConfigFile();
    EXPECT_TRUE(model.ConfigLoadFailed);
    ASSERT_EQ(boxes.shown.size(), 1u);
    EXPECT_TRUE(boxes.shown[0].starts_with("Error Configuration file. \"" + name + '"')) << boxes.shown[0];
  }
}

TEST_F(BadConfig, SavingLeavesTheOldFileWholeWhereItFails) {
  ConfigModel model = DistinctModel();
  model.ConfigFileName = "own.cfg";
  model.ConfigLoadFailed = true;
  FakeMessageBoxes boxes;
  ConfigFile file(model, boxes);
  ASSERT_TRUE(file.SaveConfigFile());
  const std::string saved = FileContent("own.cfg");
  EXPECT_EQ(saved, WriteConfigText(model));

  model.General.TransferInterval = 999;
  {
    const NoReplacing full("own.cfg", saved.size() / 2);
    EXPECT_FALSE(file.SaveConfigFile());
  }
  EXPECT_EQ(FileContent("own.cfg"), saved);
  EXPECT_EQ(Entries(), 1);
  EXPECT_TRUE(model.ConfigLoadFailed);
  EXPECT_TRUE(boxes.shown.empty());
}

}  // namespace tvx::test::configerrorstest
