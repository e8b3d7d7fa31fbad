#include "ffb/YokeFrame.h"

#include <algorithm>
#include <cmath>

#include "base/Rounding.h"

namespace tvx {
namespace {

constexpr int kMiddle = 8192;
constexpr Byte kMark = 0x80;  // set in every byte but the first, so that none of them looks like a start
constexpr Byte kFrameEnd = 0xFF;

// Places in a command frame, counted from 0.
enum : std::size_t { kAddress = 1, kCommand = 2, kParameters = 3, kEnd = 11 };
// Places in a reply; a word is two bytes, the high one first.
enum : std::size_t {
  kSender = 1,
  kStatus = 3,
  kRoll = 6,
  kFirstLetter = 8,
  kPitch = 9,
  kSecondLetter = 11,
  kButtons = 12,
  kRollLoad = 15,
  kPitchLoad = 17,
};

int Within(double value, int lowest, int highest, int otherwise) {
  if (std::isnan(value)) return otherwise;
  return static_cast<int>(
      RoundHalfEven(std::clamp(value, static_cast<double>(lowest), static_cast<double>(highest))));
}

int Word(ByteView bytes, std::size_t at) {
  return bytes[at] * 256 + bytes[at + 1];
}

}  // namespace

std::array<Byte, kYokeFrameSize> YokeFrame(Byte address, Byte command, int p1, int p2, int p3, int p4) {
  std::array<Byte, kYokeFrameSize> frame{};
  frame[kAddress] = address;
  frame[kCommand] = command | kMark;
  std::size_t at = kParameters;
  for (int parameter : {p1, p2, p3, p4}) {
    // ODDITY: a negative parameter becomes the largest, not 0. The yokes' firmware takes 16383 for "no such
    // value", whichever side it left the range on.
    if (parameter < 0 || parameter > kYokeParameterLimit) parameter = kYokeParameterLimit;
    frame[at++] = static_cast<Byte>((parameter & 0x7F) | kMark);
    frame[at++] = static_cast<Byte>(((parameter & 0x3F80) / 128) | kMark);
  }
  frame[kEnd] = kFrameEnd;
  return frame;
}

int PositionParameter(double raw) {
  return Within(raw / 4, 0, kYokeParameterLimit, kMiddle);
}

int GradientParameter(double forcePerHalfRange) {
  return Within(forcePerHalfRange * 2048, 0, kYokeParameterLimit, 0);
}

int FractionParameter(double share) {
  return Within(share * kYokeParameterLimit, 0, kYokeParameterLimit, 0);
}

int SignedParameter(double share) {
  return Within(kMiddle + share * (kMiddle - 1), 1, kYokeParameterLimit, kMiddle);
}

int FrequencyParameter(double hertz) {
  return Within(hertz * 10, 0, kYokeParameterLimit, 0);
}

int TimeParameter(double milliseconds) {
  return Within(milliseconds, 0, kYokeParameterLimit, 0);
}

int SpeedParameter(double rawPerSecond) {
  return Within(rawPerSecond / 16, 0, kYokeParameterLimit, 0);
}

YokeReplyKind ReadYokeReply(ByteView bytes, Byte address, YokeReply& reply) {
  if (bytes.size() != kYokeReplySize) return YokeReplyKind::Incomplete;
  if (bytes[kFirstLetter] != 'P' || bytes[kSecondLetter] != 'S') return YokeReplyKind::Garbled;
  if (address != 0 && bytes[kSender] != address) return YokeReplyKind::Wrong;
  reply.address = bytes[kSender];
  reply.status = bytes[kStatus];
  reply.rawRoll = Word(bytes, kRoll);
  reply.rawPitch = Word(bytes, kPitch);
  reply.buttons = static_cast<std::uint16_t>(Word(bytes, kButtons));
  reply.rollLoad = Word(bytes, kRollLoad);
  reply.pitchLoad = Word(bytes, kPitchLoad);
  return YokeReplyKind::Correct;
}

std::int16_t AxisPosition(int raw, const AxisCalibration& calibration) {
  const double scale = std::isnan(calibration.scale) ? 0 : calibration.scale;
  const double distance = raw - calibration.centre;
  if (distance == 0) return 0;
  const double position =
      RoundHalfEven(std::clamp(std::abs(distance) * scale, -1.0 * kYokeTravel - 1, 1.0 * kYokeTravel + 1));
  return static_cast<std::int16_t>(
      std::clamp(distance < 0 ? -position : position, -1.0 * kYokeTravel, 1.0 * kYokeTravel));
}

}  // namespace tvx
