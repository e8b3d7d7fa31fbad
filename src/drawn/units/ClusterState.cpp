#include "drawn/units/ClusterState.h"

#include <algorithm>
#include <cstdlib>

namespace tvx::drawn {
namespace {

// Where the needles' values begin, counted from 1.
constexpr std::array<std::size_t, ClusterState::kNeedles> kPlaces{2,  4,  6,  22, 8,  12, 14, 16,
                                                                  16, 18, 20, 10, 24, 26, 28, 30};
constexpr Byte kNeedlesFrame = 'F', kRecalibrationFrame = 'A';
constexpr std::size_t kLighting = 38, kOneShot = 39;  // counted from 1

}  // namespace

bool ClusterState::Begins(Byte byte) {
  return byte == kNeedlesFrame || byte == kRecalibrationFrame;
}

void ClusterState::Take(Frame frame, std::int64_t nowMs) {
  nowMs_ = nowMs;
  lighting_ = frame[kLighting - 1];
  oneShot_ = frame[kOneShot - 1];
  if (frame[0] == kRecalibrationFrame) return SweepFrom(nowMs);
  for (std::size_t i = 0; i < needles_.size(); ++i) {
    const int value = frame[kPlaces[i] - 1] * 256 + frame[kPlaces[i]];
    needles_[i] = std::min(value, kTop);
  }
}

bool ClusterState::Advance(std::int64_t nowMs) {
  nowMs_ = nowMs;
  if (!Sweeping()) return false;
  if (nowMs - sweepStartMs_ >= kSweepMs) sweepStartMs_ = -1;
  return true;
}

int ClusterState::Needle(int index) const {
  if (!Sweeping()) return needles_[static_cast<std::size_t>(index)];
  // Up to the stop and down again.
  const auto passed = static_cast<int>(std::clamp<std::int64_t>(nowMs_ - sweepStartMs_, 0, kSweepMs));
  const int half = static_cast<int>(kSweepMs) / 2;
  return kTop * (half - std::abs(passed - half)) / half;
}

}  // namespace tvx::drawn
