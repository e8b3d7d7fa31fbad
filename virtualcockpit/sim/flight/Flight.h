// The scripted flight: one circuit from engine start to shut-down, the same every time.
#pragma once

#include <cstdint>
#include <vector>

#include "virtualcockpit/sim/flight/FlightState.h"

namespace tvx::vc {

// What the crew has set and the instruments depend on.
struct FlightSettings {
  double barometer = 29.92;  // inHg
  double course1 = 240;      // magnetic
  double course2 = 60;
};

class Flight {
 public:
  // The flight lasts this long and then begins again, without a jump.
  static constexpr double kSeconds = 270;

  Flight();

  // The state `seconds` after the start; later than kSeconds it is the next round. Pure: the same time and
  // settings give the same state. A time that is no finite number counts as 0.
  FlightState StateAt(double seconds, const FlightSettings& settings = {}) const;

 private:
  // What has to be summed up over time, kept ten times a second.
  struct Sum {
    double altitude = 0, heading = 0, east = 0, north = 0;
    double oilTemperature = 0, exhaustTemperature = 0, headTemperature = 0, fuelUsed = 0;
  };
  static constexpr double kStep = 0.1;

  void SumUp();
  void CloseTheCircle();
  Sum SumAt(double time) const;

  double descentScale_ = 1;
  double turnScale_[4] = {1, 1, 1, 1};
  std::vector<Sum> sums_;
};

}  // namespace tvx::vc
