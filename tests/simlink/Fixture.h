// A link with everything around it faked, and the few words its tests are written in.
#pragma once

#include "simlink/SimCom.h"
#include "tests/Story.h"
#include "tests/fakes/AllocationCount.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeUdpSocket.h"
#include "tests/fakes/SimData.h"

namespace tvx {

// "44 53 00" as bytes.
inline std::string Hex(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < text.size(); i += 3)
    bytes += static_cast<char>(std::stoi(std::string(text.substr(i, 2)), nullptr, 16));
  return bytes;
}

inline ByteView View(const std::string& bytes) {
  return {reinterpret_cast<const Byte*>(bytes.data()), bytes.size()};
}

struct LinkTest : testing::Test, Story {
  LinkTest() {
    verbs = {{"data",
              [this](int group, float value) {
                socket.Deliver(DataDatagram({{group, value}}));
              }},
             {"rref",
              [this](int identifier, float value) {
                socket.Deliver(RrefDatagram({{identifier, value}}));
              }},
             {"pass", [this](int milliseconds) { clock.Advance(milliseconds); }},
             {"get", [this](Port port) { return Get(port); }},
             {"put", [this](Port port, float value) { return Put(port, value); }},
             {"sends", [this] { return socket.TakeSent().size(); }},
             {"said", [this] { return std::exchange(boxes.shown, {}); }},
             {"ports", [this] { return sim.PortCount(); }},
             {"link", [this] { return sim.UdpOpen(); }}};
  }
  FunctionRecord& Define(int number, DataType type, int index = 10, int value = 0) {
    return DefineFunction(model, number, type, index, value);
  }
  // Defines, opens and enables; what that sends is forgotten.
  Port OpenEnabled(int number, DataType type, int index = 10, int value = 0) {
    Define(number, type, index, value);
    const Port port = sim.OpenSimPort(number, 1);
    sim.EnableReadSimPort(port);
    socket.Sent.clear();
    return port;
  }
  // Until every request that waited for its turn has left.
  void Settle() {
    for (sim.Tick(); sim.Keeper().RequestsWaiting() > 0; sim.Tick()) clock.Advance(20);
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
