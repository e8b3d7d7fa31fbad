// Frames that are to leave on a line together, in one piece of memory that never grows.
#pragma once

#include <cstddef>
#include <vector>

#include "base/Bytes.h"

namespace tvx {

class FrameBuffer {
 public:
  static constexpr std::size_t kRoom = 32768;  // bytes

  FrameBuffer() { bytes_.reserve(kRoom); }

  void Clear() { bytes_.clear(); }
  // Adds a frame at the end. False, and as it was, where there is no room for all of it.
  bool Append(ByteView frame) {
    if (bytes_.size() + frame.size() > kRoom) return false;
    bytes_.insert(bytes_.end(), frame.begin(), frame.end());
    return true;
  }
  // Holds this one frame from now on.
  void Hold(ByteView frame) {
    Clear();
    Append(frame);
  }
  bool Empty() const { return bytes_.empty(); }
  ByteView Bytes() const { return bytes_; }

 private:
  std::vector<Byte> bytes_;
};

}  // namespace tvx
