#include "ffb/FlownRatios.h"

#include <algorithm>

#include "ffb/forces/ForceShaper.h"

namespace tvx {
namespace {

void Approach(double& value, double target, double step) {
  value += std::clamp(target - value, -step, step);
}

}  // namespace

double FlownRatios::StepOf(double seconds) {
  return std::min(kSlew * std::clamp(seconds, 0.0, kLongestCycle), kLargestStep);
}

void FlownRatios::GoOnWith(const Ratios& own) {
  for (std::size_t i = 0; i < kAxes; ++i) blend_[i] = now_[i] - own[i];
}

const Ratios& FlownRatios::Follow(const Ratios& own, double seconds) {
  seconds = std::clamp(seconds, 0.0, kLongestCycle);
  for (std::size_t i = 0; i < kAxes; ++i) {
    Approach(blend_[i], 0, kBlendRate * seconds);
    Approach(now_[i], std::clamp(own[i] + blend_[i], -1.0, 1.0), StepOf(seconds));
  }
  return now_;
}

bool FlownRatios::Leave(double seconds) {
  const double step = kBlendRate * std::clamp(seconds, 0.0, kLongestCycle);
  for (double& ratio : now_) Approach(ratio, 0, step);
  return now_ == Ratios{};
}

}  // namespace tvx
