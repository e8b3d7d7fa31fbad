#include <gtest/gtest.h>

#include <chrono>

#include "platform/AtomicFile.h"
#include "tests/fakes/ScratchFolder.h"

namespace tvx::test {
namespace {

namespace fs = std::filesystem;

struct Files : testing::Test {
  std::string Content(const std::string& path) { return ReadWholeFile(path, error_).value_or("unreadable"); }
  static auto Entries() { return std::distance(fs::directory_iterator("."), fs::directory_iterator()); }
  const ScratchFolder folder_;
  std::string error_;
};

// Names are UTF-8 everywhere in the program.
TEST_F(Files, AreReplacedWhole) {
  const std::string big(300'000, 'b');
  for (const std::string name : {"plain.cfg", "K\xC3\xB6ln \xE2\x82\xAC.cfg", ".hidden"}) {
    for (const std::string& content : {std::string("old"), big, std::string(), std::string("a\r\n\0b", 5)}) {
      ASSERT_TRUE(ReplaceFile(name, content, error_)) << name << ": " << error_;
      EXPECT_EQ(Content(name), content) << name;
    }
  }
  EXPECT_EQ(Entries(), 3) << "nothing else is left";
  EXPECT_TRUE(fs::exists(fs::path(u8"K\u00F6ln \u20AC.cfg")));
}

TEST_F(Files, WhatIsProtectedOrNoFileStays) {
  fs::create_directory("folder");
  ScratchFolder::Put("file", "old");
  fs::permissions("file", fs::perms::owner_write, fs::perm_options::remove);
  for (const std::string path : {"folder", "missing/file", "file", ""}) {
    error_.clear();
    EXPECT_FALSE(ReplaceFile(path, "new", error_)) << path;
    EXPECT_NE(error_, "");
  }
  EXPECT_EQ(Content("file"), "old");
  EXPECT_EQ(Entries(), 2);
  EXPECT_FALSE(ReadWholeFile("folder", error_));
  EXPECT_EQ(error_, "\"folder\" is not a file");
  EXPECT_FALSE(ReadWholeFile("missing", error_));
  EXPECT_TRUE(error_.starts_with("\"missing\": ")) << error_;
  fs::permissions("file", fs::perms::owner_write, fs::perm_options::add);
  EXPECT_FALSE(ReadWholeFile("file", error_, 2));
  EXPECT_EQ(error_, "\"file\" is larger than 2 bytes");
}

TEST_F(Files, NewNamesReplaceNothing) {
  ScratchFolder::Put("file", "content");
  ScratchFolder::Put("taken", "keep");
  fs::create_directory("folder");
  for (const char* name : {"taken", "folder"}) {
    EXPECT_FALSE(CreateNewFile(name, "new", error_)) << name;
    EXPECT_FALSE(MoveToNewName("file", name, error_)) << name;
  }
  EXPECT_FALSE(MoveToNewName("folder", "elsewhere", error_));
  EXPECT_FALSE(MoveToNewName("missing", "elsewhere", error_));
  EXPECT_TRUE(MoveToNewName("file", "other", error_)) << error_;
  EXPECT_TRUE(CreateNewFile("file", "new", error_)) << error_;
  EXPECT_EQ(Content("file") + Content("other") + Content("taken"), "newcontentkeep");
}

TEST_F(Files, TemporariesOfACrashAreRemoved) {
  const auto old = fs::file_time_type::clock::now() - std::chrono::minutes(2);
  for (const char* name : {".saving-aBcdef", ".saving-newone", ".saving-toolong", "saving-aBcdef"}) {
    ScratchFolder::Put(name, "half");
    if (name != std::string_view(".saving-newone")) fs::last_write_time(name, old);
  }
  RemoveStaleTemporaries("");
  EXPECT_FALSE(fs::exists(".saving-aBcdef"));
  EXPECT_EQ(Entries(), 3);
}

}  // namespace
}  // namespace tvx::test
