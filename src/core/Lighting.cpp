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
constexpr int kModeAlwaysLit = 1;
constexpr int kModeNeverLit = 2;

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
  const bool navigation = navigationLights >= kNavigationOn;
  const int sources = (navigation ? kMaskNavigation : 0) | (step > 0 ? kMaskInstruments : 0);
  const bool lit = setting2 == kModeAlwaysLit || (setting2 != kModeNeverLit && (sources & setting1) != 0);

  lightByte_ = (step > 0 ? 0x40 : 0) | (navigation ? 0x80 : 0);
  const int lightingByte =
      step * 16 | (lit ? 1 : 0) | (Powered(storedBus1_, bus1) ? 2 : 0) | (Powered(storedBus2_, bus2) ? 4 : 0);
  const std::int32_t word = lightingByte | (lightByte_ << 8);
  const bool changed = word != word_ || repeat_;
  word_ = word;
  repeat_ = false;
  return changed;
}

}  // namespace tvx
