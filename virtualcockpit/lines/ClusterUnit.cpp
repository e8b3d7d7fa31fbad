#include "virtualcockpit/lines/ClusterUnit.h"

#include <algorithm>

namespace tvx::vc {
namespace {

using drawn::ClusterState;

constexpr Byte kEnd = 0xAA;
constexpr int kStartAnew = 4;                                  // a one-shot bit
constexpr std::size_t kOneShotPlace = 39;                      // counted from 1
constexpr std::size_t kMajorVersion = 15, kMinorVersion = 16;  // places in the answer
constexpr std::size_t kAnswerSize = 16;
constexpr Byte kAnswerStart = 0xFF, kBlank = 0x20;
constexpr int kEngineNeedles = 8;  // that are put into words

}  // namespace

void ClusterUnit::OnBytes(ByteView bytes) {
  for (const Byte byte : bytes) {
    if (length_ == 0 && !ClusterState::Begins(byte)) continue;
    frame_[length_++] = byte;
    if (length_ < kFrame) continue;
    if (frame_.back() == kEnd) {
      length_ = 0;
      OnFrame();
      continue;
    }
    // Not a frame: the next byte that could begin one, and what stands behind it.
    const auto next = std::find_if(frame_.begin() + 1, frame_.end(), ClusterState::Begins);
    std::copy(next, frame_.end(), frame_.begin());
    length_ = static_cast<std::size_t>(frame_.end() - next);
  }
}

void ClusterUnit::OnFrame() {
  CountFrame();
  if ((frame_[kOneShotPlace - 1] & kStartAnew) != 0) ++resets_;
  const bool swept = Sweeping();
  state_.Take(frame_, Now());
  if (Sweeping() && !swept) ++sweeps_;
  Changed();
  std::vector<Byte> answer(kAnswerSize, kBlank);
  answer[0] = kAnswerStart;
  answer[kMajorVersion - 1] = '2';
  answer[kMinorVersion - 1] = '1';
  Answer(std::move(answer));
}

void ClusterUnit::OnTick(std::int64_t nowMs) {
  if (state_.Advance(nowMs)) Changed();
}

std::string ClusterUnit::Words() const {
  std::string words = Sweeping() ? "engine cluster sweeping" : "engine cluster";
  for (int i = 0; i < kEngineNeedles; ++i) words += " " + std::to_string(Needle(i));
  return words;
}

}  // namespace tvx::vc
