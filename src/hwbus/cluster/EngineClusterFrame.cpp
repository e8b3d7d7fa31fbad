#include "hwbus/cluster/EngineClusterFrame.h"

#include <algorithm>

namespace tvx {
namespace {

// ODDITY: needles 7 and 8 share position 16; the later one written wins. The clusters were built with this
// table.
constexpr std::array<std::size_t, kECNeedles> kPositions{2,  4,  6,  22, 8,  12, 14, 16,
                                                         16, 18, 20, 10, 24, 26, 28, 30};
constexpr std::array<int, kECChannels> kSingleEngine{0, 1, 2, 3, 4, 5, 6, 7};
constexpr std::array<int, kECChannels> kDualEngine{0, 1, 2, 3, 8, 9, 10, 11};

constexpr Byte kNormal = 'F';
constexpr Byte kRecalibrate = 'A';
constexpr Byte kRecalibrateRest = 0x10;
constexpr Byte kEnd = 0xAA;
constexpr std::size_t kLightingByte = 38, kOneShotByte = 39, kEndByte = 40;  // counted from 1
constexpr std::size_t kShortestReply = 8;
constexpr std::size_t kVersionAt = 14;
constexpr Byte kReplyStart = 0xFF;

Byte LightingByte(const ECLighting& lighting) {
  return static_cast<Byte>((lighting.FlagA ? 1 : 0) | (lighting.FlagB ? 0 : 2) | lighting.Extra);
}

}  // namespace

std::size_t ECNeedlePosition(int needle) {
  return kPositions[static_cast<std::size_t>(needle)];
}

int ECNeedleOfChannel(int channel, bool dual) {
  return (dual ? kDualEngine : kSingleEngine)[static_cast<std::size_t>(channel)];
}

ECFrame EmptyECFrame() {
  ECFrame frame{};
  frame[0] = kNormal;
  return frame;
}

void PutECNeedle(ECFrame& frame, int needle, std::uint16_t value) {
  if (needle < 0 || needle >= kECNeedles) return;
  const std::size_t at = ECNeedlePosition(needle) - 1;
  frame[at] = static_cast<Byte>(value >> 8);
  frame[at + 1] = static_cast<Byte>(value & 0xFF);
}

ECFrame RecalibrationECFrame() {
  ECFrame frame;
  frame.fill(kRecalibrateRest);
  frame[0] = kRecalibrate;
  return frame;
}

void FinishECFrame(ECFrame& frame, const ECLighting& lighting) {
  frame[kLightingByte - 1] = LightingByte(lighting);
  frame[kOneShotByte - 1] = lighting.OneShot;
  frame[kEndByte - 1] = kEnd;
}

std::optional<ECFrame> SingleNeedleFrame(int needle, std::uint16_t value, const ECLighting& lighting) {
  if (needle < 0 || needle >= kECSingleNeedles) return std::nullopt;
  ECFrame frame = EmptyECFrame();
  PutECNeedle(frame, needle, value);
  frame[kLightingByte - 1] = LightingByte(lighting);
  frame[kOneShotByte - 1] = kEnd;
  frame[kEndByte - 1] = kEnd;
  return frame;
}

std::optional<ECVersionText> ReadECVersion(ByteView reply) {
  if (reply.size() < kShortestReply || reply[0] != kReplyStart) return std::nullopt;
  ECVersionText version;
  for (std::size_t i = kVersionAt; i < std::min(reply.size(), kECReplySize); ++i) {
    const Byte c = reply[i];
    version.chars[version.length++] = c >= 0x20 && c < 0x7F ? static_cast<char>(c) : '?';
  }
  return version;
}

}  // namespace tvx
