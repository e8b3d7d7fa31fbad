#include <future>

#include "platform/linux/FolderClaim.h"
#include "platform/qt/QtFdWatcher.h"
#include "tests/Test.h"
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
  const auto later = [] { return FolderClaim().TakeOrAsk(".", 2000); };
  std::vector<std::future<FolderClaim::Start>> starts;
  for (int i = 0; i < 4; ++i) starts.push_back(std::async(std::launch::async, later));
  for (auto& start : starts) {
    ASSERT_TRUE(
        WaitUntil([&] { return start.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    EXPECT_EQ(start.get(), FolderClaim::Start::Shown);
  }
  EXPECT_GE(shown, 4);
}

TEST(FolderClaim, OfManyStartsAtOnceExactlyOneRuns) {
  const ScratchFolder folder;
  std::vector<FolderClaim> claims(8);
  std::vector<std::future<FolderClaim::Start>> starts;
  for (FolderClaim& claim : claims)
    starts.push_back(std::async(std::launch::async, [&claim] { return claim.TakeOrAsk(".", 100); }));
  int first = 0;
  for (auto& start : starts) first += start.get() == FolderClaim::Start::First;
  EXPECT_EQ(first, 1) << "the others wait for an answer, and never run";
}

}  // namespace
}  // namespace tvx
