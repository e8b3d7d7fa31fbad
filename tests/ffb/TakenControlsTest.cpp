#include "ffb/TakenControls.h"
#include "tests/Test.h"
#include "tests/fakes/ScratchFolder.h"

namespace tvx::test::takencontrolstest {

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
  static constexpr TakenGroups kNone{}, kYoke{true, false}, kBoth{true, true};
  static constexpr UdpTarget kFirst{0x0A000007, 49000}, kSecond{0xC0A80102, 49100};
  using T = TakenControls;
  const struct {
    const char* what;
    void (*happens)(T&, FakeLastWords&);
    std::size_t left;
    UdpTarget where = kFirst;
  } rows[] = {
      {"nothing was taken", [](T& t, auto&) { t.Hold(kNone); }, 0},
      {"the yoke's", [](T& t, auto&) { t.Hold(kYoke); }, kYokes},
      {"then the pedals' too", [](T& t, auto&) { t.Hold(kYoke), t.Hold(kBoth); }, kAll},
      {"an autopilot has them for now", [](T& t, auto&) { t.Hold(kYoke), t.Hold(kNone); }, kYokes},
      {"the simulator moved to another computer",
       [](T& t, auto& w) { t.Hold(kYoke), w.target = kSecond, t.Hold(kYoke); }, kYokes, kSecond},
      {"given back", [](T& t, auto&) { t.Hold(kBoth), t.LetGo(); }, 0},
      {"nowhere to", [](T& t, auto& w) { w.target.reset(), t.Hold(kBoth); }, 0},
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

}  // namespace tvx::test::takencontrolstest
