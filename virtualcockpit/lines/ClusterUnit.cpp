#include "virtualcockpit/lines/ClusterUnit.h"

#include <algorithm>
#include <cstdlib>

namespace tvx::vc {
namespace {

// Where the needles' values begin, counted from 1.
constexpr std::array<std::size_t, ClusterUnit::kNeedles> kPlaces{2,  4,  6,  22, 8,  12, 14, 16,
                                                                 16, 18, 20, 10, 24, 26, 28, 30};
constexpr Byte kEnd = 0xAA;
constexpr std::size_t kAnswerSize = 16;

}  // namespace

int ClusterUnit::Needle(int index) const {
  if (!Sweeping()) return needles_[static_cast<std::size_t>(index)];
  // Up to the stop and down again.
  const auto passed = static_cast<int>(std::clamp<std::int64_t>(Now() - sweepStartMs_, 0, kSweepMs));
  const int half = static_cast<int>(kSweepMs) / 2;
  return kTop * (half - std::abs(passed - half)) / half;
}

void ClusterUnit::OnBytes(ByteView bytes) {
  for (const Byte byte : bytes) {
    if (length_ == 0 && byte != 'F' && byte != 'A') continue;
    frame_[length_++] = byte;
    if (length_ < kFrame) continue;
    if (frame_.back() == kEnd) {
      length_ = 0;
      OnFrame();
      continue;
    }
    // Not a frame: the next byte that could begin one, and what stands behind it.
    const auto next =
        std::find_if(frame_.begin() + 1, frame_.end(), [](Byte b) { return b == 'F' || b == 'A'; });
    std::copy(next, frame_.end(), frame_.begin());
    length_ = static_cast<std::size_t>(frame_.end() - next);
  }
}

void ClusterUnit::OnFrame() {
  CountFrame();
  lighting_ = frame_[37];
  oneShot_ = frame_[38];
  const bool single = oneShot_ == kEnd;  // a frame of one needle carries no one-shot byte
  if (!single && (oneShot_ & 2) != 0) ++resets_;
  if (single) oneShot_ = 0;
  if (frame_[0] == 'A') {
    if (!Sweeping()) ++sweeps_;
    sweepStartMs_ = Now();
  } else {
    for (std::size_t i = 0; i < needles_.size(); ++i) {
      const int value = frame_[kPlaces[i] - 1] * 256 + frame_[kPlaces[i]];
      needles_[i] = std::min(value, kTop);
    }
  }
  Changed();
  std::vector<Byte> answer(kAnswerSize, 0x20);
  answer[0] = 0xFF;
  answer[14] = '2';
  answer[15] = '1';
  Answer(std::move(answer));
}

void ClusterUnit::OnTick(std::int64_t nowMs) {
  if (!Sweeping()) return;
  Changed();
  if (nowMs - sweepStartMs_ >= kSweepMs) sweepStartMs_ = -1;
}

std::string ClusterUnit::Words() const {
  std::string words = Sweeping() ? "engine cluster sweeping" : "engine cluster";
  for (int i = 0; i < 8; ++i) words += " " + std::to_string(Needle(i));
  return words;
}

}  // namespace tvx::vc
