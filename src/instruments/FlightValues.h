// The program's own flight values, read once a tick, and as the status form shows them.
#pragma once

#include "base/NumberFormat.h"

namespace tvx {

struct FlightValues {
  double Airspeed = 0;          // kt
  double Altitude = 0;          // ft
  double Heading = 0;           // degrees
  double Bank = 0;              // degrees
  double Pitch = 0;             // degrees
  double VerticalSpeed = 0;     // ft/min
  double Compass = 0;           // degrees
  double AirPressureHg = 0;     // inHg
  double Voltage = 0;           // V, first bus
  double Voltage2 = 0;          // V, second bus
  double InstrumentLights = 0;  // 0..1023
  double NavigationLights = 0;  // 0 off
  int BrightnessStep = 0;       // of the faces, 0..15, as the lighting word has it
  // The altitude as BoxAltitude shows it: whole feet.
  double ShownAltitude = 0;
};

inline constexpr double kMillibarPerInchHg = 33.86;

// The texts of the status form's flight-value boxes.
struct FlightBoxes {
  ShortText BoxIAS, BoxAltitude, BoxHea, boxBank, boxPitch, BoxVS, boxCompass, BoxAirPressHg, BoxAirPressmBar,
      boxVoltage;
  std::string_view BoxInstrLights = "OFF", boxNavLights = "OFF";
};

}  // namespace tvx
