// How the stand-ins behave: one table for all of them.
#pragma once

#include "drawn/Device.h"
#include "virtualcockpit/bus/Drawn.h"
#include "virtualcockpit/pace/SerialWire.h"
#include "virtualcockpit/sim/SimTraits.h"
#include "virtualcockpit/yokes/YokeDevice.h"

namespace tvx::vc {

struct Traits {
  SimTraits simulator;
  LineTraits lines;
  DeviceTraits devices;
  YokeTraits yokes;
  bool operator==(const Traits&) const = default;

  // As real hardware and the real simulator do.
  static Traits Real() { return {}; }
  // Instant, whole and forgiving: for a look at one thing without the others.
  static Traits Easy() {
    Traits easy;
    easy.simulator.frameMs = 50;
    easy.simulator.requestsPerFrame = 0;
    easy.simulator.usualBuffer = easy.simulator.dataToTarget = easy.simulator.forgetsValues = false;
    easy.simulator.onlyKnownNames = easy.simulator.ownSendPort = easy.simulator.beacon = false;
    easy.lines.paced = false;
    easy.devices = {.handRules = true, .startsAnew = false};
    easy.yokes = {.paced = false, .riseSeconds = 0};
    return easy;
  }
  // What counts where nothing else is said.
  static Traits Default() { return Real(); }
};

}  // namespace tvx::vc
