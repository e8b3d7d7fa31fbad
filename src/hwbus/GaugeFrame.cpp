#include "hwbus/GaugeFrame.h"

namespace tvx {

namespace {

constexpr std::int64_t kLargestMagnitude = 65535;

}  // namespace

std::optional<GaugeFrame> BuildGaugeFrame(int gaugeID, int command, std::int32_t value) {
  const std::int64_t wide = value;  // so that the most negative value has a magnitude
  const std::int64_t magnitude = wide < 0 ? -wide : wide;
  if (gaugeID < 0 || gaugeID > kHighestGaugeID || magnitude > kLargestMagnitude) return std::nullopt;

  const auto low = static_cast<unsigned>(magnitude & 0xFF);
  const auto high = static_cast<unsigned>(magnitude >> 8);
  // Bit 0 of the low byte and bit 1 of the high byte travel in the command byte; where they stood, a 1 is
  // sent. So no byte after the address can be 0x00, the start byte.
  unsigned commandByte = (static_cast<unsigned>(command) << 4) | 0x08u;
  if (value < 0) commandByte |= 0x04u;
  commandByte |= (high & 0x02u) | (low & 0x01u);
  return GaugeFrame{kFrameStart,
                    static_cast<Byte>(gaugeID),
                    static_cast<Byte>(commandByte & 0xFFu),
                    static_cast<Byte>(low | 0x01u),
                    static_cast<Byte>(high | 0x02u),
                    kFrameEnd};
}

bool IsReplyEnvelope(ByteView bytes) {
  return bytes.size() == kReplySize && bytes.front() == kFrameStart && bytes.back() == kFrameEnd;
}

}  // namespace tvx
