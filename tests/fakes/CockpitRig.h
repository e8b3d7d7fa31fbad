// A whole cockpit in memory: model, simulator link, gauge bus and process cycle over fakes, with a simulator
// whose values a test sets.
#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include "base/Bytes.h"
#include "config/Model.h"
#include "core/ProcessCycle.h"
#include "tests/Story.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeSerialPort.h"
#include "tests/fakes/FakeUdpSocket.h"
#include "tests/fakes/SentCommands.h"
#include "tests/fakes/SimData.h"

namespace tvx {

struct CockpitRig : Story {
  ConfigModel model;
  FakeMessageBoxes boxes;
  FakeClock clock;
  FakeUdpSocket socket;
  std::array<FakeSerialPort, kHardwareGroups> ports;
  SimCom sim{model, socket, boxes, clock};
  HardwarePorts hardware{model, PointersTo(ports)};
  Serial serial{hardware, boxes, clock};
  SpecialValues special{sim, boxes, clock};
  ProcessCycle cycle{model, sim, serial, special};

  CockpitRig() {
    model.General.ComPortGS = 5;
    model.General.RemoteIP = "127.0.0.1";
    verbs = {{"start", [this] { Start(); }},
             {"set", [this](int function, float value) { Set(function, value); }},
             {"pass", [this](int milliseconds) { clock.Advance(milliseconds); }},
             {"refuse", [this](bool now) { Bus().RefuseWrites = now; }},
             {"tick", [this] { return InWords(Tick()); }},
             {"values", [this] { return InWords(TickValues()); }},
             {"dropped", [this] { return cycle.DroppedBatches(); }}};
  }

  FakeSerialPort& Bus() { return ports[0]; }

  // Makes Function `number` a Float that Set() sets, with four sources.
  void Define(int number) {
    FunctionRecord& f = DefineFunction(model, number, DataType::Float, number % 150, number / 150);
    f.boxMaximumValue = 100;
    f.XPindex2 = f.XPindex3 = f.XPindex4 = f.XPindex1;
    f.XPVal2 = static_cast<Byte>(f.XPVal1 + 2);
    f.XPVal3 = static_cast<Byte>(f.XPVal1 + 4);
    f.XPVal4 = static_cast<Byte>(f.XPVal1 + 6);
  }
  // The simulator sends a new value of the Function's source.
  void Set(int number, float value, int sequenceNr = 1) {
    const FunctionRecord& f = model.Functions[static_cast<std::size_t>(number)];
    const auto slot = f.SlotOf(static_cast<Byte>(sequenceNr));
    auto& group = groups_[static_cast<std::size_t>(slot.index)];
    group[slot.value] = value;
    socket.Deliver(DataDatagram(slot.index, group));
  }
  // A Plate from `lowest` at position 0 to `highest` at position `top`, straight.
  int AddPlate(double lowest, double highest, int top) {
    PlateRecord& plate = model.Plates.emplace_back();
    plate.Value[2] = plate.Value[4] = lowest;
    plate.Value[3] = plate.Value[5] = highest;
    plate.Position[3] = plate.Position[5] = static_cast<std::int16_t>(top);
    return model.PlateCount() - 1;
  }
  GaugeRecord& AddGauge(int id, int type) {
    GaugeRecord& gauge = model.Gauges[static_cast<std::size_t>(id)];
    gauge.GaugeType = static_cast<Byte>(type);
    return gauge;
  }
  // "12 5 500, 13 8 0": gauge, command and value of each.
  static Texts InWords(const Commands& commands) {
    Texts words;
    for (const SentCommand& c : commands)
      words.push_back(std::to_string(c.gauge) + ' ' + std::to_string(c.command) + ' ' +
                      std::to_string(c.value));
    return words;
  }
  // Opens the bus and the standard ports as run control does, and prepares the gauges.
  void Start() {
    OpenLinks();
    const OpenerScope by(sim, opener::kInternal);
    cycle.OpenStandardPorts();
    StartCycle();
  }
  // The two parts of Start around the standard ports.
  void OpenLinks() {
    sim.OpenUDP();
    serial.OpenComPorts();
  }
  void StartCycle() {
    cycle.PrepareGauges();
    cycle.StartRun();
  }
  // One tick, and as much time as the line needs for the one before; returns what went out on the gauge bus.
  Commands Tick() {
    PassTick();
    Bus().Writes.clear();
    cycle.Tick();
    Commands all;
    for (const auto& write : Bus().Writes) {
      for (const auto& command : CommandsOf(write)) all.push_back(command);
    }
    return all;
  }

  void PassTick() {
    const auto carried = static_cast<std::int64_t>(serial.Backlog().Ms(clock.now)) + 1;
    clock.Advance(std::max<std::int64_t>(carried, std::max<int>(model.General.TransferInterval, 40)));
  }
  // The same without the polls.
  Commands TickValues() {
    Commands all = Tick();
    std::erase_if(all, [](const SentCommand& c) { return c.command == kCommandReportState; });
    return all;
  }

 private:
  std::array<std::array<float, 8>, 150> groups_{};
};

}  // namespace tvx
