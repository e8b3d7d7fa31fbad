// Numbers in the 25-byte replies, and what instruments make of them. Bytes count from 1, as the replies are
// described.
#pragma once

#include <array>
#include <cmath>

#include "base/Rounding.h"
#include "hwbus/GaugeFrame.h"

namespace tvx {

inline int ReplyByte(ReplyView reply, std::size_t number) {
  return reply[number - 1];
}
// Bytes `number` and `number` + 1, the high one first: 0..65535.
inline int ReplyWord(ReplyView reply, std::size_t number) {
  return ReplyByte(reply, number) * 256 + ReplyByte(reply, number + 1);
}
// True when the reply's bytes 6 and 9 carry the two letters of its type.
inline bool HasLetters(ReplyView reply, char first, char second) {
  return reply[5] == first && reply[8] == second;
}

// The five decimal digits of 0..65535, leading zeros included.
inline std::array<char, 5> FiveDigits(int raw) {
  std::array<char, 5> digits{};
  for (std::size_t i = 5; i-- > 0; raw /= 10) digits[i] = static_cast<char>('0' + raw % 10);
  return digits;
}

// A radio's raw value (kHz above 100 MHz, 18500 is 118.500 MHz) in 10 kHz (11850), as the simulator takes it.
inline double FrequencyOf(int raw) {
  const int whole = raw % 100000 / 10;  // the last digit is dropped
  return 10000.0 + whole;
}
// And back: the raw value that a radio shows for a simulator's frequency.
inline double RawFrequencyOf(double frequency) {
  return (RoundHalfEven(frequency) - 10000.0) * 10.0;
}

// A transponder code from its two bytes, each two octal digits: 0x12 0x34 is 1234.
inline double SquawkOf(int high, int low) {
  return (high >> 4 & 7) * 1000 + (high & 7) * 100 + (low >> 4 & 7) * 10 + (low & 7);
}

inline constexpr double kFullTurn = 360.0;        // degrees
inline constexpr double kKnobSteps = 1084.0;      // of a course knob, to a turn
inline constexpr double kCountsPerTurn = 4320.0;  // of a position that is reported, and of a dial

// A course knob, which counts down: whole degrees 0..359.
inline double KnobAngle(int raw) {
  const double angle = RoundHalfEven((kKnobSteps - raw) / kKnobSteps * kFullTurn);
  return angle >= 359.9 ? 0.0 : angle;
}

// A reported position in degrees; angles above `limit` count from the other side.
inline double CountAngle(int raw, double limit) {
  const double angle = raw / kCountsPerTurn * kFullTurn;
  return angle > limit ? -(kFullTurn - angle) : angle;
}

// The step 0..4319 of a dial's needle or disc, for any angle in degrees.
inline double DialStepsOf(double degrees) {
  const double turn = std::fmod(degrees, kFullTurn);
  const double steps = RoundHalfEven((turn < 0 ? turn + kFullTurn : turn) / kFullTurn * kCountsPerTurn);
  return steps >= kCountsPerTurn ? 0.0 : steps;
}

}  // namespace tvx
