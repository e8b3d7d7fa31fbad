#include "tests/Test.h"
#include "tests/virtualcockpit/Bytes.h"
#include "virtualcockpit/pace/SerialWire.h"

namespace tvx::vc {
namespace {

constexpr std::int64_t kMs = kNsPerMs;

// A line whose two ends keep what arrives, and when. Time passes in steps of a tenth of a millisecond.
struct WireTest : testing::Test {
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
  for (std::size_t i = 0; i < 8; ++i)
    EXPECT_EQ(hardware_[i].atNs, start + static_cast<std::int64_t>(i + 1) * SerialWire::kByteNs) << i;
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
      for (std::size_t k = 1; k < program_.size(); ++k)
        EXPECT_NEAR(static_cast<double>(program_[k].atNs - program_[k - 1].atNs), latency * 1e6, 2e5);
      ++(program_.size() == 1 ? whole : cut);
    }
    EXPECT_TRUE(latency == 16 ? whole > 60 && cut > 60 : whole == 0)
        << whole << " whole, " << cut << " cut; an answer takes 7 ms";
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

}  // namespace
}  // namespace tvx::vc
