#include "base/Registration.h"
#include "tests/Test.h"

namespace tvx::registrationtest {

TEST(Registration, ACallbackEndsWithWhoeverGaveIt) {
  Callback<int> callback;
  int sum = 0;
  callback(1);  // nobody there
  {
    const Registration held = callback.Give([&](int value) { sum += value; });
    EXPECT_TRUE(callback);
    callback(2);
  }
  EXPECT_FALSE(callback);
  callback(4);
  EXPECT_EQ(sum, 2);
}

TEST(Registration, TheNewestCallbackCountsAndAnOldHandleTakesNothingAway) {
  Callback<> callback;
  int first = 0, second = 0;
  Registration old = callback.Give([&] { ++first; });
  Registration held = callback.Give([&] { ++second; });
  old.End();
  callback();
  EXPECT_EQ(first, 0);
  EXPECT_EQ(second, 1);
  held = callback.Give([&] { ++first; });
  callback();
  EXPECT_EQ(first, 1);
}

TEST(Registration, EitherMayGoFirst) {
  auto callback = std::make_unique<Callback<>>();
  Registration held = callback->Give([] {});
  callback.reset();
  held.End();
}

// What a callback holds must outlive its own run, though it gives itself up meanwhile.
TEST(Registration, ACallbackMayEndItselfWhileItRuns) {
  Callback<> callback;
  std::optional<Registration> held;
  const auto word = std::make_shared<int>(7);
  int seen = 0;
  held = callback.Give([&callback, &held, &seen, word] {
    held = callback.Give([&seen] { seen = -1; });
    seen = *word;
  });
  callback();
  EXPECT_EQ(seen, 7);
  EXPECT_EQ(word.use_count(), 1);
  callback();
  EXPECT_EQ(seen, -1);
}

}  // namespace tvx::registrationtest
