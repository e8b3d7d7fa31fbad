// The 40 bytes that the engine cluster is sent, and its answer: pure functions over bytes.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "base/Bytes.h"

namespace tvx {

inline constexpr std::size_t kECFrameSize = 40;
inline constexpr std::size_t kECReplySize = 16;
inline constexpr int kECNeedles = 16;
inline constexpr int kECSingleNeedles = 15;  // those that MoveSingleNeedle moves
inline constexpr int kECChannels = 8;
using ECFrame = std::array<Byte, kECFrameSize>;

// What byte 38 and byte 39 are made of.
struct ECLighting {
  bool FlagA = false;  // the instrument lights are on
  bool FlagB = true;   // the bus is without power
  Byte Extra = 0;      // more bits of byte 38
  Byte OneShot = 0;    // byte 39; only bit 0 stays after it was sent
};
// Bits of the one-shot byte.
inline constexpr Byte kECBacklightAlwaysOn = 0x01;
inline constexpr Byte kECReset = 0x04;  // not in the 0xAA of a single needle's frame

// The byte, counted from 1, where a needle's value begins; needles 0..15.
std::size_t ECNeedlePosition(int needle);
// The needles that the eight channels move: each its own in the single engine version; in the dual engine
// version channels 0..3 the first engine's, 4..7 the second's.
int ECNeedleOfChannel(int channel, bool dual);

ECFrame EmptyECFrame();                                             // "F" and zeroes
void PutECNeedle(ECFrame& frame, int needle, std::uint16_t value);  // only needles 0..15
ECFrame RecalibrationECFrame();
void FinishECFrame(ECFrame& frame, const ECLighting& lighting);  // bytes 38..40
// The frame that moves one needle, 0..14; std::nullopt for another one.
std::optional<ECFrame> SingleNeedleFrame(int needle, std::uint16_t value, const ECLighting& lighting);

// The version in an answer: its bytes 15 and 16, as far as they came. std::nullopt where it is no answer:
// fewer than 8 bytes, or not begun with 0xFF.
struct ECVersionText {
  std::array<char, 2> chars{};
  std::size_t length = 0;
};
std::optional<ECVersionText> ReadECVersion(ByteView reply);

}  // namespace tvx
