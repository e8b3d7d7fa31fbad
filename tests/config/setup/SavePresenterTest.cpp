
#include "config/StartFile.h"
#include "config/setup/SavePresenter.h"
#include "tests/config/Samples.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/OddFiles.h"

namespace tvx::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kOverwrite = "This will overwrite the current configuration! Continue?";

struct SaveControlTest : InEmptyFolder {
  SaveControlTest() {
    model.Plates.emplace_back();  // a file without Plates does not load wholly
    model.ConfigFileName = "Default.cfg";
    model.Functions[60].ShortName = "mine";
  }
  // The copies of a file with this ending, oldest first, by what they hold.
  static std::string Kept(const std::string& file, const std::string& ending) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(".")) {
      const std::string name = entry.path().filename().string();
      if (name.starts_with(file + ".2") && name.ends_with(ending)) names.insert(name);
    }
    std::string content;
    for (const std::string& name : names) content += (content.empty() ? "" : " ") + FileContent(name);
    return content;
  }
  std::string LastShown() const { return boxes.shown.empty() ? "" : boxes.shown.back(); }

  ConfigModel model;
  FakeMessageBoxes boxes;
  ConfigFile file{model, boxes};
  SavePresenter save{model, file, boxes, [] { return BuildConfigHeader("X-Plane", "12.11.00", "now"); }};
};

TEST_F(SaveControlTest, NamesAreRefusedBeforeAnythingHappens) {
  model.ConfigChanged = true;
  for (const char* name : {"xcfg", "Cockpit.cfg.txt", "cfg"}) {
    Put(name, "keep");
    EXPECT_FALSE(save.Save(name));
    EXPECT_FALSE(save.Delete(name));
    EXPECT_EQ(FileContent(name), "keep");
  }
  EXPECT_EQ(boxes.shown, Texts(6, "Filetype incorrect or missing; must be: ****.cfg"));
  EXPECT_FALSE(save.Save(""));
  EXPECT_EQ(LastShown(), "No filename");
  EXPECT_FALSE(save.Load(""));
  EXPECT_FALSE(save.SetAsStartup(""));
  EXPECT_EQ(LastShown(), "File Name missing.");
  EXPECT_FALSE(save.ImportPartial("", {}));
  EXPECT_EQ(LastShown(), "No file selected");
  EXPECT_TRUE(boxes.asked.empty());
  EXPECT_EQ(model.ConfigFileName, "Default.cfg");
  EXPECT_TRUE(model.ConfigChanged);
  EXPECT_TRUE(IsConfigFileName("OLD.CFG"));
}

TEST_F(SaveControlTest, SavingKeepsThePreviousFile) {
  Put("Other.cfg", "previous");
  model.ConfigChanged = true;
  model.ConfigLoadFailed = true;
  ASSERT_TRUE(save.Save("Other.cfg"));
  EXPECT_EQ(LastShown(), "File saved as: Other.cfg");
  EXPECT_EQ(Kept("Other.cfg", ".bak"), "previous");
  EXPECT_FALSE(model.ConfigChanged);
  EXPECT_FALSE(model.ConfigLoadFailed);
  EXPECT_EQ(model.ConfigFileName, "Other.cfg");
  EXPECT_EQ(FileContent("Other.cfg"), WriteConfigText(model));
}

TEST_F(SaveControlTest, AFailedSaveHarmsNothing) {
  model.General.ConfigHeader = "loaded header";
  fs::create_directory("Folder.cfg");
  EXPECT_FALSE(save.Save("Folder.cfg"));
  EXPECT_EQ(LastShown(), "file cannot be overwritten");

  // More Plates than the file's count can announce: they would be lost.
  Put("Good.cfg", "good");
  model.Plates.resize(32768);
  EXPECT_FALSE(save.Save("Good.cfg"));
  EXPECT_EQ(LastShown(), "Configuration corrupt; Cannot save");
  EXPECT_EQ(FileContent("Good.cfg"), "good");
  EXPECT_EQ(Kept("Good.cfg", ".bak"), "");
  EXPECT_EQ(model.General.ConfigHeader, "loaded header");
  EXPECT_EQ(model.ConfigFileName, "Default.cfg");
}

TEST_F(SaveControlTest, TenBackupsAreKept) {
  for (int i = 0; i < 13; ++i) {
    Put("Other.cfg", std::to_string(i));
    ASSERT_TRUE(save.Save("Other.cfg"));
    fs::remove("Other.cfg");
  }
  EXPECT_EQ(Kept("Other.cfg", ".bak"), "3 4 5 6 7 8 9 10 11 12");
  // A clock that was set back must not make the newest the first to go.
  Put("Other.cfg.2999-01-01.bak", "future");
  Put("Other.cfg", "newest");
  ASSERT_TRUE(save.Save("Other.cfg"));
  EXPECT_EQ(FileContent("Other.cfg.2999-01-01_02.bak"), "newest");
}

