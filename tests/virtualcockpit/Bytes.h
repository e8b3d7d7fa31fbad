// Bytes of frames and datagrams, put together by hand.
#pragma once

#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "tests/fakes/Wire.h"

namespace tvx::vc::test {

inline Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}
inline Bytes Ascii(std::string_view text) {
  return Bytes(text.begin(), text.end());
}
inline Bytes Little(std::int32_t value) {
  Bytes bytes(4);
  for (int i = 0; i < 4; ++i)
    bytes[static_cast<std::size_t>(i)] = static_cast<Byte>(static_cast<std::uint32_t>(value) >> (8 * i));
  return bytes;
}
inline Bytes Big(std::int32_t value) {
  const Bytes little = Little(value);
  return Bytes(little.rbegin(), little.rend());
}
inline Bytes Single(float value) {
  return Little(std::bit_cast<std::int32_t>(value));
}
inline Bytes Padded(Bytes bytes, std::size_t size, Byte with = 0) {
  bytes.resize(size, with);
  return bytes;
}
// An answer of 25 bytes: its head, what the wire carries from byte 6 on, zeros, and the end mark.
inline Bytes Answer(const Bytes& head, std::string_view wire = {}) {
  return Padded(Padded(Bytes{0} + head, 5) + Wire(wire), 24) + Bytes{0xFF};
}
// A command on the gauge bus.
inline Bytes Command(int gaugeID, int command, int value = 0) {
  const int low = std::abs(value) & 0xFF, high = std::abs(value) >> 8;
  const int third = command << 4 | 8 | (value < 0 ? 4 : 0) | (high & 2) | (low & 1);
  Bytes bytes{0};
  for (const int byte : {gaugeID, third, low | 1, high | 2, 0xFF}) bytes.push_back(static_cast<Byte>(byte));
  return bytes;
}
inline Bytes SubscribeTo(std::string_view name, std::int32_t frequency, std::int32_t index) {
  return Padded(Ascii("RREF") + Bytes{0} + Little(frequency) + Little(index) + Ascii(name), 413);
}
inline Bytes WriteDataref(std::string_view name, float value) {
  return Padded(Ascii("DREF0") + Single(value) + Ascii(name), 509);
}
inline Bytes WriteSingle(std::int32_t group, int slot, float value) {
  Bytes bytes = Ascii("DATA0") + Little(group);
  for (int i = 0; i < 8; ++i) bytes = bytes + Single(i == slot ? value : -999.0f);
  return bytes;
}
inline Bytes WriteInteger(std::int32_t group, int slot, std::int32_t value) {
  Bytes bytes = Ascii("DATA0") + Little(group);
  for (int i = 0; i < 8; ++i) bytes = bytes + Big(i == slot ? value : -999);
  return bytes;
}

template <typename Kind>
Kind& As(auto& device) {
  return dynamic_cast<Kind&>(device);
}

}  // namespace tvx::vc::test
