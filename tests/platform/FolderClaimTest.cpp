#include <gtest/gtest.h>

#include <future>

#include "platform/linux/FolderClaim.h"
#include "platform/qt/QtFdWatcher.h"
#include "tests/fakes/ScratchFolder.h"
#include "tests/platform/WaitUntil.h"

namespace tvx {
namespace {

TEST(FolderClaim, OneOfManyGetsTheFolderAndTheNextOneWhenItEnds) {
  const ScratchFolder folder;
  std::filesystem::create_directory("other");
  std::filesystem::create_directory_symlink(".", "link");
  auto first = std::make_unique<FolderClaim>();
  FolderClaim second, elsewhere, gone;
  EXPECT_TRUE(first->Take("."));
  EXPECT_FALSE(second.Take("link")) << "the same folder";
  EXPECT_TRUE(elsewhere.Take("other"));
  EXPECT_TRUE(gone.Take("no such folder")) << "no reason to run not at all";
  first.reset();
  EXPECT_TRUE(second.Take("."));
}

TEST(FolderClaim, TheFirstIsAskedToShowItselfAndSaysSo) {
  const ScratchFolder folder;
  EXPECT_FALSE(FolderClaim::AskToShow(".", 1000)) << "nobody is there";
  FolderClaim first;
  ASSERT_TRUE(first.Take("."));
  EXPECT_FALSE(FolderClaim::AskToShow(".", 1)) << "it does not answer";
  int shown = 0;
  first.Listen(std::make_unique<QtFdWatcher>(), [&] { ++shown; });
  auto asking = std::async(std::launch::async, [] { return FolderClaim::AskToShow(".", 2000); });
  ASSERT_TRUE(
      WaitUntil([&] { return asking.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
  EXPECT_TRUE(asking.get());
  EXPECT_GE(shown, 1);
}

}  // namespace
}  // namespace tvx
