#include <gtest/gtest.h>

#include "ffb/TakenControls.h"
#include "tests/fakes/ScratchFolder.h"

namespace tvx::test {
namespace {

struct FakeLastWords : LastWords {
  std::optional<UdpTarget> target = UdpTarget{0x0A000007, 49000};
  std::size_t prepared = 0;
  UdpTarget preparedFor;
  std::vector<UdpTarget> sent;
  std::optional<UdpTarget> Target() const override { return target; }
  void Prepare(const UdpTarget& to, std::span<const ByteView> datagrams) override {
    prepared = datagrams.size();
    preparedFor = to;
  }
  bool Send(const UdpTarget& to, ByteView) override {
    sent.push_back(to);
    return true;
  }
  // How many a program that is started now sends back, and where.
  static std::size_t LeftBehind(const UdpTarget& expected) {
    FakeLastWords words;
    TakenControls next(words);
    if (next.LeftOnes()) next.Tick(true);
    EXPECT_FALSE(next.LeftOnes()) << "given back once the simulator is heard";
    for (const UdpTarget& to : words.sent) EXPECT_EQ(to, expected);
    return words.sent.size();
  }
};

constexpr std::size_t kYokes = kYokeOverrides.size(), kAll = kYokes + kPedalOverrides.size();

struct TakenControlsTest : testing::Test {
  const ScratchFolder folder;
  FakeLastWords words;
};

TEST_F(TakenControlsTest, WhoIsKilledLeavesWhatWasTakenAndWhere) {
  const UdpTarget first{0x0A000007, 49000}, second{0xC0A80102, 49100};
  const struct {
    const char* what;
    void (*happens)(TakenControls&, FakeLastWords&);
    std::size_t left;
    UdpTarget where;
  } rows[] = {
      {"nothing was taken", [](TakenControls& t, FakeLastWords&) { t.Hold({}); }, 0, first},
      {"the yoke's",
       [](TakenControls& t, FakeLastWords&) {
         t.Hold({true, false});
       },
       kYokes, first},
      {"then the pedals' too",
       [](TakenControls& t, FakeLastWords&) {
         t.Hold({true, false}), t.Hold({true, true});
       },
       kAll, first},
      {"an autopilot has them for now",
       [](TakenControls& t, FakeLastWords&) {
         t.Hold({true, false}), t.Hold({});
       },
       kYokes, first},
      {"the simulator moved to another computer",
       [](TakenControls& t, FakeLastWords& w) {
         t.Hold({true, false});
         w.target = UdpTarget{0xC0A80102, 49100};
         t.Hold({true, false});
       },
       kYokes, second},
      {"given back",
       [](TakenControls& t, FakeLastWords&) {
         t.Hold({true, true}), t.LetGo();
       },
       0, first},
      {"nowhere to",
       [](TakenControls& t, FakeLastWords& w) {
         w.target.reset(), t.Hold({true, true});
       },
       0, first},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    words = {};
    {
      TakenControls taken(words);
      row.happens(taken, words);
    }
    EXPECT_EQ(FakeLastWords::LeftBehind(row.where), row.left);
    EXPECT_EQ(FakeLastWords::LeftBehind(row.where), 0u) << "and its note is gone";
  }
}

TEST_F(TakenControlsTest, TheLastWordsAreOfWhatIsTakenNow) {
  TakenControls taken(words);
  taken.Hold({true, true});
  EXPECT_EQ(words.prepared, kAll);
  EXPECT_EQ(words.preparedFor, *words.target);
  taken.Hold({false, true});
  EXPECT_EQ(words.prepared, kPedalOverrides.size());
  taken.LetGo();
  EXPECT_EQ(words.prepared, 0u);
}

TEST_F(TakenControlsTest, WhatAnEarlierProgramLeftIsGivenBackForAMinuteAndWhenTheSimulatorIsHeard) {
  TakenControls(words).Hold({true, false});
  words = {};
  TakenControls next(words);
  for (int i = 0; i < 2 * TakenControls::kAttempts; ++i) next.Tick(false);
  EXPECT_EQ(words.sent.size(), TakenControls::kAttempts * kYokes);
  EXPECT_TRUE(next.LeftOnes()) << "nobody is known to have heard";
  next.Tick(true);
  EXPECT_EQ(words.sent.size(), (TakenControls::kAttempts + 1) * kYokes);
  next.Tick(true);
  EXPECT_EQ(words.sent.size(), (TakenControls::kAttempts + 1) * kYokes);

  // A note that is damaged gives nothing back; a strange control in it is not this program's.
  const std::pair<const char*, std::size_t> notes[] = {{"10.0.0.7 49000\nsim/cockpit/engine/fuel\n", 0},
                                                       {"10.0.0 49000\nOVERRIDE\n", 0},
                                                       {"10.0.0.7 0\nOVERRIDE\n", 0},
                                                       {"10.0.0.7 49000x\nOVERRIDE\n", 0},
                                                       {"10.0.0.7\nOVERRIDE\n", 0},
                                                       {"10.0.0.7 65535\nOVERRIDE\n", 1}};
  for (const auto& [text, expected] : notes) {
    std::string note = text;
    if (const auto at = note.find("OVERRIDE"); at != std::string::npos)
      note.replace(at, 8, kYokeOverrides.front());
    ScratchFolder::Put(std::string(TakenControls::kNote), note);
    EXPECT_EQ(FakeLastWords::LeftBehind({0x0A000007, 65535}), expected) << note;
    std::filesystem::remove(TakenControls::kNote);
  }
}

}  // namespace
}  // namespace tvx::test
