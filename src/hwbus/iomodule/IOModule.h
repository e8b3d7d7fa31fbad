// An IO module on a port of its own: switches, encoders, analogue inputs and lamps. One class for both
// modules.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/Registration.h"
#include "config/Model.h"
#include "hwbus/FrameQueue.h"
#include "hwbus/GaugeFrame.h"
#include "hwbus/HardwarePorts.h"
#include "hwbus/iomodule/IOModulePorts.h"
#include "hwbus/iomodule/IOModuleReport.h"
#include "hwbus/iomodule/SentCommands.h"
#include "platform/Host.h"
#include "simlink/SimCom.h"
#include "simlink/keys/Keystroke.h"

namespace tvx {

// In what the two modules differ.
struct IOModuleParameters {
  int Number;  // 1 or 2
  HardwareGroup Group;
  std::int16_t Opener;
  std::string_view OpenError;
};
inline constexpr IOModuleParameters kIOModule1Parameters{1, HardwareGroup::IOModule1, opener::kIOModule1,
                                                         "Error opening Com Port for IO Module #1."};
inline constexpr IOModuleParameters kIOModule2Parameters{2, HardwareGroup::IOModule2, opener::kIOModule2,
                                                         "Error opening Com Port for IO Module #2."};

class IOModule {
 public:
  struct Timers {
    Timer& ProcessTimer;          // TransferInterval; while running
    Timer& WriteCmdDuringConfig;  // 20 ms; while halted
    Timer& TimerSeconds;          // 1 s
  };
  IOModule(const ConfigModel& model, SimCom& sim, HardwarePorts& hardware, Keystrokes& keystrokes,
           MessageBoxes& boxes, const Clock& clock, const IOModuleParameters& parameters, Timers timers);

  const IOModuleParameters& Parameters() const { return parameters_; }
  bool Configured() const { return hardware_.Configured(parameters_.Group); }

  // Takes the definitions over: which switch, axis and lamp has which. To be called again after they were
  // edited; they count at once, running or halted, and what stands is not interrupted.
  void TakeDefinitions();
  // Asks for the module's serial port unless it is open; shows the module's message when it cannot be opened.
  void OpenCommPort();
  // Opens the simulator port of each definition, under the module's opener code.
  void OpenPorts();
  // The simulator ports were closed elsewhere, with all others.
  void ForgetPorts() { ports_.Forget(); }
  void cmdRun_Click();
  void cmdStop_Click();
  // Queues a command for the module behind those that wait. False, and it is lost, where the queue is full.
  // `gaugeID` is not used. Throws RangeError when |value| is above 65535.
  bool ComposeCmd(int gaugeID, int command, std::int32_t value);
  // True while a command waits.
  bool TransmitPending() const { return !waiting_.Empty(); }
  // The cockpit's lighting: its word, whose bits 4..7 are the lamps' brightness.
  void SetLighting(std::int32_t word) { lighting_ = word; }

  void MSComm1_OnComm(SerialEvent event);
  void ProcessTimer_Tick();
  void WriteCmdDuringConfig_Tick();
  void TimerSeconds_Tick();

  // --- what the forms show ---
  bool Running() const { return running_; }
  std::string StatusText() const;  // "Running" or "Halted", and the port's state where it is in trouble
  const std::array<bool, kIOModuleSwitches>& SwitchState() const { return switchState_; }
  bool SwitchesKnown() const { return switchesKnown_; }
  const std::array<std::int16_t, kIOModuleAnalogues>& AnalogueValue() const { return analogueValue_; }
  std::uint32_t Lamps() const { return lamps_; }  // bit n: lamp n is lit
  const SentCommands& Sent() const { return sent_; }
  float AnalogueOut() const { return analogueOut_; }
  // The definition's number, 0 for none.
  int SwitchDefinitionNr(int index) const { return switchDefinitionNr_[static_cast<std::size_t>(index)]; }
  int AnalogueDefinitionNr(int index) const { return analogueDefinitionNr_[static_cast<std::size_t>(index)]; }
  int LampDefinitionNr(int index) const { return lampDefinitionNr_[static_cast<std::size_t>(index)]; }
  // The value that a definition's Function has now; 0 where it has none, std::nullopt before one ever came.
  double CurrentValue(int definitionNr) const { return KnownValue(definitionNr).value_or(0.0); }
  std::optional<double> KnownValue(int definitionNr) const { return ports_.Known(definitionNr); }
  // The simulator port of a definition; kNoPort where it has none.
  Port PortOf(int definitionNr) const { return ports_.PortOf(definitionNr); }
  bool Answering() const { return secondsSilent_ < kSilentSeconds; }
  // Told of every well-formed report, running or not: for learning by touch. Until the
  // Registration ends.
  Registration SetReportObserver(std::function<void(const IOModuleReport&)> observer) {
    return observer_.Give(std::move(observer));
  }

  static constexpr int kSilentSeconds = 3;

 private:
  static constexpr std::size_t kLongestBatch = 6;  // frames; a tick sends at most five
  const IOModuleRecord& Definition(int definitionNr) const {
    return model_.IOModuleInputs[static_cast<std::size_t>(definitionNr - 1)];
  }
  const FunctionRecord* FunctionOf(const IOModuleRecord& definition) const;
  SerialPort& Line() { return hardware_.PortOf(parameters_.Group); }
  void OpenQuietly();
  void TellOpenError();
  void TakeReport(const IOModuleReport& report);
  void TakeSwitches(const IOModuleReport& report);
  void TakeAnalogue(const IOModuleReport& report);
  void RunSwitchAction(int definitionNr, bool on);
  std::optional<double> StepsFrom(int definitionNr) const;
  void RefreshLamps();
  void AppendCommand(int command, std::int32_t value);
  using Told = std::optional<std::int32_t>;  // what the module was told last; std::nullopt: not known
  void AppendIfChanged(Told& told, int command, std::int32_t value);
  void ForgetTold();
  bool Send(ByteView frames);

  const ConfigModel& model_;
  SimCom& sim_;
  HardwarePorts& hardware_;
  Keystrokes& keystrokes_;
  MessageBoxes& boxes_;
  const Clock& clock_;
  const IOModuleParameters parameters_;
  Timers timers_;
  Callback<const IOModuleReport&> observer_;
  Registration events_;  // of the line

  bool running_ = false;
  bool openErrorDue_ = false;  // the port was asked for, and who asked is told when it fails
  int openingTicks_ = 0;       // that commands have waited for the port to open
  int secondsSilent_ = 0;
  // The switches as they stand, and as they stood when they were last acted upon.
  std::array<bool, kIOModuleSwitches> switchState_{}, lastSwitchState_{};
  std::array<Byte, kIOModuleGroups> switchText_{};  // their bytes in the last report
  bool switchesKnown_ = false;
  std::array<std::int16_t, kIOModuleAnalogues> analogueValue_{}, lastAnalogueValue_{};
  std::array<int, kIOModuleSwitches> switchDefinitionNr_{};
  std::array<int, kIOModuleAnalogues> analogueDefinitionNr_{};
  std::array<int, kIOModuleLamps> lampDefinitionNr_{};
  IOModulePorts ports_;
  float analogueOut_ = 0;

  std::uint32_t lamps_ = 0;
  std::int32_t lighting_ = 0;
  Told toldLampsLow_, toldLampsHigh_, toldBrightness_, toldLighting_;
  SentCommands sent_;

  FrameQueue waiting_;
  std::array<Byte, kLongestBatch * sizeof(GaugeFrame)> batch_{};
  std::size_t batchSize_ = 0;
};

}  // namespace tvx
