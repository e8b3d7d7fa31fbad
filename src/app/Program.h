// The whole program: every part, built once and handed what it needs, and the forms.
#pragma once

#include <memory>
#include <vector>

#include "app/ConfigurationForms.h"
#include "app/Connections.h"
#include "app/FormCare.h"
#include "app/FunctionForms.h"
#include "app/Presence.h"
#include "app/ProgramTimers.h"
#include "app/SideForms.h"
#include "app/Surroundings.h"
#include "app/WatchForms.h"
#include "app/peripherals/EngineClusterPeripheral.h"
#include "app/peripherals/IOModulePeripheral.h"
#include "app/peripherals/YokesPeripheral.h"
#include "config/ConfigFile.h"
#include "config/setup/ConfigurationHistory.h"
#include "config/setup/UnsavedWork.h"
#include "config/setup/forms/MainConfigureForm.h"
#include "config/setup/forms/UnsavedPanel.h"
#include "core/Shell.h"
#include "core/SimulatorFollower.h"
#include "core/StartPresenter.h"
#include "core/StatusPresenter.h"
#include "core/forms/StartForm.h"
#include "core/forms/StatusForm.h"
#include "hwbus/gaugebus/Serial.h"
#include "simlink/SimCom.h"
#include "simlink/aircraft/AircraftSwitch.h"

namespace tvx {

// Needs a QApplication around it, and works in the current folder. Everything happens in the event loop.
class Program final : private Shell, private ConfigurationHost, private AircraftSwitch::Host {
 public:
  // `boxes`: the message boxes to use; nullptr for those on the screen. `keys`: where keystrokes go; nullptr
  // for the desktop. `devices`: the serial adapters; nullptr for this computer's. `machine`: what
  // differs from one operating system to another; nullptr for one of its own. `beacons`: where simulators
  // tell of themselves; nullptr for the network. All must outlive the program.
  explicit Program(MessageBoxes* boxes = nullptr, KeyInjector* keys = nullptr,
                   SerialDevices* devices = nullptr, Machine* machine = nullptr,
                   MulticastListener* beacons = nullptr);
  ~Program() override;
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // Shows the start form. Everything else follows from events.
  void Begin();
  // Brings the window that is in use to the front, and says that the program was started again in its folder.
  void ShowItself();
  // Ends the program as its Exit buttons do, from whatever state: asks nobody, takes every form and box away,
  // and leaves the event loop with status 0, and every one that runs within it, as soon as the simulator has
  // been told (SimCom::SayingGoodbye).
  void Exit();
  bool Ended() const { return ended_; }
  // It has ended, and the simulator has been told.
  bool Gone() const { return ended_ && !leaving_; }

  ConfigModel& Model() { return model_; }
  SimCom& Sim() { return sim_; }
  Serial& HardwareBus() { return serial_; }
  StartPresenter& Start() { return start_; }
  StatusPresenter& Run() { return run_; }
  IOModulePeripheral& IOModule1() { return ioModule1_; }
  IOModulePeripheral& IOModule2() { return ioModule2_; }
  EngineClusterPeripheral& Cluster() { return engineCluster_; }
  YokesPeripheral& Yokes() { return yokes_; }
  // The forms; nullptr while one is not loaded.
  StartForm* StartWindow() const { return startForm_.Get(); }
  StatusForm* StatusWindow() const { return statusForm_.Get(); }
  MainConfigureForm* ConfigurationWindow() const { return configuration_.MainForm(); }
  ConfigurationForms& Configuration() { return configuration_; }
  FunctionForms& Functions() { return functions_; }
  AircraftSwitch& AircraftFollowed() { return aircraft_; }
  WatchForms& Watch() { return watch_; }
  SideForms& Beside() { return sideForms_; }
  Presence& Windows() { return presence_; }
  const ProgramTimers& Timers() const { return timers_; }

 private:
  void ShowStartForm() override;
  void UnloadStartForm() override;
  void ShowStatusForm() override;
  void UnloadStatusForm() override;
  void ShowMainConfiguration() override;
  void UnloadConfigurationForms() override;
  void OpenWebPage() override;
  void EndProgram() override;
  // ConfigurationHost
  std::string HeaderForSaving() const override;
  void ConfigurationClosed() override;
  // AircraftSwitch::Host
  bool MayChangeConfiguration() const override;
  bool UseConfiguration(const std::string& file) override;

  void ConnectTimers();
  void LinkTimer_Tick();
  void LeaveEventLoop();
  FormCare::Parts MakeCareParts();
  void AddPeripherals();
  void UnloadEverything();
  void ShowUnsaved();
  void BringInUseToFront();
  void ConfigurationReplaced();

  Surroundings around_;
  NotedBoxes& boxes_{around_.Boxes()};
  const Clock& clock_{around_.Clocks()};
  ConfigModel model_;
  ConfigFile file_;
  UnsavedWork unsaved_{model_, boxes_};
  Connections connections_{around_.TheMachine()};
  SimCom sim_;
  AdapterLine adapterLine_{around_.TheMachine()};
  HardwarePorts hardware_;
  Serial serial_;
  Keystrokes keystrokes_;
  Peripherals peripherals_{};  // by PeripheralKind; the button of one that is missing stays hidden
  ProgramTimers timers_;
  SimulatorFinder finder_;
  SimulatorFollower follower_;
  StatusPresenter run_;
  IOModulePeripheral ioModule1_, ioModule2_;
  EngineClusterPeripheral engineCluster_;
  YokesPeripheral yokes_;
  StartPresenter start_;
  AircraftSwitch aircraft_{model_, sim_, boxes_, clock_, *this};
  FunctionForms functions_{model_, sim_, boxes_, clock_};
  ConfigurationForms configuration_;
  ConfigurationHistory history_{model_, clock_};
  WatchForms watch_;
  SideForms sideForms_{boxes_, around_.Said()};
  Presence presence_{
      {start_, run_, hardware_, around_.Said(), clock_, [this] { BringInUseToFront(); }, [this] { Exit(); }}};
  FormCare care_{MakeCareParts()};
  std::vector<Registration> registrations_;  // views and timers
  bool ended_ = false;
  bool leaving_ = false;  // the event loop is left when the simulator has been told

  FormHolder<StartForm> startForm_;
  QPointer<UnsavedPanel> unsavedPanel_;
  FormHolder<StatusForm> statusForm_;
};

}  // namespace tvx