// A link leads to somebody else's file, a folder and a pipe are no configurations.
TEST_F(SaveControlTest, WhatIsNoFileOfOursStays) {
  fs::create_directory("Folder.cfg");
  ASSERT_TRUE(MakePipe("Pipe.cfg"));
  Put("far", "theirs");
  MakeLink("far", "Link.cfg");
  boxes.otherwise = kAnswerYes;
  boxes.texts = {"5", "5"};
  for (const char* name : {"Folder.cfg", "Pipe.cfg"}) {
    EXPECT_FALSE(save.Save(name)) << name;
    EXPECT_EQ(LastShown(), "file cannot be overwritten");
    EXPECT_FALSE(save.Load(name)) << name;
    EXPECT_FALSE(save.Delete(name)) << name;
    EXPECT_EQ(LastShown(), std::string("File cannot be deleted: ") + name);
    EXPECT_FALSE(save.SetAsStartup(name)) << name;
    EXPECT_EQ(save.SaveWords(name), std::string(name) + " is no file. Choose another name.");
  }
  EXPECT_TRUE(save.Delete("Link.cfg"));
  EXPECT_EQ(FileContent("far"), "theirs");
  EXPECT_EQ(ConfigFilesIn(""), Texts{});
  // The name of the next backup leads elsewhere.
  Put("Other.cfg", "old");
  const std::string next = NextKeptName("Other.cfg", KeptAs::Backup);
  MakeLink("far", next);
  EXPECT_TRUE(save.Save("Other.cfg"));
  EXPECT_EQ(FileContent("far"), "theirs");
}

// Half of it is in the model, and would be all that is left.
TEST_F(SaveControlTest, AFileThatWasNotReadWhollyIsKeptForGood) {
  std::string half = WriteConfigText(model);
  half.resize(half.size() / 2);
  Put("Half.cfg", half);
  boxes.answers = {kAnswerYes};
  EXPECT_FALSE(save.Load("Half.cfg"));
  EXPECT_TRUE(save.NotReadWholly());
  const std::string copy = NextKeptName("Half.cfg", KeptAs::Unread);
  EXPECT_EQ(save.SaveWords("./Half.cfg"),
            "./Half.cfg was not read wholly. Save replaces it by what was read; all of it is kept as " +
                copy + ", which no later Save touches.");
  for (int i = 0; i < 12; ++i) ASSERT_TRUE(save.Save("Half.cfg"));
  EXPECT_FALSE(save.NotReadWholly());
  EXPECT_EQ(FileContent(copy), half);
}

TEST_F(SaveControlTest, WhatSaveWillDoIsSaidBefore) {
  Put("Old.cfg", "old");
  EXPECT_EQ(save.SaveWords("New.cfg"), "Save makes a new file, New.cfg.");
  EXPECT_EQ(save.SaveWords("New"), "");
  const std::string words = save.SaveWords("Old.cfg");
  ASSERT_TRUE(save.Save("Old.cfg"));
  for (const auto& entry : fs::directory_iterator(".")) {
    const std::string name = entry.path().filename().string();
    if (!name.ends_with(".bak")) continue;
    EXPECT_EQ(words, "Save replaces Old.cfg, whose old content is kept as " + name + ".");
  }
}

// Whether the new file finds no room or the copy of the old one.
TEST_F(SaveControlTest, OnAFullDiskNothingChanges) {
  model.ConfigChanged = true;
  for (const std::size_t size : {3u, 20000u}) {
    const std::string old(size, 'o');
    Put("Full.cfg", old);
    const auto before = Entries();
    {
      const NoReplacing full("Full.cfg", 9999);
      EXPECT_FALSE(save.Save("Full.cfg"));
    }
    EXPECT_EQ(LastShown(), "file cannot be overwritten");
    EXPECT_EQ(FileContent("Full.cfg"), old);
    EXPECT_EQ(Entries(), before) << "neither a copy nor a half-written file";
    EXPECT_EQ(model.ConfigFileName, "Default.cfg");
    EXPECT_TRUE(model.ConfigChanged);
  }
}

