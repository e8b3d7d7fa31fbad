// The kinds of instruments on the gauge bus, by the code with which they answer.
#pragma once

#include "base/Bytes.h"

namespace tvx::drawn::gaugetype {

inline constexpr Byte kSmallNeedle = 1, kNeedleAndDisplay = 2, kTwoNeedlesBeside = 3, kLargeNeedle = 4,
                      kLargeTwoNeedles = 5, kSmallTwoNeedles = 6, kClusterHousing = 8, kIOModule = 10;
inline constexpr Byte kAltimeter = 101, kAttitude = 103, kClock = 104, kHeading = 105, kVor1 = 106,
                      kVor2 = 107, kAdf = 108, kClockWithTemperature = 109;
inline constexpr Byte kRadioA = 110, kRadioB = 111, kTransponderA = 112, kDme = 113, kTransponderB = 114;
inline constexpr Byte kComNav = 120, kAdfRadio = 121, kKeyedTransponder = 122, kDmeWithFrequency = 123,
                      kAutopilot = 124, kAudio = 125, kRmi = 130, kTrim = 140;

}  // namespace tvx::drawn::gaugetype
