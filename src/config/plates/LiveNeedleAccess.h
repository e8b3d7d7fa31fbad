// A live needle that follows the hand of whoever calibrates it.
#pragma once

namespace tvx {

struct CalibrationTarget;

class LiveNeedleAccess {
 public:
  virtual ~LiveNeedleAccess() = default;
  // Moves the target's needle to a position 0..1079; never waits.
  virtual void MoveNeedle(const CalibrationTarget& target, int position) = 0;
};

}  // namespace tvx