TEST_F(SaveControlTest, LoadingAsksFirst) {
  ASSERT_TRUE(save.Save("Other.cfg"));
  model.Functions[60].ShortName = "edited";
  model.ConfigFileName = "Default.cfg";
  boxes.answers = {kAnswerNo};
  EXPECT_FALSE(save.Load("Other.cfg"));
  EXPECT_EQ(model.Functions[60].ShortName, "edited");
  EXPECT_EQ(model.ConfigFileName, "Default.cfg");
  boxes.answers = {kAnswerYes};
  model.ConfigChanged = true;
  EXPECT_TRUE(save.Load("Other.cfg"));
  EXPECT_EQ(model.Functions[60].ShortName, "mine");
  EXPECT_EQ(model.ConfigFileName, "Other.cfg");
  EXPECT_FALSE(model.ConfigChanged);
  EXPECT_EQ(boxes.asked, (Texts{kOverwrite, kOverwrite}));

  Put("Bad.cfg", "nonsense");
  boxes.answers = {kAnswerYes};
  EXPECT_FALSE(save.Load("Bad.cfg"));
  EXPECT_EQ(LastShown(), "Error Configuration file. ");
  EXPECT_TRUE(model.ConfigChanged) << "a half-loaded configuration must be asked about";

  // Its general record only: the rest is what was edited before.
  ConfigModel older = model;
  older.General.ConfigHeader.replace(69, 4, "0.01");
  Put("Older.cfg", WriteConfigText(older));
  boxes.answers = {kAnswerYes, kAnswerNo};
  model.ConfigChanged = false;
  save.Load("Older.cfg");
  EXPECT_TRUE(boxes.answers.empty());
  EXPECT_TRUE(model.ConfigChanged);

  model.ConfigChanged = false;
  boxes.answers = {kAnswerYes};
  EXPECT_FALSE(save.Load("Missing.cfg"));
  EXPECT_EQ(LastShown().rfind("Error Configuration file. ", 0), 0u) << LastShown();
  EXPECT_EQ(model.ConfigFileName, "Older.cfg") << "nothing was read, nothing has changed";
  EXPECT_FALSE(model.ConfigChanged);
}

TEST_F(SaveControlTest, DeletingAsksAndKeepsACopy) {
  Put("Old.cfg", "old");
  boxes.answers = {kAnswerNo, kAnswerYes, kAnswerYes};
  EXPECT_FALSE(save.Delete("Old.cfg"));
  EXPECT_EQ(boxes.asked.back(), "This will delete the file: Old.cfg ; Are you sure? ");
  EXPECT_TRUE(fs::exists("Old.cfg"));
  EXPECT_TRUE(save.Delete("Old.cfg"));
  EXPECT_FALSE(fs::exists("Old.cfg"));
  EXPECT_EQ(Kept("Old.cfg", ".bak"), "old");
  EXPECT_FALSE(save.Delete("Old.cfg"));
  EXPECT_EQ(LastShown(), "File cannot be deleted: Old.cfg");
}

TEST_F(SaveControlTest, TheStartUpDelayIsAskedFor) {
  const struct {
    const char* typed;
    bool good;
    int delay;
  } rows[] = {{" 0 ", true, 0},     {"", false, 10},     {"-1", false, 10},
              {"40000", false, 10}, {"12 s", false, 10}, {"7.5", true, 8}};
  for (const auto& row : rows) {
    model.StartDelay = 10;
    boxes.shown.clear();
    boxes.texts = {row.typed};
    EXPECT_EQ(save.SetAsStartup("Mine.cfg"), row.good) << row.typed;
    EXPECT_EQ(model.StartDelay, row.delay) << row.typed;
    EXPECT_EQ(LastShown(), row.good ? "" : "Error in file/time input") << row.typed;
    if (!row.good) continue;
    ConfigModel read;
    EXPECT_EQ(ReadStartFile(read), "Mine.cfg");
    EXPECT_EQ(read.StartDelay, row.delay);
  }
  EXPECT_EQ(boxes.presets.back(), "10");
  boxes.shown.clear();
  EXPECT_FALSE(save.SetAsStartup("Cancelled.cfg"));
  EXPECT_TRUE(boxes.shown.empty());
  boxes.texts = {"5"};
  EXPECT_FALSE(save.SetAsStartup("a\"b.cfg"));
  EXPECT_EQ(LastShown(), "Error in file/time input");
  ConfigModel read;
  EXPECT_EQ(ReadStartFile(read), "Mine.cfg");
}

// --- partial import ---

struct PartialImportTest : SaveControlTest {
  // A file that differs from the model in every chapter.
  static ConfigModel Other() {
    ConfigModel other;
    other.General.ConfigHeader = BuildConfigHeader("", "", "then");
    other.General.ComPortGS = 77;
    other.IOModuleInputs.assign(3, IOModuleRecord{.Input = 5});
    other.Functions[50].ShortName = "standard";
    other.Functions[51].ShortName = "user";
    other.Gaugetypes[40] = {99, "kind"};
    other.Gauges[200].GaugeType = 4;
    other.EngineCluster[10].Value3 = 6;
    other.Plates.assign(2, PlateRecord{.Name = "face"});
    other.GeneralFFB.MasterYoke = 2;
    return other;
  }
  // Which chapters of Other() the model has, as digits.
  std::string Taken() const {
    std::string taken;
    const bool have[] = {
        model.General.ComPortGS == 77,
        model.IOMCount() == 2,
        model.Functions[50].ShortName == "standard",
        model.Functions[51].ShortName == "user",
        model.Gaugetypes[40].Code == 99,
        model.Gauges[200].GaugeType == 4,
        model.PlateCount() == 2,
        model.EngineCluster[10].Value3 == 6,
    };
    for (std::size_t i = 0; i < kImportChapters; ++i) taken += have[i] ? std::to_string(i) : "";
    if (model.GeneralFFB.MasterYoke == 2) taken += " and force feedback";
    return taken;
  }
};

