#include "hwbus/GaugeFrame.h"

namespace tvx {

namespace {

constexpr Byte kStart = 0x00;
constexpr Byte kEnd = 0xFF;
constexpr std::int64_t kLargestMagnitude = 65535;

bool IsAddress(int gaugeID) {
  return gaugeID >= 0 && gaugeID <= 255;
}

}  // namespace

std::optional<GaugeFrame> BuildGaugeFrame(int gaugeID, int command, std::int32_t value) {
  const std::int64_t wide = value;  // so that the most negative value has a magnitude
  const std::int64_t magnitude = wide < 0 ? -wide : wide;
  if (!IsAddress(gaugeID) || magnitude > kLargestMagnitude) return std::nullopt;

  const auto low = static_cast<unsigned>(magnitude & 0xFF);
  const auto high = static_cast<unsigned>(magnitude >> 8);
  // Bit 0 of the low byte and bit 1 of the high byte travel in the command byte; where they stood, a 1 is
  // sent. So no byte after the address can be 0x00, the start byte.
  unsigned commandByte = (static_cast<unsigned>(command) << 4) | 0x08u;
  if (value < 0) commandByte |= 0x04u;
  commandByte |= (high & 0x02u) | (low & 0x01u);
  return GaugeFrame{kStart,
                    static_cast<Byte>(gaugeID),
                    static_cast<Byte>(commandByte & 0xFFu),
                    static_cast<Byte>(low | 0x01u),
                    static_cast<Byte>(high | 0x02u),
                    kEnd};
}

std::optional<NewGaugeIDFrame> BuildNewGaugeIDFrame(int gaugeID, int newGaugeID) {
  if (!IsAddress(gaugeID) || !IsAddress(newGaugeID)) return std::nullopt;
  // ODDITY: seven bytes leave, the last a blank. The gauges were built against it and ignore it.
  return NewGaugeIDFrame{kStart, static_cast<Byte>(gaugeID), 0x2C, static_cast<Byte>(newGaugeID), 0xAA, kEnd,
                         ' '};
}

bool IsReplyEnvelope(ByteView bytes) {
  return bytes.size() == kReplySize && bytes.front() == kStart && bytes.back() == kEnd;
}

}  // namespace tvx
