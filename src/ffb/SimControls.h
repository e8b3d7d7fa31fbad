// The simulator's controls in the program's hands: the overrides that let it write them, and what it writes.
#pragma once

#include <array>
#include <optional>

#include "ffb/FfbPorts.h"
#include "ffb/Pedals.h"
#include "ffb/forces/Forces.h"
#include "simlink/SimCom.h"

namespace tvx {

class SimControls {
 public:
  SimControls(SimCom& sim, FfbPorts& ports) : sim_(sim), ports_(ports) {}

  // Writes the yoke's ratios (-1..1), having taken the simulator's own yoke out of play; std::nullopt gives
  // it back. To be called each cycle.
  void Yoke(std::optional<std::array<double, kAxes>> ratios);
  // The same for rudder and both brakes.
  void Pedals(const std::optional<PedalRatios>& ratios);
  // Gives everything back that is taken. Sent also where the link was closed already: it is opened for that.
  void GiveBack();

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

  SimCom& sim_;
  FfbPorts& ports_;
  Group yoke_, pedals_;
  std::array<double, kAxes> ratios_{};
};

}  // namespace tvx
