#include "config/StartFile.h"
#include "config/setup/SavePresenter.h"
#include "tests/config/Samples.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/OddFiles.h"

namespace tvx::test::savepresentertest {

namespace fs = std::filesystem;

const std::string kOverwrite = ": This will overwrite the current configuration! Continue?";

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
  // How an operation left things: the file in use, * where the configuration counts as changed, whether it
  // did what it is for, and each question and message since the last call.
  std::string Did(bool done) {
    std::string words = model.ConfigFileName + (model.ConfigChanged ? "* " : " ") + (done ? "yes" : "no");
    for (Texts* texts : {&boxes.asked, &boxes.shown}) {
      for (const std::string& text : std::exchange(*texts, {})) words += ": " + text;
    }
    return words;
  }

  ConfigModel model;
  FakeMessageBoxes boxes;
  ConfigFile file{model, boxes};
  SavePresenter save{model, file, boxes, [] { return BuildConfigHeader("X-Plane", "12.11.00", "now"); }};
};

TEST_F(SaveControlTest, NamesAreRefusedBeforeAnythingHappens) {
  model.ConfigChanged = true;
  for (const char* name : {"xcfg", "Cockpit.cfg.txt", "cfg"}) {
    Put(name, "keep");
    for (const bool saves : {true, false}) {
      EXPECT_EQ(Did(saves ? save.Save(name) : save.Delete(name)),
                "Default.cfg* no: Filetype incorrect or missing; must be: ****.cfg");
    }
    EXPECT_EQ(FileContent(name), "keep");
  }
  EXPECT_EQ(Did(save.Save("")), "Default.cfg* no: No filename");
  EXPECT_EQ(Did(save.Load("")), "Default.cfg* no: No filename");
  EXPECT_EQ(Did(save.SetAsStartup("")), "Default.cfg* no: File Name missing.");
  EXPECT_EQ(Did(save.ImportPartial("", {})), "Default.cfg* no: No file selected");
  EXPECT_TRUE(IsConfigFileName("OLD.CFG"));
}

TEST_F(SaveControlTest, SavingKeepsThePreviousFile) {
  Put("Other.cfg", "previous");
  model.ConfigChanged = model.ConfigLoadFailed = true;
  EXPECT_EQ(Did(save.Save("Other.cfg")), "Other.cfg yes: File saved as: Other.cfg");
  EXPECT_FALSE(model.ConfigLoadFailed);
  EXPECT_EQ(Kept("Other.cfg", ".bak"), "previous");
  EXPECT_EQ(FileContent("Other.cfg"), WriteConfigText(model));
}

TEST_F(SaveControlTest, AFailedSaveHarmsNothing) {
  model.General.ConfigHeader = "loaded header";
  fs::create_directory("Folder.cfg");
  EXPECT_EQ(Did(save.Save("Folder.cfg")), "Default.cfg no: file cannot be overwritten");
  Put("Good.cfg", "good");
  model.Plates.resize(32768);  // more than the file's count can announce: they would be lost
  EXPECT_EQ(Did(save.Save("Good.cfg")), "Default.cfg no: Configuration corrupt; Cannot save");
  EXPECT_EQ(FileContent("Good.cfg") + Kept("Good.cfg", ".bak"), "good");
  EXPECT_EQ(model.General.ConfigHeader, "loaded header");
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
  for (const std::string name : {"Folder.cfg", "Pipe.cfg"}) {
    EXPECT_EQ(Did(save.Save(name)), "Default.cfg no: file cannot be overwritten") << name;
    EXPECT_FALSE(save.Load(name) || save.SetAsStartup(name)) << name;
    EXPECT_FALSE(save.Delete(name));
    EXPECT_EQ(boxes.shown.back(), "File cannot be deleted: " + name);
    EXPECT_EQ(save.SaveWords(name), name + " is no file. Choose another name.");
    Did(false);
  }
  EXPECT_TRUE(save.Delete("Link.cfg"));
  EXPECT_EQ(ConfigFilesIn(""), Texts{});
  Put("Other.cfg", "old");
  MakeLink("far", NextKeptName("Other.cfg", KeptAs::Backup));  // the name of the next backup leads elsewhere
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
      EXPECT_EQ(Did(save.Save("Full.cfg")), "Default.cfg* no: file cannot be overwritten");
    }
    EXPECT_EQ(FileContent("Full.cfg"), old);
    EXPECT_EQ(Entries(), before) << "neither a copy nor a half-written file";
  }
}

