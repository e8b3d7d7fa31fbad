// The frames of the gauge bus, as pure functions over bytes.
#pragma once

#include <array>
#include <optional>

#include "base/Bytes.h"

namespace tvx {

// Commands with the same meaning on every instrument (docs/instruments.md has all of them).
inline constexpr int kCommandReportState = 7;
inline constexpr int kCommandLighting = 8;

using GaugeFrame = std::array<Byte, 6>;
using NewGaugeIDFrame = std::array<Byte, 7>;

// A command frame. gaugeID 0..255; command is cut to its low four bits; nothing when |value| is above 65535.
std::optional<GaugeFrame> BuildGaugeFrame(int gaugeID, int command, std::int32_t value);

// The frame that gives a gauge a new address, its seventh byte a blank. Nothing when an address is outside
// 0..255.
std::optional<NewGaugeIDFrame> BuildNewGaugeIDFrame(int gaugeID, int newGaugeID);

// A reply's envelope.
inline constexpr std::size_t kReplySize = 25;
using ReplyView = std::span<const Byte, kReplySize>;
// True for 25 bytes that begin with 0x00 and end with 0xFF.
bool IsReplyEnvelope(ByteView bytes);
inline int ReplyGaugeID(ReplyView reply) {
  return reply[1];
}
inline int ReplyGaugetype(ReplyView reply) {
  return reply[2];
}
inline int ReplyModel(ReplyView reply) {
  return reply[3];
}
inline int ReplyVersion(ReplyView reply) {
  return reply[4];
}

}  // namespace tvx