TEST_F(PartialImportTest, EachBoxTakesItsChapterOnly) {
  Put("Source.cfg", WriteConfigText(Other()));
  for (std::size_t i = 0; i < kImportChapters; ++i) {
    model = ConfigModel{};
    ImportChoice one{};
    one[i] = true;
    boxes.answers = {kAnswerYes};
    EXPECT_TRUE(save.ImportPartial("Source.cfg", one)) << LastShown();
    EXPECT_EQ(Taken(), std::to_string(i));
    EXPECT_TRUE(model.ConfigChanged);
  }
  model = ConfigModel{};
  boxes.answers = {kAnswerYes};
  EXPECT_TRUE(save.ImportPartial("Source.cfg", {}));
  EXPECT_EQ(LastShown(),
            "Configuration chapters imported into file: Default.cfg\r\n"
            "Taken: none, as none was ticked.");
  EXPECT_EQ(Taken(), "");
  EXPECT_FALSE(model.ConfigChanged);
}

TEST_F(PartialImportTest, FilesThatAreNotRight) {
  std::string cut = WriteConfigText(Other());
  cut.resize(cut.find("\"Gauges\""));
  ConfigModel withoutPlates = Other();
  withoutPlates.Plates.clear();
  ConfigModel stranger = Other();
  stranger.General.ConfigHeader = "Other program";
  std::string badForces = WriteConfigText(Other());
  badForces.resize(badForces.find("\"Yoke1\""));
  const char *error = "Error in Configuration file",
             *imported = "Configuration chapters imported into file: Default.cfg";
  const std::string noPlates =
      "Taken: General: ports, link, interval; IOM: inputs and outputs; Functions 0 to 50; Functions 51 to "
      "300; "
      "Gaugetypes; Gauges; Engine Cluster Settings.\r\nNot in the file, left as it was: Plates.";
  const std::string strange = WriteConfigText(stranger);
  constexpr int yes = kAnswerYes, no = kAnswerNo;
  ImportChoice all{};
  all.fill(true);
  const struct {
    const char* what;
    std::string text;
    std::deque<int> answers;
    const char *message, *taken;
  } rows[] = {
      {"an error in the middle", cut, {yes}, error, "01234"},
      {"no configuration file", "nonsense", {yes}, error, ""},
      {"without Plates", WriteConfigText(withoutPlates), {yes}, imported, "0123457"},
      {"an error in the force feedback, which is not read", badForces, {yes}, imported, "01234567"},
      {"refused at once", WriteConfigText(Other()), {no}, "", ""},
      {"another program's title, refused", strange, {yes, no}, "", ""},
      {"its version refused", strange, {yes, yes, no}, "", ""},
      {"both accepted", strange, {yes, yes, yes}, imported, "01234567"},
  };
  for (const auto& row : rows) {
    Put("Source.cfg", row.text);
    model = ConfigModel{};
    boxes.shown.clear();
    boxes.answers = row.answers;
    save.ImportPartial("Source.cfg", all);
    EXPECT_EQ(LastShown().substr(0, LastShown().find('\r')), row.message) << row.what;
    EXPECT_EQ(LastShown().find(noPlates) != std::string::npos, row.what == std::string("without Plates"));
    EXPECT_EQ(Taken(), row.taken) << row.what;
    EXPECT_EQ(model.ConfigChanged, *row.taken != 0 || row.text == "nonsense") << row.what;
    EXPECT_TRUE(boxes.answers.empty()) << row.what;
  }
  boxes.answers = {kAnswerYes};
  EXPECT_FALSE(save.ImportPartial("Missing.cfg", all));
  EXPECT_TRUE(LastShown().starts_with("Error in Configuration file\r\n\"Missing.cfg\": ")) << LastShown();
  Put("Source.cfg", cut);
  boxes.answers = {kAnswerYes};
  EXPECT_FALSE(save.ImportPartial("Source.cfg", {false, false, true, false, false, true}));
  EXPECT_EQ(
      LastShown(),
      "Error in Configuration file\r\nline 439: the file ends too early\r\nTaken: Functions 0 to 50.\r\n"
      "Not taken, or only up to the error: Gauges.");
}

}  // namespace
}  // namespace tvx::test
