// Frames that wait for their turn on a line, in order.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/Bytes.h"

namespace tvx {

// Has room for a fixed number of frames, and never allocates.
class FrameQueue {
 public:
  static constexpr std::size_t kRoom = 64;         // frames
  static constexpr std::size_t kLongestFrame = 7;  // bytes

  bool Empty() const { return count_ == 0; }
  std::size_t Size() const { return count_; }
  // False, and the queue as it was, where it is full or the frame is too long.
  bool Push(ByteView frame) {
    if (count_ == kRoom || frame.size() > kLongestFrame) return false;
    Slot& slot = slots_[(first_ + count_++) % kRoom];
    std::ranges::copy(frame, slot.bytes.begin());
    slot.size = frame.size();
    return true;
  }
  // The frame whose turn it is; empty where none waits.
  ByteView Front() const { return ByteView(slots_[first_].bytes).first(Empty() ? 0 : slots_[first_].size); }
  // Takes that frame away.
  void Pop() {
    if (Empty()) return;
    first_ = (first_ + 1) % kRoom;
    --count_;
  }

 private:
  struct Slot {
    std::array<Byte, kLongestFrame> bytes{};
    std::size_t size = 0;
  };
  std::array<Slot, kRoom> slots_{};
  std::size_t first_ = 0, count_ = 0;
};

}  // namespace tvx
