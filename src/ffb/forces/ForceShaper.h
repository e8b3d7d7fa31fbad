// From what a yoke's hand should feel to what it is told: limits and slew rates, and changes of mode without
// a step.
#pragma once

#include <array>
#include <cstddef>

#include "ffb/forces/Forces.h"

namespace tvx {

// How a yoke's motors work: against a spring that the yoke itself computes, or to a place.
enum class Drive { Spring, Servo };

// One axis of what is wanted, or of what is commanded. Positions are counts (-511..511), forces shares of
// what the yoke can give.
struct AxisForce {
  double centre = 0;     // Spring: where it rests. Servo: where it goes
  double gradient = 0;   // Spring: force at full travel from the centre, 0..1. Servo: the force it may use
  double bias = 0;       // -1..1, added
  double amplitude = 0;  // of the vibration, 0..1
  double frequency = 0;  // Hz
};
struct ForceCommand {
  Drive drive = Drive::Spring;
  std::array<AxisForce, kAxes> axes{};
  // Wanted: of everything together, vibration included. Commanded: of everything but the vibration, 0..1.
  double limit = 0;
  double friction = 0;  // 0..1
  double damping = 0;   // 0..1
};

// Largest rates of change of what is commanded, a second. Together they change the force on a hand that holds
// the yoke still by no more than kLargestStep in a cycle of 40 ms (a fifth of what the yoke can give).
inline constexpr double kGradientSlew = 0.8;
inline constexpr double kCentreSlew = 0.8 * 511;  // counts
inline constexpr double kBiasSlew = 1.2;
inline constexpr double kAmplitudeSlew = 0.8;
inline constexpr double kLimitSlew = 1.0;  // downwards
inline constexpr double kLimitRise = 0.8;  // of the new limit: from none to all in 1.25 s, whatever it is
inline constexpr double kLargestAmplitude = 0.3;
inline constexpr double kLargestStep = 0.2;
// A yoke's servo gives its whole force this many counts away from its place.
inline constexpr double kServoBand = 64;
// A cycle that comes late counts as no longer than this, seconds.
inline constexpr double kLongestCycle = 0.1;

// The force of a command on a hand that holds the axis at `position` counts; the vibration is not counted.
double HandForce(const ForceCommand& command, Axis axis, double position);

// A yoke's own bearings need less force than this, and friction of 1 is so much.
inline constexpr double kBearings = 0.02;
inline constexpr double kWholeFriction = 0.2;
// What one axis gives at `position` counts, by source: shares of what the yoke can give, with signs but for
// vibration and friction.
struct ForceSources {
  double main = 0;       // spring or servo
  double bias = 0;       // gusts, and what a change of drive has left
  double vibration = 0;  // amplitude
  double friction = 0;
};
ForceSources SourcesOf(const ForceCommand& command, Axis axis, double position);

class ForceShaper {
 public:
  // The next command, `seconds` after the last, towards `wanted`, whose values are brought into their ranges.
  // `gate` (0..1) scales every force. All forces together never exceed the wanted limit, vibration included,
  // which has at most half of it. `servoSpeed` is in counts a second. When the drive changes, the new one
  // begins where the yoke is and with the force that the hand feels, and goes on from there.
  const ForceCommand& Next(const ForceCommand& wanted, const std::array<double, kAxes>& positions,
                           double gate, double servoSpeed, double seconds);
  // Forgets the past: the next command begins without force, where the yoke is.
  void Restart() { started_ = false; }
  const ForceCommand& Last() const { return gated_; }

 private:
  void ChangeDrive(Drive drive, const std::array<double, kAxes>& positions);

  ForceCommand now_;    // before the gate
  ForceCommand gated_;  // what was commanded
  bool started_ = false;
};

}  // namespace tvx
