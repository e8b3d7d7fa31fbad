// An engine cluster on ports in memory: Function 60 + k is group 10 + k of the simulator, and Plate 0 goes
// straight from 0..100 to 0..1000.
#pragma once

#include "hwbus/cluster/EngineCluster.h"
#include "tests/Story.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeSerialPort.h"
#include "tests/fakes/FakeUdpSocket.h"
#include "tests/fakes/SimData.h"

namespace tvx {

using Places = std::map<int, int>;  // by their place in the frame, counted from 1; those that are 0 left out

inline Places NotZero(ByteView frame) {
  Places bytes;
  for (std::size_t i = 0; i < frame.size(); ++i) {
    if (frame[i] != 0) bytes[static_cast<int>(i) + 1] = frame[i];
  }
  return bytes;
}

struct EngineClusterRig : testing::Test, Story {
  EngineClusterRig() {
    model.General.ComPortEC = 7;
    PlateRecord& plate = model.Plates.emplace_back();
    plate.Value[3] = plate.Value[5] = 100;
    plate.Position[3] = plate.Position[5] = 1000;
    model.Plates.emplace_back().Name = "Second";
    for (int k = 0; k < kECChannels; ++k) DefineFunction(model, 60 + k, DataType::Float, 10 + k);
    verbs = {{"enable", [this](int channel) { Enable(channel); }},
             {"start", [this] { Start(); }},
             {"set", [this](int channel, float value) { Set(channel, value); }},
             {"refuse", [this](bool now) { port.RefuseWrites = now; }},
             {"tick", [this] { return InWords(Tick()); }}};
  }
  // "F 2=1 3=244": the letter of the frame, and the bytes that are not 0 by their place. The last is always
  // AA.
  static std::string InWords(Places places) {
    if (places.empty()) return "";
    EXPECT_EQ(places[40], 0xAA);
    std::string words(1, static_cast<char>(places[1]));
    for (const auto& [place, value] : places) {
      if (place != 1 && place != 40) words += ' ' + std::to_string(place) + '=' + std::to_string(value);
    }
    return words;
  }
  void Enable(int channel, int plate = 0) {
    model.EngineCluster[static_cast<std::size_t>(channel)] = {1, static_cast<std::int16_t>(60 + channel),
                                                              static_cast<std::int16_t>(plate)};
  }
  void Start() {
    sim.OpenUDP();
    cluster.OpenPorts();
    cluster.cmdRun_Click();
  }
  void Set(int channel, float value) { socket.Deliver(DataDatagram({{10 + channel, value}})); }
  Places Tick() {
    port.Writes.clear();
    cluster.ProcessTimer_Tick();
    return port.Writes.size() == 1 && port.Writes[0].size() == 40 ? NotZero(port.Writes[0]) : Places{};
  }
  ConfigModel model;
  FakeMessageBoxes boxes;
  FakeClock clock;
  FakeUdpSocket socket;
  FakeSerialPort port, other;
  FakeTimer process, second;
  SimCom sim{model, socket, boxes, clock};
  HardwarePorts hardware{model, {&other, &port, &other, &other, &other, &other}};
  EngineCluster cluster{model, sim, hardware, boxes, clock, {process, second}};
};

}  // namespace tvx
