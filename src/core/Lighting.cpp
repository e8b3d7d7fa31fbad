#include "core/Lighting.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "base/Rounding.h"

namespace tvx {
namespace {

constexpr int kLevelTolerance = 20;  // of 0..1023
constexpr double kLevelsPerStep = 64.0;
constexpr int kBrightestStep = 15;
constexpr float kVoltTolerance = 6.0f;
constexpr float kPoweredVolts = 8.0f;
constexpr double kNavigationOn = 0.5;

// Lights of the simulator, as the lights mode's mask names them.
constexpr int kMaskNavigation = 1;
constexpr int kMaskInstruments = 32;

// Bits of the lighting word.
constexpr std::int32_t kWordFacesLit = 0x0001;
constexpr std::int32_t kWordBus1 = 0x0002;
constexpr std::int32_t kWordBus2 = 0x0004;
constexpr std::int32_t kWordOneStep = 0x0010;
constexpr std::int32_t kWordInstrumentLights = 0x4000;
constexpr std::int32_t kWordNavigationLights = 0x8000;

// The full level of 1023 divides to 16, which four bits cannot hold; it counts as the brightest step, not as
// dark.
int StepOf(int level) {
  return std::clamp(static_cast<int>(RoundHalfEven(level / kLevelsPerStep)), 0, kBrightestStep);
}

bool Powered(float& stored, double volts) {
  if (std::fabs(volts - static_cast<double>(stored)) > static_cast<double>(kVoltTolerance)) {
    stored = static_cast<float>(volts);
  }
  return stored >= kPoweredVolts;
}

}  // namespace

bool Lighting::Update(double level, double bus1, double bus2, double navigationLights, int setting1,
                      int setting2) {
  const int newLevel = static_cast<int>(RoundHalfEven(std::clamp(level, 0.0, 32767.0)));
  if (std::abs(newLevel - storedLevel_) > kLevelTolerance && StepOf(newLevel) != StepOf(storedLevel_)) {
    storedLevel_ = newLevel;
  }
  const int step = StepOf(storedLevel_);
  instrumentLights_ = step > 0;
  navigationLights_ = navigationLights >= kNavigationOn;
  const int sources = (navigationLights_ ? kMaskNavigation : 0) | (instrumentLights_ ? kMaskInstruments : 0);
  const bool lit = setting2 == kLightsAlways || (setting2 != kLightsNever && (sources & setting1) != 0);

  const std::int32_t word =
      step * kWordOneStep | (lit ? kWordFacesLit : 0) | (Powered(storedBus1_, bus1) ? kWordBus1 : 0) |
      (Powered(storedBus2_, bus2) ? kWordBus2 : 0) | (instrumentLights_ ? kWordInstrumentLights : 0) |
      (navigationLights_ ? kWordNavigationLights : 0);
  const bool changed = word != word_ || repeat_;
  word_ = word;
  repeat_ = false;
  return changed;
}

}  // namespace tvx
