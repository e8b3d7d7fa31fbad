// Places in an answer, counted from 1 as on the wire.
#pragma once

#include <array>

#include "base/Bytes.h"

namespace tvx::drawn {

inline constexpr std::size_t kReplySize = 25;
using Reply = std::array<Byte, kReplySize>;

inline void PutByte(Reply& reply, std::size_t byte, int value) {
  reply[byte - 1] = static_cast<Byte>(value & 0xFF);
}
// An answer that carries its sender's name plate and no values.
inline Reply EmptyReply(Byte gaugeID, Byte type, Byte model, Byte version) {
  Reply reply{};
  PutByte(reply, 2, gaugeID);
  PutByte(reply, 3, type);
  PutByte(reply, 4, model);
  PutByte(reply, 5, version);
  reply.back() = 0xFF;
  return reply;
}
inline int ByteAt(const Reply& reply, std::size_t byte) {
  return reply[byte - 1];
}
inline int WordAt(const Reply& reply, std::size_t byte) {
  return ByteAt(reply, byte) * 256 + ByteAt(reply, byte + 1);
}
// Two bytes, the high one first; a negative number as its two's complement.
inline void PutWord(Reply& reply, std::size_t byte, int value) {
  PutByte(reply, byte, value >> 8);
  PutByte(reply, byte + 1, value);
}
// The two letters that confirm the type.
inline void PutLetters(Reply& reply, char first, char second) {
  PutByte(reply, 6, first);
  PutByte(reply, 9, second);
}

// Discs, cards and pointers that turn all the way.
inline constexpr int kTurnSteps = 4320;
inline constexpr int kParked = 5000;  // a pointer whose source is not received
// A number of steps on the circle 0..`turn` - 1.
inline int OnCircle(int steps, int turn = kTurnSteps) {
  return (steps % turn + turn) % turn;
}

// A course knob: 1084 steps to a turn, counting down.
inline constexpr int kKnobSteps = 1084;
inline int KnobRaw(int degrees) {
  return kKnobSteps - (OnCircle(degrees, 360) * kKnobSteps + 180) / 360;
}
inline int DegreesOfKnob(int raw) {
  return OnCircle(((kKnobSteps - raw) * 360 + kKnobSteps / 2) / kKnobSteps, 360);
}

}  // namespace tvx::drawn
