// The status form's logic: prepares a run, runs it, halts it, and knows what the form shows.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>

#include "config/Model.h"
#include "core/BusWords.h"
#include "core/GaugeReceiver.h"
#include "core/Peripheral.h"
#include "core/ProcessCycle.h"
#include "core/Shell.h"
#include "core/watch/LatencyMeter.h"
#include "hwbus/gaugebus/Serial.h"
#include "platform/Host.h"
#include "simlink/SimCom.h"

namespace tvx {

// Colours of BoxRun, as red + 256 green + 65536 blue.
inline constexpr std::int32_t kColourRunning = 255;   // red
inline constexpr std::int32_t kColourHalted = 49152;  // green

// What the status form shows beside the flight values (ProcessCycle::Boxes()).
struct StatusView {
  std::string Caption;
  std::string LabelVersion;
  std::string BoxCurrentConfig;
  std::string AircraftWords;  // why that one, where it follows the aircraft; else empty
  std::string BoxRun = "Halted";
  std::int32_t BoxRunColour = kColourHalted;
  int TransferInterval = 0;    // BoxXferProcessTimer, SliderXferTimer, ms
  int frmXferCount = 0;        // ticks in the last second
  int boxUDPrate = 0;          // packets in the last second
  bool UdpRateVisible = true;  // boxUDPrate, Label3, Label4
  int boxNrofOffsets = 0;      // simulator ports in use
  bool ShowEngineCluster = false, ShowIOModule1 = false, ShowIOModule2 = false,
       ShowYokes = false;  // their buttons
  // The state of each link in words, and whether it needs the user's attention.
  struct Link {
    std::string Text;
    bool Trouble = false;
  };
  Link Simulator;
  Link GaugeBus;
  // The bus's own health, while it runs: what the line carries, and who is asked and answers.
  std::string BusLoad;
  std::vector<AskedGauge> AskedGauges;
  // Why the interval cannot be changed; empty where it can.
  std::string IntervalFixed;
  std::string Ignored;           // of datagrams that are not the simulator's; empty where none came lately
  std::string IgnoredAddress;    // the computer that sent most of them
  std::string Findings;          // what does not come, a line for each; empty where all does
  bool OfferDataOutput = false;  // data groups do not come: X-Plane can be asked to send them here
  std::string Flow;    // how long values take to the instruments, and what was lost; empty while halted
  std::string Notice;  // what the user must know and do once; empty where there is none
};

class StatusPresenter {
 public:
  struct Timers {
    Timer& ProcessTimer;          // TransferInterval
    Timer& Timer1;                // 1 s
    Timer& WriteCmdDuringConfig;  // 20 ms
  };
  StatusPresenter(ConfigModel& model, SimCom& sim, Serial& serial, MessageBoxes& boxes, Shell& shell,
                  const Clock& clock, Peripherals& peripherals, Timers timers);

  Registration SetChanged(std::function<void()> changed) { return changed_.Give(std::move(changed)); }
  const StatusView& View() const { return view_; }
  const ProcessCycle& Cycle() const { return cycle_; }
  GaugeReceiver& Receiver() { return receiver_; }
  bool Running() const { return running_; }
  bool Activated() const { return activated_; }

  // The status form was loaded: a new life of it begins.
  void Load();
  void SetCurrentConfig(const std::string& name);  // BoxCurrentConfig
  // What to tell on the status form where an IO module is configured: why keystrokes cannot be sent. Empty
  // where they can.
  void SetKeystrokeTrouble(std::string words) { keystrokeTrouble_ = std::move(words); }
  // Why this configuration is in use, where it follows the aircraft.
  void SetAircraftWords(const std::string& words);
  // Stops, and closes everything that was made from the configuration; the status form stays.
  void PutAway();
  // A new life with the configuration that is loaded now: prepared, and running where that is wanted.
  void TakeUp(const std::string& currentConfig, bool run);
  void Form_Activate();
  void cmdRun_Click();
  void cmdStop_Click();
  void cmdExit_Click();
  void CmdConfig_Click();
  void SliderXferTimer_Change(int milliseconds);
  void MSComm1_OnComm(SerialEvent event);
  // Writes the dump to "TVXDumpFile.txt" in the working folder, whole or not at all, and says which.
  void DumpTVX(const std::string& module, std::int16_t code, const std::string& value);
  void cmdDumpTVX_Click();
  void cmdDataOutput_Click();   // X-Plane is asked to send its data groups here
  void cmdTakeAddress_Click();  // the simulator is at IgnoredAddress
  void ShowPeripheral(PeripheralKind kind);

  void ProcessTimer_Tick();
  void Timer1_Tick();
  void WriteCmdDuringConfig_Tick();

  // Set while the configuration forms are open instead of the status form.
  bool EditingConfiguration = false;

 private:
  void Close();
  void OpenStandardPorts();
  template <typename Operation>
  void ForEachConfigured(std::initializer_list<PeripheralKind> kinds, Operation operation);
  void LoadPeripherals();
  void UnloadPeripherals();
  void StopPeripherals();
  int EffectiveInterval() const;
  bool HasYokes() const;
  void WatchLinks();
  void OnLineChanged(bool cameBack);
  void UpdateLinkWords();
  void UpdateBusHealth();
  void UpdateIgnored();
  void UpdateFindings();
  void Changed();

  ConfigModel& model_;
  SimCom& sim_;
  Serial& serial_;
  MessageBoxes& boxes_;
  Shell& shell_;
  const Clock& clock_;
  Peripherals& peripherals_;
  Timers timers_;
  Callback<> changed_;
  Registration socketErrors_, busEvents_, lineChanged_;
  StatusView view_;
  std::string keystrokeTrouble_;
  SpecialValues special_;
  ProcessCycle cycle_;
  LatencyMeter latency_;
  GaugeReceiver receiver_;
  bool activated_ = false;
  bool running_ = false;
  std::optional<std::int64_t> resendAgainAtMs_;  // every value goes out once more then
  BusLoad load_;                                 // in the last second
  std::uint64_t droppedBefore_ = 0;              // batches, when the words were last made
  std::int64_t dropShownUntilMs_ = 0;
  std::int64_t linkOpenedMs_ = 0;  // when the run started to listen
};

}  // namespace tvx
