// The whole program's logic over fakes: start and run control, and shells that record what they were asked.
#pragma once

#include "core/StartPresenter.h"
#include "core/StatusPresenter.h"
#include "tests/fakes/CockpitRig.h"
#include "tests/fakes/FakeMulticastListener.h"

namespace tvx {

class FakeShell final : public Shell {
 public:
  Texts log;
  void ShowStartForm() override { log.push_back("show start"); }
  void UnloadStartForm() override { log.push_back("unload start"); }
  void ShowStatusForm() override { log.push_back("show status"); }
  void UnloadStatusForm() override { log.push_back("unload status"); }
  void ShowMainConfiguration() override { log.push_back("show configuration"); }
  void UnloadConfigurationForms() override { log.push_back("unload configuration"); }
  void OpenWebPage() override { log.push_back("web page"); }
  void EndProgram() override { log.push_back("end"); }
};

class FakePeripheral final : public Peripheral {
 public:
  bool configured = false;
  Texts* log = nullptr;
  std::string name;

  bool Configured() const override { return configured; }
  void Load() override { Note("load"); }
  void Unload() override { Note("unload"); }
  void Show() override { Note("show"); }
  void OpenPorts() override { Note("ports"); }
  void Run() override { Note("run"); }
  void Stop() override { Note("stop"); }

 private:
  void Note(const char* what) const { log->push_back(name + " " + what); }
};

struct ProgramRig : CockpitRig {
  FakeShell shell;
  FakeTimer processTimer, timer1, writeTimer, autostart, waitForFS, silence;
  std::array<FakePeripheral, kPeripherals> peripheral;
  Texts peripheralLog;
  Peripherals peripherals = Pointers();
  StatusPresenter run{model, sim,   serial,      boxes,
                      shell, clock, peripherals, {processTimer, timer1, writeTimer}};
  ConfigFile file{model, boxes};
  void Activate() {
    run.Load();
    run.Form_Activate();
  }
  // The link's timer ticks so often, once every 20 ms.
  void LinkTicks(int count) {
    for (int i = 0; i < count; ++i) clock.Advance(20), sim.Tick();
  }
  FakeMulticastListener beacons;
  SimulatorFinder finder{beacons, clock};
  StartPresenter start{model, file, sim, finder, boxes, shell, clock, run, {autostart, waitForFS, silence}};

 private:
  Peripherals Pointers() {
    const char* names[] = {"EC", "IOM1", "IOM2", "yokes"};
    Peripherals pointers{};
    for (std::size_t i = 0; i < kPeripherals; ++i) {
      peripheral[i].log = &peripheralLog;
      peripheral[i].name = names[i];
      pointers[i] = &peripheral[i];
    }
    return pointers;
  }
};

}  // namespace tvx
