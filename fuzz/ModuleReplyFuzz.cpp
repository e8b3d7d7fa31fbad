// Arbitrary bytes from the lines of an IO module and of the engine cluster. The first byte chooses the line
// and whether it runs; the rest arrives in pieces at a length byte each, with ticks, breaks and framing
// errors between.
#include <algorithm>

#include "hwbus/cluster/EngineCluster.h"
#include "hwbus/iomodule/IOModule.h"
#include "hwbus/iomodule/IOModuleInput.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeKeyInjector.h"
#include "tests/fakes/FakeSerialPort.h"
#include "tests/fakes/FakeUdpSocket.h"

namespace {

using namespace tvx;

// A definition of every kind on every input, on Functions of every data type.
struct Lines {
  Lines() {
    model.General.ComPortIOM1 = 6;
    model.General.ComPortEC = 7;
    for (int i = 1; i <= 9; ++i) {
      FunctionRecord& f = model.Functions[static_cast<std::size_t>(i)];
      f.ShortName = "F";
      f.FullName = "#1:a/b\r\n";
      f.ComboDT = static_cast<Byte>(i - 1);
      f.Multiplier = f.Devider = 1;
      f.boxMaximumValue = static_cast<float>(i * 100 - 300);
      model.EngineCluster[static_cast<std::size_t>(i - 1)] = {1, static_cast<std::int16_t>(i), 0};
    }
    int number = 0;
    const auto add = [&](IOModuleKind kind, int count) {
      for (int i = 0; i < count; ++i, ++number) {
        IOModuleRecord d;
        d.Input = IOModuleInputNumber({1, kind, i});
        d.FunctionNr = static_cast<std::int16_t>(number % 11);
        d.IncrementFlags = static_cast<std::int16_t>(number % 5);
        d.ActionKind = static_cast<Byte>("vdcnu"[number % 5]);
        d.OffOnValue = static_cast<float>(number % 7 - 1);
        d.OnOffValue = static_cast<float>(number % 3 - 1);
        d.OnKeystroke = static_cast<std::int16_t>(number * 719);
        d.RawMaximum = static_cast<float>(number % 4 * 1000);
        model.IOModuleInputs.insert(model.IOModuleInputs.end() - 1, d);
      }
    };
    add(IOModuleKind::Switch, kIOModuleSwitches);
    add(IOModuleKind::Analogue, kIOModuleAnalogues);
    add(IOModuleKind::Lamp, kIOModuleLamps);
    sim.OpenUDP();
    module.OpenPorts();
    cluster.OpenPorts();
  }
  ConfigModel model;
  FakeMessageBoxes boxes;
  FakeClock clock;
  FakeUdpSocket socket;
  FakeKeyInjector keys;
  FakeSerialPort modulePort, clusterPort, other;
  FakeTimer timer;
  SimCom sim{model, socket, boxes, clock};
  HardwarePorts hardware{model, {&other, &clusterPort, &modulePort, &other, &other, &other}};
  Keystrokes keystrokes{keys, boxes, [] { return true; }};
  IOModule module{
      model, sim, hardware, keystrokes, boxes, clock, kIOModule1Parameters, {timer, timer, timer}};
  EngineCluster cluster{model, sim, hardware, boxes, clock, {timer, timer}};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Lines lines;
  if (size == 0) return 0;
  const unsigned mode = data[0];
  ByteView left(data + 1, size - 1);
  lines.module.cmdRun_Click();
  lines.cluster.cmdRun_Click();
  if ((mode & 2) != 0) lines.module.cmdStop_Click();
  FakeSerialPort& port = (mode & 1) != 0 ? lines.clusterPort : lines.modulePort;
  while (!left.empty()) {
    const std::size_t length = std::min<std::size_t>(left.size() - 1, left[0] & 0x3F);
    if ((left[0] & 0xC0) == 0xC0) port.Raise((left[0] & 1) != 0 ? SerialEvent::Break : SerialEvent::Framing);
    port.Arrive(left.subspan(1, length));
    left = left.subspan(1 + length);
    lines.module.ProcessTimer_Tick();
    lines.cluster.ProcessTimer_Tick();
  }
  lines.socket.TakeSent();
  lines.socket.SetUps.clear();
  lines.socket.RemotePorts.clear();
  lines.keys.keys.clear();
  lines.boxes.shown.clear();
  for (FakeSerialPort* p : {&lines.modulePort, &lines.clusterPort}) {
    p->Close();
    p->Writes.clear();
    p->Sent.clear();
    p->Log.clear();
  }
  return 0;
}
