// A queue of bytes in a room of fixed size.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>

#include "base/Bytes.h"

namespace tvx {

// Allocates once, when it is made. A byte that finds the room full takes the place of the oldest.
template <std::size_t Room>
class ByteRing {
  static_assert((Room & (Room - 1)) == 0, "a power of two");

 public:
  std::size_t Size() const { return size_; }
  void Clear() { size_ = 0; }

  void Push(Byte byte) {
    bytes_[(start_ + size_) % Room] = byte;
    if (size_ < Room) {
      ++size_;
    } else {
      start_ = (start_ + 1) % Room;
    }
  }

  // Moves the oldest bytes to `out`; returns how many.
  std::size_t Pop(std::span<Byte> out) {
    const std::size_t count = std::min(out.size(), size_);
    for (std::size_t i = 0; i < count; ++i) out[i] = bytes_[(start_ + i) % Room];
    start_ = (start_ + count) % Room;
    size_ -= count;
    return count;
  }

 private:
  std::unique_ptr<Byte[]> bytes_ = std::make_unique<Byte[]>(Room);
  std::size_t start_ = 0;
  std::size_t size_ = 0;
};

}  // namespace tvx
