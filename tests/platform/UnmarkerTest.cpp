#include <gtest/gtest.h>

#include <vector>

#include "platform/linux/Unmarker.h"

namespace tvx {
namespace {

using Kind = Unmarker::Kind;
using Items = std::vector<Unmarker::Item>;

Items Unmark(Unmarker& unmarker, ByteView bytes) {
  Items items;
  for (const Byte byte : bytes) {
    const auto item = unmarker.Feed(byte);
    if (item.kind != Kind::Nothing) items.push_back(item);
  }
  return items;
}

TEST(Unmarker, TakesTheMarksOut) {
  const struct {
    const char* what;
    std::vector<Byte> raw;
    Items items;
  } cases[] = {
      {"plain bytes", {0x00, 0x41, 0xFE}, {{Kind::Data, 0x00}, {Kind::Data, 0x41}, {Kind::Data, 0xFE}}},
      {"a doubled FF", {0xFF, 0xFF}, {{Kind::Data, 0xFF}}},
      {"FF, then zero bytes",
       {0xFF, 0xFF, 0x00, 0x00},
       {{Kind::Data, 0xFF}, {Kind::Data, 0}, {Kind::Data, 0}}},
      {"two doubled FF", {0xFF, 0xFF, 0xFF, 0xFF}, {{Kind::Data, 0xFF}, {Kind::Data, 0xFF}}},
      {"a break between bytes",
       {0x01, 0xFF, 0x00, 0x00, 0x02},
       {{Kind::Data, 1}, {Kind::ZeroMark, 0}, {Kind::Data, 2}}},
      {"a faulty byte", {0xFF, 0x00, 0x41, 0x42}, {{Kind::Faulty, 0x41}, {Kind::Data, 0x42}}},
      {"a faulty FF", {0xFF, 0x00, 0xFF, 0x42}, {{Kind::Faulty, 0xFF}, {Kind::Data, 0x42}}},
      {"a lone FF", {0xFF, 0x41}, {{Kind::Data, 0x41}}},
      {"an unfinished mark", {0x41, 0xFF, 0x00}, {{Kind::Data, 0x41}}},
  };
  for (const auto& c : cases) {
    Unmarker unmarker;
    EXPECT_EQ(Unmark(unmarker, c.raw), c.items) << c.what;
  }
}

TEST(Unmarker, ResetForgetsHalfAMark) {
  Unmarker unmarker;
  const Byte half[] = {0xFF, 0x00};
  Unmark(unmarker, half);
  unmarker.Reset();
  EXPECT_EQ(unmarker.Feed(0x41), (Unmarker::Item{Kind::Data, 0x41}));
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
}

TEST(ZeroMarkJudge, WithoutCountersAZeroMarkIsABreak) {
  ZeroMarkJudge judge;
  judge.Restart({});
  EXPECT_TRUE(judge.IsBreak({}));
  EXPECT_TRUE(judge.IsBreak({}));
}

}  // namespace
}  // namespace tvx
