#include "virtualcockpit/lines/ClusterUnit.h"

#include <algorithm>
#include <cstdlib>

namespace tvx::vc {
namespace {

// Where the needles' values begin, counted from 1.
constexpr std::array<std::size_t, ClusterUnit::kNeedles> kPlaces{2,  4,  6,  22, 8,  12, 14, 16,
                                                                 16, 18, 20, 10, 24, 26, 28, 30};
constexpr Byte kNeedlesFrame = 'F', kRecalibrationFrame = 'A', kEnd = 0xAA;
constexpr int kStartAnew = 4;  // a one-shot bit
namespace place {
constexpr std::size_t kLighting = 38, kOneShot = 39;
constexpr std::size_t kMajorVersion = 15, kMinorVersion = 16;  // of the answer
}  // namespace place
constexpr std::size_t kAnswerSize = 16;
constexpr Byte kAnswerStart = 0xFF, kBlank = 0x20;
constexpr int kEngineNeedles = 8;  // that are put into words

bool BeginsFrame(Byte byte) {
  return byte == kNeedlesFrame || byte == kRecalibrationFrame;
}

}  // namespace

void ClusterUnit::StartAnew() {
  needles_.fill(0);
  lighting_ = oneShot_ = 0;
  sweepStartMs_ = -1;
}

int ClusterUnit::Needle(int index) const {
  if (!Sweeping()) return needles_[static_cast<std::size_t>(index)];
  // Up to the stop and down again.
  const auto passed = static_cast<int>(std::clamp<std::int64_t>(Now() - sweepStartMs_, 0, kSweepMs));
  const int half = static_cast<int>(kSweepMs) / 2;
  return kTop * (half - std::abs(passed - half)) / half;
}

void ClusterUnit::OnBytes(ByteView bytes) {
  for (const Byte byte : bytes) {
    if (length_ == 0 && !BeginsFrame(byte)) continue;
    frame_[length_++] = byte;
    if (length_ < kFrame) continue;
    if (frame_.back() == kEnd) {
      length_ = 0;
      OnFrame();
      continue;
    }
    // Not a frame: the next byte that could begin one, and what stands behind it.
    const auto next = std::find_if(frame_.begin() + 1, frame_.end(), BeginsFrame);
    std::copy(next, frame_.end(), frame_.begin());
    length_ = static_cast<std::size_t>(frame_.end() - next);
  }
}

void ClusterUnit::OnFrame() {
  CountFrame();
  lighting_ = frame_[place::kLighting - 1];
  oneShot_ = frame_[place::kOneShot - 1];
  if ((oneShot_ & kStartAnew) != 0) ++resets_;
  if (frame_[0] == kRecalibrationFrame) {
    if (!Sweeping()) ++sweeps_;
    sweepStartMs_ = Now();
  } else {
    for (std::size_t i = 0; i < needles_.size(); ++i) {
      const int value = frame_[kPlaces[i] - 1] * 256 + frame_[kPlaces[i]];
      needles_[i] = std::min(value, kTop);
    }
  }
  Changed();
  std::vector<Byte> answer(kAnswerSize, kBlank);
  answer[0] = kAnswerStart;
  answer[place::kMajorVersion - 1] = '2';
  answer[place::kMinorVersion - 1] = '1';
  Answer(std::move(answer));
}

void ClusterUnit::OnTick(std::int64_t nowMs) {
  if (!Sweeping()) return;
  Changed();
  if (nowMs - sweepStartMs_ >= kSweepMs) sweepStartMs_ = -1;
}

std::string ClusterUnit::Words() const {
  std::string words = Sweeping() ? "engine cluster sweeping" : "engine cluster";
  for (int i = 0; i < kEngineNeedles; ++i) words += " " + std::to_string(Needle(i));
  return words;
}

}  // namespace tvx::vc
