// The simulator ports: small numbers that bind a Function and a sequence number to value slots.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/Bytes.h"

namespace tvx {

// A port number, 0-based in order of opening.
using Port = std::uint16_t;
inline constexpr Port kNoPort = 65535;

// Who opens ports (`CurrentOpener`): a GaugeID 0..255, or one of these.
namespace opener {
inline constexpr std::int16_t kIOModule1 = 1000;
inline constexpr std::int16_t kIOModule2 = 2000;
inline constexpr std::int16_t kInternal = 3000;
inline constexpr std::int16_t kEngineCluster = 4000;
inline constexpr std::int16_t kYokes = 5000;
// "IOM#1", "IOM#2", "INTRN", "ENGCl", "YOKES" or "ID:" and the GaugeID in three digits.
std::string Text(std::int16_t code);
}  // namespace opener

struct PortRow {
  std::int16_t FunctionNr = 0;
  Byte SeqNr = 0;        // 1..4; 0 counts as 1
  Byte ReadEnabled = 0;  // 1: refreshed by the receive path, read by GetPort
  Byte Blocked = 0;      // non-zero stops reading; reserved for a caller that wants to hold a value
  Byte ByteValue = 0;
  std::int16_t IntValue = 0;
  std::int16_t UIntValue = 0;  // spare
  std::int32_t LongValue = 0;
  float FloatValue = 0;
  std::int16_t OpenedBy = 0;
  Byte Answered = 0;  // 1: the simulator has sent the port's dataref
};

// A recorded RREF subscription.
struct RrefRow {
  std::int32_t Frequency = 0;   // times per second
  std::int32_t Identifier = 0;  // the port number
  std::string Dataref;
  std::int32_t Word = 0;  // always 0
};

}  // namespace tvx
