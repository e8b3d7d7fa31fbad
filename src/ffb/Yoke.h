// One yoke: its mode, its watchdog, and the commands of each cycle.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "ffb/GripWatch.h"
#include "ffb/YokeLine.h"
#include "ffb/YokeSettings.h"
#include "ffb/forces/Feel.h"
#include "ffb/forces/ForceShaper.h"
#include "ffb/forces/SafetyGate.h"

namespace tvx {

// Colours of the mode indicator, as red + 256 green + 65536 blue.
inline constexpr std::int32_t kModeRed = 255;         // Center Mode
inline constexpr std::int32_t kModeBlue = 0xE08040;   // FFB Mode
inline constexpr std::int32_t kModeGreen = 49152;     // Follow AP mode
inline constexpr std::int32_t kModeAmber = 0x00B0FF;  // Servo Mode
inline constexpr std::int32_t kModeGrey = 0x808080;   // OFF mode

class Yoke {
 public:
  Yoke(SerialPort& port, const Clock& clock) : line_(port, clock) {}

  // Takes settings over, without a jump: a share is approached; another calibration or address shuts the gate
  // first, and counts when it is shut.
  void Configure(const YokeSettings& settings);
  const YokeSettings& Settings() const { return settings_; }

  // Chooses the mode: the commands of the next cycles are those of the new one. Forces go on without a step.
  void SelectMode(YokeMode mode);
  YokeMode Mode() const { return mode_; }
  std::int32_t ModeColour() const { return colour_; }

  // What a cycle works with.
  struct Cycle {
    const FfbVariables& values;
    const FfbSettings& settings;
    const Feel& feel;
    SafetyCause cause;  // what concerns both yokes: Halted, SimulatorSilent, NotANumber
    // The other yoke's place in counts, for Servo Mode; std::nullopt gives the forces of Center Mode.
    std::optional<std::array<double, kAxes>> follow;
    double seconds;  // since the last cycle
  };
  // One cycle of 40 ms: composes the commands and writes them.
  void ProcessTimer_Tick(const Cycle& cycle);
  // Tells the yoke to fade by itself, from now on: no more commands will come.
  void Release();

  // Why it gives no force now, and how far its gate is open.
  SafetyCause Cause() const { return cause_; }
  double Opening() const { return gate_.Opening(); }
  const YokeLine& Line() const { return line_; }
  // Its position can be relied on: calibrated, connected, answering.
  bool Usable() const;
  std::array<double, kAxes> Position() const;  // counts
  // The last command; its forces are those of the docs' table.
  const ForceCommand& Commanded() const { return shaper_.Last(); }
  // A hand has held it off the place that its servo was sent to, for a while.
  bool Gripped() const { return grip_.Gripped(); }
  // Buttons that went down since the last call, and those that are down. Bit n is button n + 1. One that is
  // down when the yoke answers for the first time, or that stays down while it does not, has not gone down.
  std::uint16_t TakePressed();
  std::uint16_t Held() const { return Usable() ? line_.LastReply().buttons : std::uint16_t{0}; }

 private:
  using Place = std::array<double, kAxes>;
  void Use(const YokeSettings& settings);
  SafetyCause OwnCause() const;
  std::optional<Place> ServoPlace(const Cycle& cycle) const;
  ForceCommand Wanted(const Cycle& cycle, const std::optional<Place>& place) const;
  void ComposeRelease();
  void ComposeForces(const ForceCommand& command, double speed);
  void ComposeFeel(const ForceCommand& command);
  void ComposeVibration(const ForceCommand& command);
  void WatchGrip(const Cycle& cycle, const std::optional<Place>& place);

  YokeLine line_;
  YokeSettings settings_;
  std::optional<YokeSettings> next_;  // to count when the gate is shut
  double share_ = 1;                  // of the forces that it gives: settings_.forceLevel, approached
  YokeMode mode_ = YokeMode::Off;
  std::int32_t colour_ = kModeGrey;
  SafetyGate gate_;
  ForceShaper shaper_;
  SafetyCause cause_ = SafetyCause::Halted;
  bool stalled_ = false;  // until the gate is shut
  bool sendAll_ = true;   // the next command is sent whole, whatever was sent before
  GripWatch grip_;
  int cyclesSinceFeel_ = 0, cyclesSinceVibration_ = 0;  // since each was sent
  std::array<int, 2> sentFeel_{};
  std::array<int, 4> sentVibration_{};
  int vibrationAgain_ = 0;  // so many more times it is sent
  std::optional<std::uint16_t> buttonsBefore_;
};

}  // namespace tvx
