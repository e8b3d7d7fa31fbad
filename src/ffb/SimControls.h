// The simulator's controls in the program's hands: the overrides that let it write them, and what it writes.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string_view>

#include "base/Registration.h"
#include "ffb/FfbPorts.h"
#include "ffb/forces/Forces.h"
#include "ffb/pedals/Pedals.h"
#include "simlink/SimCom.h"

namespace tvx {

// With these on, the simulator leaves its own yoke, or its pedals, out of play.
inline constexpr std::array<std::string_view, 2> kYokeOverrides = {
    "sim/operation/override/override_joystick_roll", "sim/operation/override/override_joystick_pitch"};
inline constexpr std::array<std::string_view, 2> kPedalOverrides = {
    "sim/operation/override/override_joystick_heading", "sim/operation/override/override_toe_brakes"};
struct TakenGroups {
  bool yoke = false, pedals = false;
  bool operator==(const TakenGroups&) const = default;
};

class SimControls {
 public:
  SimControls(SimCom& sim, FfbPorts& ports) : sim_(sim), ports_(ports) {}

  // Writes the yoke's ratios (-1..1), having taken the simulator's own yoke out of play; std::nullopt gives
  // it back. To be called each cycle.
  void Yoke(std::optional<std::array<double, kAxes>> ratios);
  // The same for rudder and both brakes.
  void Pedals(const std::optional<PedalRatios>& ratios);
  // Gives everything back that is taken. Sent also where the link was closed already: it is opened for that.
  // Where it cannot be opened, what is taken stays so.
  void GiveBack();

  // Told what is taken: before it is, once a second while it is, and after some of it was given back.
  Registration SetTaken(std::function<void(TakenGroups)> told) { return told_.Give(std::move(told)); }

  bool YokeTaken() const { return yoke_.taken; }
  bool PedalsTaken() const { return pedals_.taken; }
  // What was written last.
  const std::array<double, kAxes>& YokeRatios() const { return ratios_; }

 private:
  struct Group {
    bool taken = false;
    int cycles = 0;  // since everything was written, which a restarted simulator needs
  };
  bool Take(Group& group, bool wanted, std::array<std::string_view, 2> overrides);
  void Put(int offset, double value, bool always);
  void Tell() { told_({yoke_.taken, pedals_.taken}); }

  SimCom& sim_;
  FfbPorts& ports_;
  Group yoke_, pedals_;
  std::array<double, kAxes> ratios_{};
  Callback<TakenGroups> told_;
};

}  // namespace tvx
