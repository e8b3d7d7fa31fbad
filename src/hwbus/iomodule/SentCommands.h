// What an IO module was told: the value with which each command left last.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "hwbus/GaugeFrame.h"

namespace tvx {

class SentCommands {
 public:
  // Frames of BuildGaugeFrame that have left, one behind the other.
  void Note(ByteView frames) {
    for (; frames.size() >= sizeof(GaugeFrame); frames = frames.subspan(sizeof(GaugeFrame))) {
      const unsigned head = frames[2];
      // Bits that are always sent as 1 stand in the command byte.
      const unsigned low = (frames[3] & ~kLowBit) | (head & kLowBit);
      const unsigned high = (frames[4] & ~kHighBit) | (head & kHighBit);
      const auto size = static_cast<std::int32_t>(high << 8 | low);
      values_[head >> 4] = (head & kNegative) != 0 ? -size : size;
    }
  }
  // `command`: 0..15. std::nullopt where it never left.
  std::optional<std::int32_t> Of(int command) const { return values_[static_cast<std::size_t>(command)]; }
  bool Any() const {
    for (const auto& value : values_) {
      if (value) return true;
    }
    return false;
  }

 private:
  static constexpr unsigned kNegative = 4, kLowBit = 1, kHighBit = 2;
  std::array<std::optional<std::int32_t>, 16> values_{};
};

}  // namespace tvx
