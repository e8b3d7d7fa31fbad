// An IO module over fakes, with a simulator whose values a test sets.
#pragma once

#include "hwbus/iomodule/IOModule.h"
#include "tests/Story.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeKeyInjector.h"
#include "tests/fakes/FakeSerialPort.h"
#include "tests/fakes/FakeUdpSocket.h"
#include "tests/fakes/SentCommands.h"
#include "tests/fakes/SimData.h"

namespace tvx {

struct IOModuleRig : Story {
  ConfigModel model;
  FakeMessageBoxes boxes;
  FakeClock clock;
  FakeUdpSocket socket;
  FakeKeyInjector injector;
  std::array<FakeSerialPort, kHardwareGroups> ports;
  FakeTimer process, write, seconds;
  SimCom sim{model, socket, boxes, clock};
  HardwarePorts hardware{model, PointersTo(ports)};
  Keystrokes keystrokes{injector, boxes, [] { return true; }};
  const IOModuleParameters parameters;
  IOModule module;

  explicit IOModuleRig(const IOModuleParameters& p)
      : parameters(p), module(model, sim, hardware, keystrokes, boxes, clock, p, {process, write, seconds}) {
    model.General.ComPortIOM1 = 6;
    model.General.ComPortIOM2 = 8;
    for (int number = 60; number < 64; ++number) {
      FunctionRecord& f = DefineFunction(model, number, DataType::Float, number);
      f.FullName = "#1:sim/a\r\n#2:sim/b\r\n";
      f.boxMaximumValue = 100;
    }
    verbs = {{"start", [this] { Start(); }},
             {"stop", [this] { module.cmdStop_Click(); }},
             {"run", [this] { module.cmdRun_Click(); }},
             {"define", [this] { module.TakeDefinitions(); }},
             {"set", [this](int function, float value) { Set(function, value); }},
             {"lighting", [this](int bits) { module.SetLighting(static_cast<Byte>(bits)); }},
             {"switches", [this](const std::string& on) { return SentAfter(Groups(on)); }},
             {"axis", [this](int raw) { return SentAfter({}, {raw}); }},
             {"sent", [this] { return Sent(); }},
             {"refuse", [this](bool now) { Port().RefuseWrites = now; }},
             {"tick", [this] { return InWords(Tick()); }},
             {"slot", [this] {
                module.WriteCmdDuringConfig_Tick();
                return InWords(TakeCommands());
              }}};
  }
  // The groups A to F of a report in which these switches are on: "A1 C8".
  static std::array<Byte, 6> Groups(const std::string& on) {
    std::array<Byte, 6> groups{};
    std::istringstream words(on);
    for (std::string name; words >> name;)
      groups[static_cast<std::size_t>(name[0] - 'A')] |= static_cast<Byte>(0x80 >> (name[1] - '1'));
    return groups;
  }
  // "4 1, 5 0": command and value of each.
  static Texts InWords(const std::vector<std::pair<int, int>>& commands) {
    Texts words;
    for (const auto& [command, value] : commands)
      words.push_back(std::to_string(command) + ' ' + std::to_string(value));
    return words;
  }
  FakeSerialPort& Port() { return ports[static_cast<std::size_t>(parameters.Group)]; }

  IOModuleRecord& Define(IOModuleKind kind, int index, int function) {
    IOModuleRecord& d = model.IOModuleInputs[model.IOModuleInputs.size() - 1];
    d.Input = IOModuleInputNumber({parameters.Number, kind, index});
    d.FunctionNr = static_cast<std::int16_t>(function);
    d.ActionKind = 'v';
    d.RawMaximum = 4000;
    model.IOModuleInputs.emplace_back();
    return model.IOModuleInputs[model.IOModuleInputs.size() - 2];
  }
  void Start() {
    sim.OpenUDP();
    module.OpenPorts();
    module.cmdRun_Click();
    socket.Sent.clear();
    Port().Writes.clear();
  }
  // The value number 0 of the Function's group arrives.
  void Set(int function, float value) { socket.Deliver(DataDatagram({{function, value}})); }
  static std::array<Byte, kReplySize> Frame(std::array<Byte, 6> groups,
                                            std::array<int, kIOModuleAnalogues> analogue = {}) {
    std::array<Byte, kReplySize> frame{};
    frame[1] = 10;
    frame[2] = 10;
    std::copy(groups.begin(), groups.end(), frame.begin() + 5);
    for (std::size_t j = 0; j < analogue.size(); ++j) {
      const int high = analogue[j] >> 8;
      frame[12 + j / 2] |= static_cast<Byte>(j % 2 == 0 ? high << 4 : high);
      frame[16 + j] = static_cast<Byte>(analogue[j] & 0xFF);
    }
    frame[24] = 0xFF;
    return frame;
  }
  void Report(std::array<Byte, 6> groups, std::array<int, kIOModuleAnalogues> analogue = {}) {
    Port().Arrive(Frame(groups, analogue));
  }
  // What was written to the simulator since the last call: group and value of each DATA packet, or the text
  // of another one.
  Texts Sent() {
    Texts all;
    for (const std::string& bytes : socket.TakeSent()) {
      if (bytes.size() != kDataSize || bytes.substr(0, 4) != "DATA") {
        all.push_back(bytes);
        continue;
      }
      all.push_back(std::to_string(static_cast<Byte>(bytes[5])) + "=" +
                    std::to_string(FloatAt(bytes, 9)).substr(0, 5));
    }
    return all;
  }
  // A report, and what it made the program write.
  Texts SentAfter(std::array<Byte, 6> groups, std::array<int, kIOModuleAnalogues> analogue = {}) {
    Report(groups, analogue);
    return Sent();
  }
  // A tick, and what the module was sent.
  std::vector<std::pair<int, int>> Tick() {
    module.ProcessTimer_Tick();
    return TakeCommands();
  }
  // What the module was sent: command and value of each frame.
  std::vector<std::pair<int, int>> TakeCommands() {
    std::vector<std::pair<int, int>> all;
    for (const auto& bytes : Port().Writes) {
      for (const SentCommand& sent : CommandsOf(bytes)) {
        EXPECT_EQ(sent.gauge, 10);
        all.emplace_back(sent.command, sent.value);
      }
    }
    Port().Writes.clear();
    return all;
  }
};

}  // namespace tvx
