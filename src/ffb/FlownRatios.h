// The ratios that the simulator's yoke is given: they go on from where they are, whoever flies.
#pragma once

#include <array>
#include <optional>

#include "ffb/forces/Forces.h"

namespace tvx {

using Ratios = std::array<double, kAxes>;  // -1..1, right and back positive

class FlownRatios {
 public:
  // Most that a ratio changes at once, and in a second.
  static constexpr double kLargestStep = 0.1;
  static constexpr double kSlew = 2.5;
  // So far one goes in a cycle of so many seconds.
  static double StepOf(double seconds);
  // What another source left fades so fast, a second.
  static constexpr double kBlendRate = 1;

  // The simulator has its own yoke, which stands here (counted -1..1).
  void GivenBack(const Ratios& there = {}) { now_ = there, blend_ = {}; }
  // Another source flies from now on, which stands at `own`: the difference fades.
  void GoOnWith(const Ratios& own);
  // One cycle of a source that stands at `own`, `seconds` after the last.
  const Ratios& Follow(const Ratios& own, double seconds);
  // One cycle without a source: towards the middle. True when it is reached.
  bool Leave(double seconds);
  const Ratios& Now() const { return now_; }

 private:
  Ratios now_{};
  Ratios blend_{};  // added to the source's
};

}  // namespace tvx
