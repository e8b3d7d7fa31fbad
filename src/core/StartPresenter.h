// The start form's logic: the configuration to use, the countdown, the probe of the simulator, the hand-over.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "config/ConfigFile.h"
#include "core/Shell.h"
#include "platform/Host.h"
#include "simlink/SimCom.h"
#include "simlink/beacon/SimulatorFinder.h"

namespace tvx {

class StatusPresenter;

// What the start form shows.
struct StartView {
  std::string FileName;
  std::string TextAutostart;
  bool CountdownVisible = false;  // TextAutostart, BoxAutoStartTime and Textseconds
  int BoxAutoStartTime = 0;       // seconds left, or seconds waited
  std::string SimulatorName;      // "X-Plane" once it is known
  std::string LabelXplaneVersion;
  std::string SimulatorWords;  // why it is waited for, until its version is known
  bool SimulatorTrouble = false;
  std::string Notice;  // why the automatic start did not happen; empty: it did, or is still to come
};

// "11.55.01" for 115501: the digits two by two, cut where they end ("97.00." for 9700).
std::string SimulatorVersionText(float version);

class StartPresenter {
 public:
  struct Timers {
    Timer& WaitForAutostart;      // 50 ms
    Timer& TimerWaitForFS;        // 1 s
    Timer& TimerCheckForSilence;  // never runs
  };
  StartPresenter(ConfigModel& model, ConfigFile& file, SimCom& sim, SimulatorFinder& finder,
                 MessageBoxes& boxes, Shell& shell, const Clock& clock, StatusPresenter& run, Timers timers);

  // Called after every change of View().
  Registration SetChanged(std::function<void()> changed) { return changed_.Give(std::move(changed)); }
  const StartView& View() const { return view_; }
  // Listens for simulators on the network for as long as the Registration lives; see SimulatorFinder.
  Registration WatchSimulators(std::function<void()> changed) { return finder_.Listen(std::move(changed)); }
  const SimulatorFinder& Finder() const { return finder_; }
  bool IsInUse(const FoundSimulator& simulator) const;

  void Activate();  // the start form was shown
  void WaitForAutostart_Tick();
  void TimerWaitForFS_Tick();
  void butOK_Click();
  void FileBox_Click(const std::string& name);
  void FileName_Change(const std::string& name);  // the user typed another name
  void CmdConfigure_Click();
  void Exit_Click();
  // Takes a simulator's address and port over into the configuration, which counts as changed, and looks for
  // it there. They hold for this file also when it is loaded once more for the start.
  void TakeSimulator(const FoundSimulator& simulator);

 private:
  // The steps of looking for the simulator.
  enum class ProbeState { OpenLink, OpenPort, ReadVersion, CloseLink, Done };

  void ProbeDuringCountdown();
  bool OpenProbePort();  // false: no port for the simulator's version
  bool ReadVersion();    // true once the simulator has told its version
  void ShowSimulator();
  void CloseProbe();
  void ProbeAnew();
  void LoadFile();
  void UpdateWords();
  std::string WhyNotLoaded() const;
  void AutoStartRun();
  void HandOver();  // to the status form, halted
  void ShowCountdown(bool visible);
  void Changed();

  ConfigModel& model_;
  ConfigFile& file_;
  SimCom& sim_;
  MessageBoxes& boxes_;
  SimulatorFinder& finder_;
  Shell& shell_;
  const Clock& clock_;
  StatusPresenter& run_;
  Timers timers_;
  Callback<> changed_;
  StartView view_;
  bool firstLoadDone_ = false;
  ProbeState probeState_ = ProbeState::OpenLink;
  std::uint16_t probeTicks_ = 0;  // since the last step of the countdown
  Port probePort_ = kNoPort;
  float simVersion_ = 0;
  std::int64_t probeSinceMs_ = 0;  // when it was begun to look for the simulator where it is looked for now
  std::optional<FoundSimulator> taken_;  // by the user, for this file
};

}  // namespace tvx
