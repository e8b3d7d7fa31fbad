// The frame that gives a gauge a new address.
#pragma once

#include "hwbus/GaugeFrame.h"

namespace tvx {

using NewGaugeIDFrame = std::array<Byte, 7>;

// std::nullopt when an address is outside 0..255.
inline std::optional<NewGaugeIDFrame> BuildNewGaugeIDFrame(int gaugeID, int newGaugeID) {
  constexpr Byte kNewAddress = 0x2C, kConfirmation = 0xAA;
  for (const int address : {gaugeID, newGaugeID}) {
    if (address < 0 || address > kHighestGaugeID) return std::nullopt;
  }
  // ODDITY: seven bytes leave, the last a blank. The gauges were built against it and ignore it.
  return NewGaugeIDFrame{kFrameStart,
                         static_cast<Byte>(gaugeID),
                         kNewAddress,
                         static_cast<Byte>(newGaugeID),
                         kConfirmation,
                         kFrameEnd,
                         ' '};
}

}  // namespace tvx
