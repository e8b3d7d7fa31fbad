// The scripted flight in somebody's hands: what a pilot adds to it.
#pragma once

#include "virtualcockpit/sim/flight/FlightState.h"

namespace tvx::vc {

// While the simulator's own joystick is overridden, the yoke's ratios bank and pitch the aircraft away from
// the script, and heading, height and airspeed follow. In free hands it comes back to the script by itself.
// Nothing of it is aerodynamics: enough that a yoke can be felt to do something, and the same for the same
// hands.
class HandFlight {
 public:
  struct Hands {
    bool roll = false, pitch = false;  // the override is set
    double rollRatio = 0, pitchRatio = 0;
  };
  // Changes a state of the script into the one that is flown, `seconds` after the last.
  void Apply(FlightState& state, const Hands& hands, double seconds);

 private:
  double bank_ = 0, pitch_ = 0;      // degrees beside the script
  double heading_ = 0, height_ = 0;  // degrees, ft
  double airspeed_ = 0;              // kt
};

}  // namespace tvx::vc
