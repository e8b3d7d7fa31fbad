// Both yokes: who is master and who follows, the simulator's values, and the cycle.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "ffb/FfbPorts.h"
#include "ffb/FlownRatios.h"
#include "ffb/SimControls.h"
#include "ffb/Yoke.h"
#include "ffb/pedals/PedalDevices.h"
#include "ffb/pedals/Pedals.h"

namespace tvx {

class YokePair {
 public:
  // `processTimer` is switched here; its owner calls ProcessTimer_Tick.
  YokePair(ConfigModel& model, SimCom& sim, SerialPort& yoke1, SerialPort& yoke2, MessageBoxes& boxes,
           const Clock& clock, JoystickDevice& joystick, Timer& processTimer);

  static constexpr int kIntervalMs = 40;

  // Reads the settings and starts the cycle, without forces. Opens no port.
  void Load();
  // Ends the cycle: the simulator gets its controls back, the yokes are told to fade.
  void Unload();
  bool Loaded() const { return loaded_; }
  // Opens the simulator ports; the ones before are forgotten.
  void OpenPorts();
  void cmdRun_Click();
  void cmdStop_Click();  // forces fade within kFadeMs; the controls are given back at once
  bool Running() const { return running_; }
  void ProcessTimer_Tick();
  // Takes over settings that were changed in the configuration; modes and roles stay. Pedals whose settings
  // cannot be used any more are given back.
  void ApplySettings();

  // Yokes are counted 1 and 2 here, as on the forms.
  bool Configured(int which) const;
  Yoke& Of(int which) { return which == 2 ? yoke2_ : yoke1_; }
  const Yoke& Of(int which) const { return which == 2 ? yoke2_ : yoke1_; }
  int Master() const { return master_; }
  bool IsSlave(int which) const { return Paired() && which != master_; }
  // Makes a yoke the master, without a step in position or force: the new one goes on in the old one's mode
  // from where it stands, the old one follows in Servo Mode. No effect where it is master already, is not
  // configured, or (while running) cannot be relied on.
  void HandOver(int which);
  // Chooses a yoke's mode. A slave that leaves Servo Mode stays slave; it just does not follow.
  void SelectMode(int which, YokeMode mode) { Of(which).SelectMode(mode); }

  const FfbPorts& Ports() const { return ports_; }
  const SimControls& Controls() const { return controls_; }
  Registration SetTaken(std::function<void(TakenGroups)> told) { return controls_.SetTaken(std::move(told)); }
  const FfbSettings& Settings() const { return settings_; }
  const Feel& Flight() const { return feel_; }
  // From how many counts off its place on a hand's grip can be told, with these settings; std::nullopt where
  // the servo is too weak for it, or no threshold is set.
  std::optional<int> GripFrom(int which) const;
  // In words, for the forms: "Master, FFB Mode", and what is wrong.
  std::string RoleText(int which) const;
  std::string StateText(int which) const;
  std::string_view GroundText() const;  // "On Ground" or "Airborne"
  // How rudder and brakes stand, in words; empty where no yoke has the option.
  std::string PedalText();
  PedalDevices& Joysticks() { return joysticks_; }
  // Rudder and brakes as X-Plane was told them last, where they come from the device of this yoke's settings;
  // null where they do not.
  const PedalRatios* PedalsOf(int which) const {
    return pedals_ == &RecordOf(which) && controls_.PedalsTaken() ? &pedalRatios_ : nullptr;
  }

 private:
  static int OtherThan(int which) { return which == 1 ? 2 : 1; }
  const YokeRecord& RecordOf(int which) const { return which == 2 ? model_.Yoke2 : model_.Yoke1; }
  bool Paired() const { return Configured(1) && Configured(2); }
  SafetyCause CommonCause() const;
  void StartModes();
  const YokeRecord* PedalRecord() const;
  void StartPedals();
  void CheckPedals();
  void ServeButtons(double seconds);
  void Press(int which, std::size_t button);
  void Trim(ButtonAction action, double seconds);
  void WatchRoles(double seconds);
  void DisconnectAutopilot();
  void HoldAutopilotOff(double seconds);
  void MoveTrim(double seconds);
  std::optional<Ratios> PlaceToFollow(int which);
  void WriteControls(double seconds);
  void WritePedals(double seconds);
  Ratios MasterRatios() const;
  bool MayFly() const;
  bool Flies() const;
  bool MasterMissed() const;

  ConfigModel& model_;
  SimCom& sim_;
  MessageBoxes& boxes_;
  const Clock& clock_;
  Timer& timer_;
  FfbPorts ports_;
  SimControls controls_;
  clsJoy joystick_;
  Yoke yoke1_, yoke2_;
  FfbSettings settings_;
  Feel feel_;
  PedalDevices joysticks_;
  const YokeRecord* pedals_ = nullptr;  // whose joystick settings are used; nullptr: none
  bool pedalsComplete_ = false;         // those settings
  PedalState pedalState_ = PedalState::Usable;
  PedalRatios pedalRatios_;  // as the simulator has them
  bool loaded_ = false, running_ = false;
  int master_ = 1;
  std::int64_t lastTickMs_ = 0;
  double masterLostFor_ = 0;           // s
  std::optional<Ratios> masterPlace_;  // where it was last known to be, counts
  FlownRatios flown_;
  bool flew_ = false;                       // in the last cycle
  std::optional<Ratios> autopilot_;         // its place, where it held the controls in the last cycle
  double disconnecting_ = 0;                // s that are left of it: the autopilot counts as off
  int disconnectCycles_ = 0;                // since it was told
  std::array<double, kAxes> trimCentre_{};  // where trim puts the spring's centre, approached, counts
  std::array<std::optional<double>, kAxes> trim_{};  // what a held button has made of it
};

}  // namespace tvx
