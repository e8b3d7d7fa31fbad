// A cockpit in memory whose values can be followed: gauges, both IO modules, engine cluster and yokes.
#pragma once

#include "follow/Follower.h"
#include "tests/fakes/CockpitRig.h"
#include "tests/fakes/FakeKeyInjector.h"
#include "tests/fakes/Wire.h"

namespace tvx {

struct NoJoystick final : JoystickDevice {
  const JoystickInfo* Describe(std::int32_t) override { return nullptr; }
  std::string Trouble() override { return {}; }
  bool joyGetPosEx(std::int32_t, JoyInfoEx&) override { return false; }
};

struct FollowRig : CockpitRig {
  static constexpr int kSpeed = 51;  // the Function of 012's needle, "sim/speed", 10 times a second
  static constexpr int kSwitch = 1003, kAxis = 1101, kLamp = 1204;

  FakeTimer timers[9];
  FakeKeyInjector injector;
  NoJoystick joystick;
  Keystrokes keystrokes{injector, boxes, [] { return true; }};
  IOModule module1 = Module(kIOModule1Parameters, 0), module2 = Module(kIOModule2Parameters, 3);
  EngineCluster cluster{model, sim, hardware, boxes, clock, {timers[6], timers[7]}};
  YokePair yokes{model, sim, ports[4], ports[5], boxes, clock, joystick, timers[8]};
  bool running = true;
  Follower follower{
      {model, sim, serial, hardware, cycle, {&module1, &module2}, cluster, yokes, clock, [this] {
         return running;
       }}};

  bool simulatorSends = true;  // some other value
  int answers = -1;            // the gauge that answers when it is asked
  bool moduleReports = true;

  FollowRig() {
    model.General.ComPortEC = 6;
    model.General.ComPortIOM1 = 7;
    Speed().FullName = "#1:sim/speed\r\n";
    GaugeRecord& gauge = AddGauge(12, 4);
    gauge.GaugeFunction1 = kSpeed;
    gauge.GaugeSetting3 = static_cast<Byte>(AddPlate(40, 200, 1000));
    model.EngineCluster[0] = {1, kSpeed, 0};
    for (const int input : {kSwitch, kAxis, kLamp}) {
      IOModuleRecord& definition = model.IOModuleInputs.back();
      definition.Input = static_cast<std::int16_t>(input);
      definition.FunctionNr = 60;
      definition.SequenceNr = 1;
      definition.ActionKind = 'v';
      definition.OnOffValue = 0;
      definition.RawMaximum = 4000;
      definition.IncrementFlags = input == kLamp ? kIOModuleLitAtMaximum : 0;
      definition.OffOnValue = input == kSwitch ? 1.0f : 0.0f;
      model.IOModuleInputs.emplace_back();
    }
    Define(60);
    Can({{"speed", [this](float value) { SendSpeed(value); }},
         {"pass", [this](int milliseconds) { Pass(milliseconds); }},
         {"knob", [this](float value) { WriteSpeed(value); }},
         {"silent", [this] { simulatorSends = false; }},
         {"answers", [this](int id) { answers = id; }},
         {"module", [this](bool reports) { moduleReports = reports; }},
         {"switch", [this] { Report(true); }},
         {"unplug", [this] { Bus().Unplug(); }}});
  }
  // With three timers from this one on.
  IOModule Module(const IOModuleParameters& parameters, int timer) {
    return {model, sim,   hardware,   keystrokes,
            boxes, clock, parameters, {timers[timer], timers[timer + 1], timers[timer + 2]}};
  }
  FunctionRecord& Speed() {
    FunctionRecord& f = model.Functions[kSpeed];
    if (f.ShortName.empty())
      DefineFunction(model, kSpeed, DataType::XplaneDataref, 0, 10).ShortName = "Speed";
    return f;
  }
  IOModuleRecord& Definition(int input) {
    return *std::ranges::find(model.IOModuleInputs, input, &IOModuleRecord::Input);
  }
  void Fly() {
    Start();
    module1.OpenPorts();
    cluster.OpenPorts();
    module1.TakeDefinitions();
    module1.cmdRun_Click();
    cluster.cmdRun_Click();
    yokes.Load();
  }
  // Of 012's needle.
  void SendSpeed(float value) {
    for (const RrefRow& row : sim.Rrefs())
      socket.Deliver(RrefDatagram({{RrefIdentifierOnWire(row.Identifier), value}}));
  }
  // As a knob of 012 would.
  void WriteSpeed(float value) {
    for (Port port = 0; port < sim.PortCount(); ++port) {
      if (sim.PortAt(port).OpenedBy == 12) sim.PutPort(port, value);
    }
  }
  void Report(bool on) {
    std::vector<Byte> report(kReplySize, 0);
    report[2] = 10;
    report.back() = 0xFF;
    report[5] = on ? 0x10 : 0;
    ports[2].Arrive(report);
  }
  void Pass(std::int64_t ms) {
    for (std::int64_t i = 0; i < ms; i += 20) {
      clock.Advance(20);
      sim.Tick();
      if (i % 100 != 0) continue;
      if (simulatorSends) socket.Deliver(DataDatagram({{99, 1.0f}}));
      if (moduleReports) Report(false);
      cycle.Tick();
      if (ActiveGauge* gauge = answers < 0 ? nullptr : cycle.GaugeWithID(answers)) cycle.NoteAnswer(*gauge);
      module1.ProcessTimer_Tick();
      if (i % 1000 == 0) module1.TimerSeconds_Tick();
      cluster.ProcessTimer_Tick();
    }
  }
};

}  // namespace tvx
