#include <sys/stat.h>
#include <unistd.h>

#include "platform/AtomicFile.h"
#include "tests/config/Samples.h"

namespace tvx::test {
namespace {

namespace fs = std::filesystem;

struct AtomicFile : InEmptyFolder {
  std::string error_;
};

TEST_F(AtomicFile, FollowsLinksAndKeepsPermissions) {
  fs::create_directory("far");
  Put("far/real", "old");
  chmod("far/real", 0640);
  fs::create_symlink("far/hop", "link");
  fs::create_symlink("real", "far/hop");
  fs::create_symlink("far/new", "dangling");
  EXPECT_TRUE(ReplaceFile("link", "new", error_)) << error_;
  EXPECT_TRUE(ReplaceFile("dangling", "", error_)) << error_;
  EXPECT_EQ(FileContent("far/real"), "new");
  EXPECT_TRUE(fs::is_symlink("link") && fs::is_symlink("far/hop") && fs::is_symlink("dangling"));
  struct stat status {};
  stat("far/real", &status);
  EXPECT_EQ(status.st_mode & 07777, 0640u);
  const mode_t mask = umask(0);
  umask(mask);
  stat("far/new", &status);
  EXPECT_EQ(status.st_mode & 07777, 0666 & ~mask);
}

TEST_F(AtomicFile, RefusesWhatIsNoPlaceForAFile) {
  fs::create_directory("folder");
  fs::create_symlink("round", "round");
  Put("file", "x");
  for (const std::string path : {"folder", "missing/file", "round", "/dev/full", "file/below", ""}) {
    error_.clear();
    EXPECT_FALSE(ReplaceFile(path, "content", error_)) << path;
    EXPECT_NE(error_, "");
  }
  EXPECT_EQ(Entries(), 3) << "nothing is left behind";
  EXPECT_TRUE(fs::is_empty("folder"));
}

TEST_F(AtomicFile, LeavesAWriteProtectedFileAlone) {
  Put("file", "old");
  const bool root = geteuid() == 0;  // nothing is protected from root: be somebody else
  if (root) {
    ASSERT_EQ(chown(".", 65534, 65534) | chown("file", 65534, 65534) | seteuid(65534), 0);
  }
  chmod("file", 0444);
  EXPECT_FALSE(ReplaceFile("file", "new", error_));
  chmod("file", 0644);
  chmod(".", 0555);
  EXPECT_FALSE(ReplaceFile("file", "new", error_));
  chmod(".", 0755);
  if (root) {
    ASSERT_EQ(seteuid(0), 0);
  }
  EXPECT_EQ(FileContent("file"), "old");
}

// Whatever stands under the new name stays, and what a link leads to is never touched.
TEST_F(AtomicFile, NewNamesReplaceNothing) {
  Put("file", "content");
  fs::create_directory("folder");
  fs::create_symlink("victim", "link");
  fs::create_symlink("folder", "folder link");
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  Put("victim", "keep");
  for (const char* taken : {"folder", "link", "folder link", "pipe", "victim"}) {
    EXPECT_FALSE(CreateNewFile(taken, "new", error_)) << taken;
    EXPECT_FALSE(MoveToNewName("file", taken, error_)) << taken;
    EXPECT_NE(error_, "");
  }
  EXPECT_FALSE(MoveToNewName("folder", "elsewhere", error_));
  EXPECT_FALSE(MoveToNewName("pipe", "elsewhere", error_));
  EXPECT_FALSE(MoveToNewName("missing", "elsewhere", error_));
  EXPECT_EQ(FileContent("victim"), "keep");
  EXPECT_EQ(Entries(), 6);
  EXPECT_TRUE(MoveToNewName("link", "moved", error_)) << error_;
  EXPECT_TRUE(fs::is_symlink("moved"));
  EXPECT_TRUE(MoveToNewName("file", "other", error_)) << error_;
  EXPECT_TRUE(CreateNewFile("file", "new", error_)) << error_;
  EXPECT_EQ(FileContent("file") + FileContent("other") + FileContent("victim"), "newcontentkeep");
}

TEST_F(AtomicFile, TemporariesOfACrashAreRemoved) {
  const auto old = fs::file_time_type::clock::now() - std::chrono::minutes(2);
  Put("victim", "keep");
  for (const char* name :
       {".saving-aB3xYz", ".saving-new123", ".saving-toolong", "saving-aB3xYz", ".saving-"}) {
    Put(name, "half");
    if (name != std::string_view(".saving-new123")) fs::last_write_time(name, old);
  }
  fs::create_directory(".saving-folder");
  fs::create_symlink("victim", ".saving-linked");
  RemoveStaleTemporaries("");
  EXPECT_FALSE(fs::exists(".saving-aB3xYz"));
  EXPECT_EQ(Entries(), 7) << "one of another program that is just saving, and all that is none of ours";
}

TEST_F(AtomicFile, ReadsWholeFilesUpToTheLimit) {
  const std::string content(100000, '\0');
  ASSERT_TRUE(ReplaceFile("file", content, error_)) << error_;
  EXPECT_EQ(ReadWholeFile("file", error_), content);
  EXPECT_EQ(ReadWholeFile("file", error_, content.size()), content);
  EXPECT_EQ(ReadWholeFile("file", error_, content.size() - 1), std::nullopt);
  EXPECT_EQ(error_, "\"file\" is larger than 99999 bytes");
}

}  // namespace
}  // namespace tvx::test
