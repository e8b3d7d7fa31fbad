// What the engine cluster shows, from the frames that it is sent.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "base/Bytes.h"

namespace tvx::drawn {

class ClusterState {
 public:
  static constexpr int kNeedles = 16, kTop = 1079;
  static constexpr std::int64_t kSweepMs = 2000;
  static constexpr std::size_t kFrameSize = 40;
  using Frame = std::span<const Byte, kFrameSize>;

  // Whether a frame can begin with the byte.
  static bool Begins(Byte byte);
  // Takes a frame over: needles and lighting, or the order to sweep. One that begins otherwise counts as one
  // of needles.
  void Take(Frame frame, std::int64_t nowMs);
  // The order to sweep came then.
  void SweepFrom(std::int64_t startMs) { sweepStartMs_ = startMs; }
  // Time goes on. True where the needles sweep, or have just come to rest.
  bool Advance(std::int64_t nowMs);
  // Shows zero, in the dark.
  void StartAnew() { *this = {}; }

  // Where a needle stands, 0..1079; needles 7 and 8 are one.
  int Needle(int index) const;
  bool Sweeping() const { return sweepStartMs_ >= 0; }
  bool Lit() const { return (lighting_ & kLitBit) != 0 || (oneShot_ & kLitBit) != 0; }
  bool BusPowered() const { return (lighting_ & kPowerBit) != 0; }

 private:
  static constexpr int kLitBit = 1, kPowerBit = 2;

  std::array<int, kNeedles> needles_{};
  Byte lighting_ = 0, oneShot_ = 0;
  std::int64_t nowMs_ = 0, sweepStartMs_ = -1;
};

}  // namespace tvx::drawn
