#include "platform/Unmarker.h"
#include "tests/Test.h"

namespace tvx {
namespace {

using Kind = Unmarker::Kind;

// What comes out of raw bytes, in words: "41", "?41" where the byte is faulty, "mark" for a zero mark.
std::string Unmark(Unmarker& unmarker, ByteView bytes) {
  std::ostringstream words;
  for (const Byte byte : bytes) {
    const auto item = unmarker.Feed(byte);
    if (item.kind == Kind::Nothing) continue;
    if (words.tellp() > 0) words << ' ';
    if (item.kind == Kind::ZeroMark) words << "mark";
    if (item.kind == Kind::Faulty) words << '?';
    if (item.kind != Kind::ZeroMark) words << std::hex << int{item.value};
  }
  return words.str();
}

TEST(Unmarker, TakesTheMarksOut) {
  const std::pair<Bytes, const char*> cases[] = {
      {{0x00, 0x41, 0xFE}, "0 41 fe"},
      {{0xFF, 0xFF, 0x00, 0x00}, "ff 0 0"},
      {{0x01, 0xFF, 0x00, 0x00, 0x02}, "1 mark 2"},
      {{0xFF, 0x00, 0x41, 0x42}, "?41 42"},
      {{0xFF, 0x00, 0xFF, 0x42}, "?ff 42"},
      {{0xFF, 0x41}, "41"},        // a lone FF
      {{0x41, 0xFF, 0x00}, "41"},  // an unfinished mark
  };
  for (const auto& [raw, words] : cases) {
    Unmarker unmarker;
    EXPECT_EQ(Unmark(unmarker, raw), words);
    unmarker.Reset();  // forgets half a mark
    EXPECT_EQ(Unmark(unmarker, Bytes{0x43}), "43") << words;
  }
}

TEST(ZeroMarkJudge, FollowsTheDriversCounters) {
  ZeroMarkJudge judge;
  judge.Restart({7, 3});
  EXPECT_TRUE(judge.IsBreak({8, 3}));
  EXPECT_FALSE(judge.IsBreak({8, 4}));
  judge.SawFaulty();
  EXPECT_FALSE(judge.IsBreak({8, 6}));
  // Two breaks and a faulty zero, counted before the first mark was read.
  EXPECT_TRUE(judge.IsBreak({10, 7}));
  EXPECT_TRUE(judge.IsBreak({10, 7}));
  EXPECT_FALSE(judge.IsBreak({10, 7}));
  judge.Restart({});
  EXPECT_TRUE(judge.IsBreak({})) << "a driver without counters";
}

}  // namespace
}  // namespace tvx
