// One simulator port: a small number that binds a Function and a sequence number to a value.
#pragma once

#include <cstdint>

#include "base/Bytes.h"

namespace tvx {

// Ports are numbered 0, 1, 2 ... in the order of opening.
using Port = std::uint16_t;
inline constexpr Port kNoPort = 65535;
inline constexpr int kMaxPorts = 32767;

struct PortRow {
  std::int16_t FunctionNr = 0;
  std::int16_t OpenedBy = 0;  // Opener.h
  Byte SeqNr = 0;             // 1..4; 0 counts as 1
  bool ReadEnabled = false;   // what arrives refreshes the port, and GetPort reads it
  bool Blocked = false;       // holds the value: neither refreshed nor read
  // The value as it came, in the slot of the Function's data type.
  Byte ByteValue = 0;
  std::int16_t IntValue = 0;   // Integer, Unsigned Int., BCD code
  std::int32_t LongValue = 0;  // Long
  float FloatValue = 0;        // Float, Xplane Dataref
};

}  // namespace tvx
