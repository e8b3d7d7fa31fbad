// The frames that gauges and IO modules have in common, as pure functions over bytes: the command of six
// bytes and the envelope of the 25-byte reply.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "base/Bytes.h"

namespace tvx {

// Commands with the same meaning on every instrument (docs/instruments.md has all of them).
inline constexpr int kCommandReportState = 7;
inline constexpr int kCommandLighting = 8;

inline constexpr Byte kFrameStart = 0x00;
inline constexpr Byte kFrameEnd = 0xFF;
inline constexpr int kHighestGaugeID = 255;

using GaugeFrame = std::array<Byte, 6>;

// A command frame. gaugeID 0..255; command is cut to its low four bits. std::nullopt when gaugeID is outside
// its range or |value| is above 65535.
std::optional<GaugeFrame> BuildGaugeFrame(int gaugeID, int command, std::int32_t value);

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
