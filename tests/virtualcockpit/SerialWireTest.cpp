#include <gtest/gtest.h>

#include "tests/virtualcockpit/Bytes.h"
#include "virtualcockpit/bus/GaugeBus.h"
#include "virtualcockpit/pace/SerialWire.h"

namespace tvx::vc {
namespace {

using test::Bytes;

constexpr std::int64_t kMs = kNsPerMs;

// A line whose two ends keep what arrives, and when. Time passes in steps of a tenth of a millisecond.
class WireTest : public testing::Test {
 protected:
  struct Piece {
    Bytes bytes;
    std::int64_t atNs;
    bool operator==(const Piece&) const = default;
  };
  void PassUntil(std::int64_t endNs) {
    for (; now_ < endNs; now_ += kMs / 10) wire_.Advance(now_);
  }
  // Waits until the line is quiet, a second at most.
  void Settle() {
    for (const std::int64_t end = now_ + kNsPerSecond; wire_.Busy() && now_ < end;) PassUntil(now_ + kMs);
  }
  static Bytes Counting(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<Byte>(i);
    return bytes;
  }
  static Bytes Joined(const std::vector<Piece>& pieces) {
    Bytes all;
    for (const Piece& piece : pieces) all.insert(all.end(), piece.bytes.begin(), piece.bytes.end());
    return all;
  }

  std::int64_t now_ = 5000 * kMs;
  std::vector<Piece> hardware_, program_;
  SerialWire wire_{[this](ByteView bytes, std::int64_t atNs) {
                     hardware_.push_back({{bytes.begin(), bytes.end()}, atNs});
                   },
                   [this](ByteView bytes) {
                     program_.push_back({{bytes.begin(), bytes.end()}, now_});
                   }};
};

TEST_F(WireTest, BytesArriveOneByOneAtTheSpeedOfTheLine) {
  const std::int64_t start = now_;
  wire_.FromProgram(Counting(6), now_);
  wire_.FromProgram(Counting(2), now_ + 1 * kMs);  // while the first ones are under way: behind them
  Settle();
  ASSERT_EQ(hardware_.size(), 8u);
  for (std::size_t i = 0; i < 8; ++i) {
    EXPECT_EQ(hardware_[i].atNs, start + static_cast<std::int64_t>(i + 1) * SerialWire::kByteNs) << i;
  }
  EXPECT_EQ(kNsPerSecond / SerialWire::kByteNs, 3490);
  const std::int64_t later = now_;
  wire_.FromProgram(Counting(1), later);
  Settle();
  EXPECT_EQ(hardware_.back().atNs, later + SerialWire::kByteNs) << "a line that rested begins at once";
}

TEST_F(WireTest, TheAdapterTakesNoMoreThanItHolds) {
  EXPECT_EQ(wire_.Room(), SerialWire::kAdapterRoom);
  wire_.FromProgram(Counting(SerialWire::kAdapterRoom), now_);
  EXPECT_EQ(wire_.Room(), 0u);
  PassUntil(now_ + 10 * SerialWire::kByteNs + kMs / 10);
  EXPECT_EQ(wire_.Room(), 10u);
  wire_.Reset();
  EXPECT_FALSE(wire_.Busy());
  EXPECT_EQ(wire_.Room(), SerialWire::kAdapterRoom);
}

// Answers of 25 bytes at any moment: they begin 1 to 5 ms later, keep their order, and come in the pieces in
// which the adapter's timer cuts them.
TEST_F(WireTest, AnswersComeInPieces) {
  for (const int latency : {16, 1}) {
    SCOPED_TRACE(latency);
    wire_.SetTraits({.latencyMs = latency, .seed = 7});
    int whole = 0, cut = 0;
    for (int i = 0; i < 200; ++i) {
      program_.clear();
      PassUntil(now_ + (i * 7) % 40 * kMs);
      const std::int64_t asked = now_;
      wire_.FromHardware(Counting(25), asked);
      Settle();
      ASSERT_EQ(Joined(program_), Counting(25));
      const std::int64_t travel = 25 * SerialWire::kByteNs;
      EXPECT_GE(program_.back().atNs, asked + 1 * kMs + travel);
      EXPECT_LE(program_.back().atNs, asked + 5 * kMs + travel + latency * kMs + kMs);
      for (std::size_t k = 1; k < program_.size(); ++k) {
        EXPECT_NEAR(static_cast<double>(program_[k].atNs - program_[k - 1].atNs), latency * 1e6, 2e5);
      }
      ++(program_.size() == 1 ? whole : cut);
    }
    if (latency == 16) {
      EXPECT_GT(whole, 60);
      EXPECT_GT(cut, 60) << "an answer takes 7 of the 16 ms";
    } else {
      EXPECT_EQ(whole, 0);
    }
  }
}

TEST_F(WireTest, AFullPacketDoesNotWaitForTheTimer) {
  wire_.FromHardware(Counting(100), now_);
  Settle();
  EXPECT_EQ(Joined(program_), Counting(100));
  std::size_t largest = 0;
  for (const Piece& piece : program_) largest = std::max(largest, piece.bytes.size());
  EXPECT_LE(largest, SerialWire::kAdapterPacket);
  EXPECT_LE(program_.size(), 4u);
}

TEST_F(WireTest, WithoutPaceAllIsInstantAndWhole) {
  wire_.SetTraits({.paced = false});
  wire_.FromProgram(Counting(300), now_);
  wire_.FromHardware(Counting(25), now_);
  EXPECT_EQ(hardware_, (std::vector<Piece>{{Counting(300), now_}}));
  EXPECT_EQ(program_, (std::vector<Piece>{{Counting(25), now_}}));
}

// A poll and its answer over the whole line: the instrument has the poll when its last byte is whole.
TEST(WireAndBus, ThePollTravelsThenTheAnswer) {
  std::int64_t now = 0;
  std::vector<std::pair<std::size_t, std::int64_t>> pieces;
  SerialWire* line = nullptr;
  std::int64_t heard = 0;
  GaugeBus bus([&](ByteView bytes) { line->FromHardware(bytes, heard); });
  bus.Add(MakeDevice({10, 4, 1, 12}));
  SerialWire wire(
      [&](ByteView bytes, std::int64_t atNs) {
        heard = atNs;
        bus.OnBytes(bytes, atNs / kMs);
      },
      [&](ByteView bytes) { pieces.emplace_back(bytes.size(), now); });
  line = &wire;
  wire.SetTraits({.latencyMs = 1, .leastAnswerUs = 3000, .mostAnswerUs = 3000});
  wire.FromProgram(test::Command(10, 7), 0);
  for (; now < 40 * kMs; now += kMs / 10) wire.Advance(now);
  ASSERT_FALSE(pieces.empty());
  const double poll = 6 * 0.286458, answer = 25 * 0.286458;
  EXPECT_NEAR(static_cast<double>(pieces.front().second) / 1e6, poll + 3 + 0.5, 1);
  EXPECT_NEAR(static_cast<double>(pieces.back().second) / 1e6, poll + 3 + answer + 0.5, 1);
  std::size_t sum = 0;
  for (const auto& piece : pieces) sum += piece.first;
  EXPECT_EQ(sum, kReplySize);
}

}  // namespace
}  // namespace tvx::vc