TEST_F(SaveControlTest, LoadingAsksFirst) {
  ASSERT_TRUE(save.Save("Other.cfg"));
  ConfigModel older = model;
  older.General.ConfigHeader.replace(69, 4, "0.01");
  Put("Older.cfg", WriteConfigText(older));
  Put("Bad.cfg", "nonsense");
  model.Functions[60].ShortName = "edited";
  model.ConfigFileName = "Default.cfg";
  Did(true);
  const std::string asked = kOverwrite, error = ": Error Configuration file. ";
  const struct {
    const char *what, *file;
    std::deque<int> answers;
    std::string after;
    const char* function;  // the Function's name then
    bool changed = false;  // before
  } rows[] = {
      {"refused", "Other.cfg", {kAnswerNo}, "Default.cfg no" + asked, "edited"},
      {"accepted", "Other.cfg", {kAnswerYes}, "Other.cfg yes" + asked, "mine", true},
      {"half loaded, which must be asked about",
       "Bad.cfg",
       {kAnswerYes},
       "Bad.cfg* no" + asked + error,
       "mine"},
      {"its general record only", "Older.cfg", {kAnswerYes, kAnswerNo}, "Older.cfg* yes" + asked, "mine"},
      {"none was read", "Missing.cfg", {kAnswerYes}, "Older.cfg no" + asked + error, "mine"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    boxes.answers = row.answers;
    model.ConfigChanged = row.changed;
    EXPECT_TRUE(Begins(Did(save.Load(row.file)), row.after));
    EXPECT_TRUE(boxes.answers.empty());
    EXPECT_EQ(model.Functions[60].ShortName, row.function);
  }
}

TEST_F(SaveControlTest, DeletingAsksAndKeepsACopy) {
  Put("Old.cfg", "old");
  const std::string asked = ": This will delete the file: Old.cfg ; Are you sure? ";
  boxes.answers = {kAnswerNo, kAnswerYes, kAnswerYes};
  EXPECT_EQ(Did(save.Delete("Old.cfg")), "Default.cfg no" + asked);
  EXPECT_EQ(FileContent("Old.cfg"), "old");
  EXPECT_EQ(Did(save.Delete("Old.cfg")), "Default.cfg yes" + asked);
  EXPECT_FALSE(fs::exists("Old.cfg"));
  EXPECT_EQ(Kept("Old.cfg", ".bak"), "old");
  EXPECT_EQ(Did(save.Delete("Old.cfg")), "Default.cfg no" + asked + ": File cannot be deleted: Old.cfg");
}

TEST_F(SaveControlTest, TheStartUpDelayIsAskedFor) {
  const std::tuple<const char*, bool, int> rows[] = {{" 0 ", true, 0},    {"", false, 10},
                                                     {"-1", false, 10},   {"40000", false, 10},
                                                     {"12 s", false, 10}, {"7.5", true, 8}};
  for (const auto& [typed, good, delay] : rows) {
    model.StartDelay = 10;
    boxes.shown.clear();
    boxes.texts = {typed};
    EXPECT_EQ(save.SetAsStartup("Mine.cfg"), good) << typed;
    EXPECT_EQ(model.StartDelay, delay) << typed;
    EXPECT_EQ(LastShown(), good ? "" : "Error in file/time input") << typed;
    if (!good) continue;
    ConfigModel read;
    EXPECT_EQ(ReadStartFile(read), "Mine.cfg");
    EXPECT_EQ(read.StartDelay, delay);
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
  boxes.otherwise = kAnswerYes;
  for (std::size_t i = 0; i <= kImportChapters; ++i) {
    model = ConfigModel{};
    ImportChoice chosen{};
    const bool any = i < kImportChapters;
    if (any) chosen[i] = true;
    EXPECT_TRUE(save.ImportPartial("Source.cfg", chosen)) << i;
    EXPECT_EQ(Taken(), any ? std::to_string(i) : "");
    EXPECT_EQ(model.ConfigChanged, any) << i;
  }
  EXPECT_EQ(boxes.shown.back(),
            "Configuration chapters imported into file: Default.cfg\r\n"
            "Taken: none, as none was ticked.");
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
  const std::tuple<const char*, std::string, std::deque<int>, const char*, const char*> rows[] = {
      {"an error in the middle", cut, {yes}, error, "01234"},
      {"no configuration file", "nonsense", {yes}, error, ""},
      {"without Plates", WriteConfigText(withoutPlates), {yes}, imported, "0123457"},
      {"an error in the force feedback, which is not read", badForces, {yes}, imported, "01234567"},
      {"refused at once", WriteConfigText(Other()), {no}, "", ""},
      {"another program's title, refused", strange, {yes, no}, "", ""},
      {"its version refused", strange, {yes, yes, no}, "", ""},
      {"both accepted", strange, {yes, yes, yes}, imported, "01234567"},
  };
  for (const auto& [what, text, answers, message, taken] : rows) {
    Put("Source.cfg", text);
    model = ConfigModel{};
    boxes.shown.clear();
    boxes.answers = answers;
    save.ImportPartial("Source.cfg", all);
    EXPECT_EQ(LastShown().substr(0, LastShown().find('\r')), message) << what;
    EXPECT_EQ(LastShown().find(noPlates) != std::string::npos, what == std::string("without Plates"));
    EXPECT_EQ(Taken(), taken) << what;
    EXPECT_EQ(model.ConfigChanged, *taken != 0 || text == "nonsense") << what;
    EXPECT_TRUE(boxes.answers.empty()) << what;
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

}  // namespace tvx::test::savepresentertest
