// Functions, and the simulator's datagrams that bring their values.
#pragma once

#include <array>
#include <initializer_list>
#include <string>
#include <utility>

#include "base/Bytes.h"
#include "config/Model.h"

namespace tvx {

// Makes Function `number` a usable one that takes value `value` of group `index` as it is.
inline FunctionRecord& DefineFunction(ConfigModel& model, int number, DataType type, int index = 10,
                                      int value = 0) {
  FunctionRecord& f = model.Functions[static_cast<std::size_t>(number)];
  f.ShortName = "F" + std::to_string(number);
  f.FunctionNr = static_cast<std::int16_t>(number);
  f.ComboDT = static_cast<Byte>(type);
  f.Multiplier = f.Devider = 1;
  f.XPindex1 = static_cast<std::int16_t>(index);
  f.XPVal1 = static_cast<Byte>(value);
  return f;
}

inline std::string FloatBytes(float value) {
  std::array<Byte, 4> bytes{};
  FloatToLittleEndian(value, bytes);
  return {bytes.begin(), bytes.end()};
}
inline float FloatAt(std::string_view bytes, std::size_t at) {
  std::array<Byte, 4> value{};
  std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), 4, value.begin());
  return FloatFromLittleEndian(value);
}

// A DATA datagram of one group.
inline std::string DataDatagram(int index, const std::array<float, 8>& values) {
  std::string bytes = std::string("DATA*") + static_cast<char>(index) + std::string(3, '\x7F');  // ignored
  for (const float value : values) bytes += FloatBytes(value);
  return bytes;
}
// One whose groups carry `value` in slot 0 and value + k in slot k.
inline std::string DataDatagram(std::initializer_list<std::pair<int, float>> groups) {
  std::string bytes = "DATA*";
  for (const auto& [index, v] : groups)
    bytes += DataDatagram(index, {v, v + 1, v + 2, v + 3, v + 4, v + 5, v + 6, v + 7}).substr(5);
  return bytes;
}
inline std::string RrefDatagram(std::initializer_list<std::pair<int, float>> records) {
  std::string bytes = "RREF,";
  for (const auto& [identifier, value] : records) {
    bytes += static_cast<char>(identifier);
    bytes += static_cast<char>(identifier >> 8);
    bytes += "\x7F\x7F" + FloatBytes(value);
  }
  return bytes;
}

}  // namespace tvx
