// The simulator's controls in the program's hands: the overrides that let it write them, and what it writes.
#pragma once

#include <array>
#include <optional>

#include "ffb/FfbPorts.h"
#include "ffb/Pedals.h"
#include "simlink/SimCom.h"

namespace tvx {

class SimControls {
 public:
  SimControls(SimCom& sim, FfbPorts& ports) : sim_(sim), ports_(ports) {}

  // Writes the yoke's ratios (-1..1), taking the simulator's own yoke out of play first; nothing gives it
  // back. To be called each cycle.
  void Yoke(std::optional<std::array<double, 2>> ratios);
  // The same for rudder and both brakes.
  void Pedals(const std::optional<PedalRatios>& ratios);
  // Gives everything back that is taken. Sent also where the link was closed already: it is opened for that.
  void GiveBack();

  bool YokeTaken() const { return yoke_.taken; }
  bool PedalsTaken() const { return pedals_.taken; }
  // What was written last.
  const std::array<double, 2>& YokeRatios() const { return ratios_; }

 private:
  struct Group {
    bool taken = false;
    int cycles = 0;  // since the last writing of all, which a restarted simulator needs
  };
  bool Take(Group& group, bool wanted, std::array<std::string_view, 2> overrides);
  void Put(int offset, float FfbVariables::*variable, double value, bool always);

  SimCom& sim_;
  FfbPorts& ports_;
  Group yoke_, pedals_;
  std::array<double, 2> ratios_{};
};

}  // namespace tvx
