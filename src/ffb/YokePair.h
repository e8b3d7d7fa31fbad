// Both yokes: who is master and who follows, the simulator's values, and the cycle.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "ffb/FfbPorts.h"
#include "ffb/Pedals.h"
#include "ffb/SimControls.h"
#include "ffb/Yoke.h"

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
  // Takes over settings that were changed in the configuration; modes and roles stay.
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
  const FfbSettings& Settings() const { return settings_; }
  const Feel& Flight() const { return feel_; }
  // In words, for the forms: "Master, FFB Mode", and what is wrong.
  std::string RoleText(int which) const;
  std::string StateText(int which) const;
  std::string_view GroundText() const;  // "On Ground" or "Airborne"
  bool JoystickUsable() const { return pedals_ != nullptr; }

 private:
  static int OtherThan(int which) { return which == 1 ? 2 : 1; }
  const YokeRecord& RecordOf(int which) const { return which == 2 ? model_.Yoke2 : model_.Yoke1; }
  bool Paired() const { return Configured(1) && Configured(2); }
  SafetyCause CommonCause() const;
  void StartModes();
  void StartJoystick();
  void ServeButtons(double seconds);
  void Press(int which, std::size_t button);
  void Trim(ButtonAction action, double seconds);
  void WatchRoles(double seconds);
  void WriteControls(double seconds);
  std::array<double, kAxes> MasterRatios() const;
  bool Flies() const;

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
  const YokeRecord* pedals_ = nullptr;  // whose joystick settings are used; nullptr: none
  bool loaded_ = false, running_ = false;
  int master_ = 1;
  std::int64_t lastTickMs_ = 0;
  double masterLostFor_ = 0;                         // s
  std::array<double, kAxes> blend_{};                // added to the ratios, fading: what a hand-over left
  bool flew_ = false;                                // in the last cycle
  std::array<std::optional<double>, kAxes> trim_{};  // what a held button has made of it
};

}  // namespace tvx
