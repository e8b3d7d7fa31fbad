// The yokes' frames on their serial lines, as pure functions over bytes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/Bytes.h"
#include "ffb/forces/Forces.h"

namespace tvx {

inline constexpr std::size_t kYokeFrameSize = 12;
inline constexpr std::size_t kYokeReplySize = 25;
inline constexpr int kYokeParameterLimit = 16383;  // 14 bits

// What a yoke is told; the parameters of each are tabled in docs/force-feedback.md.
enum class YokeCommand : Byte {
  Spring = 1,     // centre of roll, of pitch; gradient of roll, of pitch
  Bias = 2,       // force on roll, on pitch; limit of all forces; hold time
  Feel = 3,       // friction; damping
  Vibration = 4,  // frequency and amplitude of roll, of pitch
  Servo = 5,      // position of roll, of pitch; speed; force
  Release = 6,    // time to fade to slack
  Report = 7,     // send a reply
};

// One command frame. A parameter outside 0..16383 is sent as 16383, negative ones too.
std::array<Byte, kYokeFrameSize> YokeFrame(Byte address, Byte command, int p1, int p2, int p3, int p4);

// Parameters from physical values. What is out of range is brought to the nearest end; what is no number
// becomes the middle (positions, signed forces) or 0. On the line a yoke does not know its centre and limits,
// so positions are raw values.
int PositionParameter(double raw);                // 0..65535, in steps of 4
int GradientParameter(double forcePerHalfRange);  // 0..8 times the whole force per 32768 raw steps
int FractionParameter(double share);              // 0..1 -> 0..16383
int SignedParameter(double share);                // -1..1 -> 1..16383, 0 is 8192; positive: raw values rise
int FrequencyParameter(double hertz);             // in tenths of a hertz
int TimeParameter(double milliseconds);
int SpeedParameter(double rawPerSecond);  // in steps of 16

// Bits of a reply's status byte.
namespace yokestatus {
inline constexpr Byte kPower = 0x01;       // the motors have power
inline constexpr Byte kHot = 0x02;         // the motors are hot, the yoke gives less force
inline constexpr Byte kStopButton = 0x04;  // the yoke's red button is pressed: it gives no force
inline constexpr Byte kFading = 0x08;      // no command for the hold time: it fades by itself
}  // namespace yokestatus

// What a reply of 25 bytes says.
struct YokeReply {
  Byte address = 0;           // byte 2
  Byte status = 0;            // byte 4
  int rawRoll = 0;            // bytes 7, 8: 0..65535
  int rawPitch = 0;           // bytes 10, 11
  std::uint16_t buttons = 0;  // bytes 13, 14: bit n is button n + 1
  int rollLoad = 0;           // bytes 16, 17: the roll motor's force, tenths of a percent
  int pitchLoad = 0;          // bytes 18, 19
};
enum class YokeReplyKind {
  Correct,
  Incomplete,  // not 25 bytes
  Garbled,     // the letters of bytes 9 and 12 are not there
  Wrong,       // another yoke's
};
// `address` 0 accepts any sender. `reply` is filled only when the reply is correct.
YokeReplyKind ReadYokeReply(ByteView bytes, Byte address, YokeReply& reply);

// One axis: the raw value of its centre, and positions (-511..511) per raw step.
struct AxisCalibration {
  int centre = 32768;
  float scale = 0;
  bool operator==(const AxisCalibration&) const = default;
  // The raw value of a position; the centre where the scale is 0.
  double RawAt(double position) const { return scale == 0 ? centre : centre + position / scale; }
};
// round((raw - centre) * scale), halves to even, kept within -511..511. A scale that is no number gives 0.
std::int16_t AxisPosition(int raw, const AxisCalibration& calibration);

}  // namespace tvx
