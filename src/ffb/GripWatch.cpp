#include "ffb/GripWatch.h"

#include <algorithm>
#include <cmath>

#include "ffb/forces/ForceShaper.h"

namespace tvx {
namespace {

constexpr double kGripSeconds = 0.2;   // a knock is no grip
constexpr double kGripCycle = 0.04;    // a late cycle is one look at the yoke, and counts as no more
constexpr double kServoLag = 0.15;     // s: how far behind a moving place a yoke without a hand may be
constexpr double kOnItsWay = 150;      // counts/s, of a servo of kStrongServo
constexpr double kStrongServo = 0.48;  // a weaker one moves the yoke slower in proportion
constexpr double kOfDrag = 2;          // a hand has to be told from so much of the drag

}  // namespace

std::optional<double> LeastGrip(double force, double friction) {
  const double drag = kOfDrag * (kBearings + kWholeFriction * friction);
  if (!(force >= drag)) return std::nullopt;
  return kServoBand * drag / force;
}

void GripWatch::Restart() {
  settled_ = gripped_ = false;
  heldFor_ = 0;
}

// That the yoke stands where the servo is told to be is not enough to have settled, since the servo begins at
// the place where the yoke stands.
void GripWatch::Look(const Sight& sight) {
  const auto least = LeastGrip(sight.force, sight.friction);
  if (sight.threshold <= 0 || !least) return LookAway();
  const double threshold = std::max(sight.threshold, *least);
  double off = 0, moved = 0, away = 0, towards = 0;
  for (std::size_t i = 0; i < kAxes; ++i) {
    const double place = sight.places[i];
    const double step = sight.positions[i] - positionsBefore_[i];
    if (std::abs(sight.positions[i] - place) > off) {
      off = std::abs(sight.positions[i] - place);
      towards = place > sight.positions[i] ? step : -step;
    }
    moved = std::max(moved, std::abs(place - placesBefore_[i]));
    away = std::max(away, std::abs(sight.goals[i] - place));
    placesBefore_[i] = place;
  }
  positionsBefore_ = sight.positions;
  const double seconds = sight.seconds;
  const double lag = seconds > 0 ? kServoLag * moved / std::min(seconds, kLongestCycle) : 0;
  if (off < threshold / 2 && away < threshold / 2) settled_ = true;
  const bool held = settled_ && off > threshold + lag;
  // A yoke that goes to its place by itself is still on its way: no hand holds it.
  const bool onItsWay = towards > kOnItsWay * std::min(sight.force / kStrongServo, 1.0) * seconds;
  if (!held) heldFor_ = 0;
  if (held && !onItsWay) heldFor_ += std::min(seconds, kGripCycle);
  if (heldFor_ >= kGripSeconds) gripped_ = true;
}

}  // namespace tvx
