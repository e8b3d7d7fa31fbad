#include "config/setup/UnsavedWork.h"
#include "tests/config/Samples.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/OddFiles.h"

namespace tvx::test::unsavedworktest {

namespace fs = std::filesystem;

struct UnsavedWorkTest : InEmptyFolder {
  UnsavedWorkTest() {
    model.General.ConfigHeader = BuildConfigHeader("", "", "now");
    model.Plates.emplace_back();
    model.ConfigFileName = "My.cfg";
    file.SaveConfigFile();
  }
  void Edit(const char* name) {
    model.Functions[60].ShortName = name;
    model.ConfigChanged = true;
  }
  ConfigModel model;
  FakeMessageBoxes boxes;
  ConfigFile file{model, boxes};
  UnsavedWork work{model, boxes};
};

TEST_F(UnsavedWorkTest, ComesBackAsChangesThatAreNotSaved) {
  EXPECT_TRUE(work.Keep());
  EXPECT_EQ(work.Words("My.cfg"), "") << "there were no changes";
  const std::string saved = FileContent("My.cfg");
  Edit("mine");
  EXPECT_TRUE(work.Keep());
  EXPECT_EQ(FileContent("My.cfg"), saved);
  model = ConfigModel{};
  const std::string words = work.Words("My.cfg");
  EXPECT_TRUE(words.starts_with("Changes to My.cfg of 2") && words.ends_with(" were not saved.")) << words;
  EXPECT_TRUE(work.Take("My.cfg"));
  EXPECT_EQ((Texts{model.Functions[60].ShortName, model.ConfigFileName}), (Texts{"mine", "My.cfg"}));
  EXPECT_TRUE(model.ConfigChanged);
  work.Follow();
  EXPECT_EQ(work.Words("My.cfg"), words) << "still not saved";
  file.SaveConfigFile();
  work.Follow();
  EXPECT_EQ(work.Words("My.cfg"), "");
}

// Each end of the program may leave some; none may be written over another one.
TEST_F(UnsavedWorkTest, AnOlderOneStays) {
  Edit("first");
  work.Keep();
  work.Keep();
  EXPECT_EQ(Entries(), 2);
  const std::string older = FileContent("My.cfg.unsaved");
  UnsavedWork nextStart{model, boxes};
  nextStart.Keep();
  EXPECT_EQ(Entries(), 2) << "the same work";
  Edit("second");
  nextStart.Keep();
  EXPECT_EQ(Entries(), 3);
  EXPECT_NE(FileContent("My.cfg.unsaved"), older);
  EXPECT_TRUE(nextStart.Discard("My.cfg"));
  EXPECT_EQ(nextStart.Words("My.cfg"), "");
  EXPECT_EQ(Entries(), 3) << "put aside, not lost";
  // What somebody else left is not taken for saved.
  Put("My.cfg.unsaved", older);
  model.ConfigChanged = false;
  UnsavedWork third{model, boxes};
  third.Follow();
  EXPECT_EQ(FileContent("My.cfg.unsaved"), older);
}

TEST_F(UnsavedWorkTest, WhatCannotBeReadOrWrittenHarmsNothing) {
  Put("far", "theirs");
  TakeName("My.cfg.unsaved", "far");
  Edit("mine");
  EXPECT_FALSE(work.Keep());
  EXPECT_EQ(FileContent("far"), "theirs");
  EXPECT_EQ(work.Words("My.cfg"), "");
  fs::remove("My.cfg.unsaved");
  Put("My.cfg.unsaved", "\"General\"\r\nrubbish");
  EXPECT_FALSE(work.Take("My.cfg"));
  EXPECT_TRUE(boxes.shown.back().starts_with("The unsaved changes cannot be read: line 2"))
      << boxes.shown.back();
  EXPECT_EQ(model.Functions[60].ShortName, "mine");
}

}  // namespace tvx::test::unsavedworktest
