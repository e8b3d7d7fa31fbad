// Whether a hand holds a yoke against its servo.
#pragma once

#include <array>
#include <optional>

#include "ffb/forces/Forces.h"

namespace tvx {

// How far off its place (counts) a servo of `force` (a share of what the yoke can give) lets a hand be told
// from the drag that it meets without one, with the commanded `friction`; std::nullopt where it is so weak
// that none can.
std::optional<double> LeastGrip(double force, double friction);

class GripWatch {
 public:
  // Forgets what was seen: the yoke has to reach its place anew before a grip counts.
  void Restart();
  // One cycle of a yoke whose servo has its whole force.
  struct Sight {
    std::array<double, kAxes> positions;  // where it is, counts
    std::array<double, kAxes> places;     // where its servo is told to be now
    std::array<double, kAxes> goals;      // and in the end
    double threshold;                     // counts off its place that are a grip; 0 or less: none ever is
    double force, friction;               // of the servo; 0..1
    double seconds;                       // since the last cycle
  };
  // A grip is a deflection against the servo for a while, by more than the threshold and LeastGrip. The yoke
  // must have been at its goal before: one whose pilot has just given control away, and still holds it, is
  // not gripped.
  void Look(const Sight& sight);
  // The forces are not whole: a deflection says nothing of a hand.
  void LookAway() { heldFor_ = 0; }
  bool Gripped() const { return gripped_; }

 private:
  bool settled_ = false;
  bool gripped_ = false;
  double heldFor_ = 0;                           // s
  std::array<double, kAxes> placesBefore_{};     // counts
  std::array<double, kAxes> positionsBefore_{};  // counts
};

}  // namespace tvx
