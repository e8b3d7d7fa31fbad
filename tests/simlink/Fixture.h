// A link with everything around it faked, and the few words its tests are written in.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "simlink/SimCom.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeUdpSocket.h"

namespace tvx {

extern std::size_t allocations;  // of the whole test program, AllocationCount.cpp

// "44 53 00" as bytes.
inline std::string Hex(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < text.size(); i += 3) {
    bytes += static_cast<char>(std::stoi(std::string(text.substr(i, 2)), nullptr, 16));
  }
  return bytes;
}

inline ByteView View(const std::string& bytes) {
  return {reinterpret_cast<const Byte*>(bytes.data()), bytes.size()};
}

inline std::string FloatBytes(float value) {
  std::array<Byte, 4> bytes{};
  FloatToLittleEndian(value, bytes);
  return {bytes.begin(), bytes.end()};
}

// A DATA datagram whose groups carry `value` in slot 0 and value + k in slot k.
inline std::string DataDatagram(std::initializer_list<std::pair<int, float>> groups) {
  std::string bytes = "DATA*";
  for (const auto& [index, value] : groups) {
    bytes += static_cast<char>(index);
    bytes += std::string(3, '\x7F');  // ignored
    for (int k = 0; k < kDataValuesPerGroup; ++k) bytes += FloatBytes(value + static_cast<float>(k));
  }
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

class LinkTest : public testing::Test {
 protected:
  // Makes Function `number` a usable one that reads value `value` of group `index` as it is.
  FunctionRecord& Define(int number, DataType type, int index = 10, int value = 0) {
    FunctionRecord& f = model.Functions[static_cast<std::size_t>(number)];
    f.ShortName = "F" + std::to_string(number);
    f.FunctionNr = static_cast<std::int16_t>(number);
    f.ComboDT = static_cast<Byte>(type);
    f.Multiplier = f.Devider = 1;
    f.XPindex1 = static_cast<std::int16_t>(index);
    f.XPVal1 = static_cast<Byte>(value);
    return f;
  }
  // Defines, opens and enables; what that sends is forgotten.
  Port OpenEnabled(int number, DataType type, int index = 10, int value = 0) {
    Define(number, type, index, value);
    const Port port = sim.OpenSimPort(number, 1);
    sim.EnableReadSimPort(port);
    socket.Sent.clear();
    return port;
  }
  float Get(Port port, float otherwise = -12345) {
    sim.GetPort(port, otherwise);
    return otherwise;
  }
  float Put(Port port, float value) {
    sim.PutPort(port, value);
    return value;
  }

  ConfigModel model;
  FakeUdpSocket socket;
  FakeMessageBoxes boxes;
  FakeClock clock;
  SimCom sim{model, socket, boxes, clock};
};

}  // namespace tvx
