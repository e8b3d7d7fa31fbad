// Everything that the stand-in simulator knows of its aircraft at one moment.
#pragma once

#include <string_view>

namespace tvx::vc {

// Angles in degrees, altitudes in feet, speeds in knots unless said. Switches are 0 or 1.
struct FlightState {
  double time = 0;  // s since the flight's start
  std::string_view phase;

  double airspeed = 0, trueAirspeed = 0, groundSpeed = 0, mach = 0;
  double altitude = 0, indicatedAltitude = 0, heightAboveGround = 0, onGround = 1;
  double verticalSpeed = 0;  // ft/min
  double heading = 0, headingMagnetic = 0, compass = 0, variation = 0;
  double bank = 0, pitch = 0, turnRate = 0, slip = 0, angleOfAttack = 0, gForce = 1;
  double pitchRate = 0, rollRate = 0;                       // degrees/s
  double latitude = 0, longitude = 0, east = 0, north = 0;  // the last two in m from the runway's threshold

  double throttle = 0, mixture = 0, rpm = 0, manifold = 0, power = 0;      // 0..1, 0..1, 1/min, inHg, hp
  double fuelFlow = 0, fuelPressure = 0, oilPressure = 0;                  // lb/h, psi, psi
  double oilTemperature = 0, exhaustTemperature = 0, headTemperature = 0;  // degrees Celsius
  double fuelLeft = 0, fuelRight = 0;                                      // lb
  double vacuum = 0;                                                       // inHg
  double bus1 = 0, bus2 = 0, battery = 0;                                  // V
  double batteryAmps = 0, generatorAmps = 0;
  double batteryOn = 0, generatorOn = 0, avionicsOn = 0, starter = 0, engineRunning = 0;

  double flaps = 0, elevator = 0, aileron = 0, rudder = 0, elevatorTrim = 0, brakes = 0;
  // Where the script has elevator and aileron, also while a hand flies instead.
  double scriptedElevator = 0, scriptedAileron = 0;
  double stallWarning = 0;
  double seaLevelPressure = 29.92, ambientPressure = 29.92, ambientTemperature = 15;  // inHg, inHg, C
  double windSpeed = 0, windDirection = 0;

  double instrumentLights = 0;  // 0..1
  double navigationLights = 0, beacon = 0, strobes = 0, landingLights = 0, taxiLight = 0;

  // Deviations in dots, right of course and above the glide path positive for the needle's way; flag 0 off,
  // 1 to, 2 from.
  double nav1Deviation = 0, nav1Glide = 0, nav1Flag = 0, nav1GlideFlag = 0, nav1Bearing = 0, nav1Distance = 0;
  double nav2Deviation = 0, nav2Flag = 0, nav2Bearing = 0, nav2Distance = 0;
  double nav1GlideReceived = 0;
  double nav1Minutes = 0, nav2Minutes = 0;        // to the station at this speed
  double adfBearing = 0, adfBearingMagnetic = 0;  // the first relative
  double outerMarker = 0, middleMarker = 0, innerMarker = 0;

  double lowVacuum = 0, lowVolts = 0, lowOilPressure = 0, lowFuel = 0;
  double zuluSeconds = 0, localSeconds = 0;
};

}  // namespace tvx::vc
