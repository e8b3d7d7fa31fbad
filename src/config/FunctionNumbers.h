// The Functions that the program and its instruments use by number (docs/instruments.md, "The program's own
// Functions").
#pragma once

namespace tvx::functions {

inline constexpr int kAirspeed = 1;
inline constexpr int kAltitude = 2;
inline constexpr int kHeading = 3;
inline constexpr int kBank = 4;
inline constexpr int kPitch = 5;
inline constexpr int kVerticalSpeed = 6;
inline constexpr int kCompass = 7;
inline constexpr int kAirPressure = 8;
inline constexpr int kVoltage = 9;  // sequence number 2: of the second bus
inline constexpr int kTimeOfDay = 10;
inline constexpr int kOutsideTemperature = 13;
inline constexpr int kInstrumentLights = 14;
inline constexpr int kNavigationLights = 16;
inline constexpr int kRadio1Active = 20;
inline constexpr int kRadio2Active = 21;
inline constexpr int kRadio1Standby = 22;
inline constexpr int kRadio2Standby = 23;
inline constexpr int kTransponderCode = 26;  // sequence number 2: of a second transponder
inline constexpr int kDmeDistance =
    27;  // sequence numbers 1 and 2: the receivers; 4: which of them is the source
inline constexpr int kDmeSpeed = 28;
inline constexpr int kDmeTime = 29;
inline constexpr int kDmeFrequency = 30;
inline constexpr int kAdfBearing = 31;
inline constexpr int kAdfCard = 32;
inline constexpr int kVorCourse = 33;  // sequence number 2 of these four: the second receiver
inline constexpr int kVorGlideSlope = 34;
inline constexpr int kVorToFrom = 35;
inline constexpr int kVorGlideSlopeReceived = 36;
inline constexpr int kMarkerBeacon = 38;  // sequence numbers 1 outer, 2 middle, 3 inner
inline constexpr int kTransponderIdent = 46;
inline constexpr int kTransponderMode = 47;  // sequence number 2: whether it reports the altitude
inline constexpr int kRmiVor = 143;          // sequence number 2: the second receiver
inline constexpr int kRmiAdf = 144;          // likewise
inline constexpr int kAutopilotFlies = 280;
inline constexpr int kElevatorTrim = 281;
inline constexpr int kSimulatorVersion = 300;

// The numbers from here to 269 are the user's.
inline constexpr int kFirstOfUser = 51;

}  // namespace tvx::functions
