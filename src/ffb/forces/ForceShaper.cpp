#include "ffb/forces/ForceShaper.h"

#include <algorithm>
#include <cmath>

namespace tvx {
namespace {

constexpr double kVibrationShare = 0.5;  // of the limit, at most

// Within its range; `otherwise` for what is no number.
double Within(double value, double lowest, double highest, double otherwise = 0) {
  return std::isnan(value) ? otherwise : std::clamp(value, lowest, highest);
}

void Approach(double& value, double target, double rate, double seconds) {
  value += std::clamp(target - value, -rate * seconds, rate * seconds);
}

// Of spring or servo alone, without the limit.
double MainForce(const ForceCommand& command, const AxisForce& force, double position) {
  const double away = force.centre - position;
  if (command.drive == Drive::Spring) return force.gradient * away / kYokeTravel;
  return force.gradient * std::clamp(away / kServoBand, -1.0, 1.0);
}

}  // namespace

double HandForce(const ForceCommand& command, Axis axis, double position) {
  const AxisForce& force = command.axes[static_cast<std::size_t>(axis)];
  return std::clamp(MainForce(command, force, position) + force.bias, -command.limit, command.limit);
}

ForceSources SourcesOf(const ForceCommand& command, Axis axis, double position) {
  const AxisForce& force = command.axes[static_cast<std::size_t>(axis)];
  ForceSources sources;
  sources.main = std::clamp(MainForce(command, force, position), -command.limit, command.limit);
  const double both = HandForce(command, axis, position);
  sources.bias = both - sources.main;
  sources.vibration = force.amplitude;
  sources.friction = std::min(command.friction * kWholeFriction, command.limit - std::abs(both));
  return sources;
}

void ForceShaper::ChangeDrive(Drive drive, const std::array<double, kAxes>& positions) {
  for (std::size_t i = 0; i < kAxes; ++i) {
    AxisForce& axis = now_.axes[i];
    // The hand's force goes on as a bias, and fades from there.
    const double bias = started_ ? HandForce(now_, static_cast<Axis>(i), positions[i]) : 0;
    axis.centre = positions[i];
    axis.gradient = 0;
    axis.bias = bias;
    if (!started_) axis.amplitude = 0;
  }
  if (!started_) now_.limit = now_.friction = now_.damping = 0;
  now_.drive = drive;
  started_ = true;
}

const ForceCommand& ForceShaper::Next(const ForceCommand& wanted, const std::array<double, kAxes>& positions,
                                      double gate, double servoSpeed, double seconds) {
  seconds = Within(seconds, 0, kLongestCycle);
  gate = Within(gate, 0, 1);
  if (!started_ || wanted.drive != now_.drive) ChangeDrive(wanted.drive, positions);
  const double centreSlew = wanted.drive == Drive::Servo ? Within(servoSpeed, 0, 1e5) : kCentreSlew;
  for (std::size_t i = 0; i < kAxes; ++i) {
    AxisForce& axis = now_.axes[i];
    const AxisForce& target = wanted.axes[i];
    Approach(axis.centre, Within(target.centre, -kYokeTravel, kYokeTravel, axis.centre), centreSlew, seconds);
    Approach(axis.gradient, Within(target.gradient, 0, 1), kGradientSlew, seconds);
    Approach(axis.bias, Within(target.bias, -1, 1), kBiasSlew, seconds);
    Approach(axis.amplitude, Within(target.amplitude, 0, kLargestAmplitude), kAmplitudeSlew, seconds);
    axis.frequency = Within(target.frequency, 0, 50);
  }
  const double limit = Within(wanted.limit, 0, 1);
  Approach(now_.limit, limit, limit > now_.limit ? kLimitRise * limit : kLimitSlew, seconds);
  Approach(now_.friction, Within(wanted.friction, 0, 1), kGradientSlew, seconds);
  Approach(now_.damping, Within(wanted.damping, 0, 1), kGradientSlew, seconds);

  gated_ = now_;
  gated_.limit *= gate;
  double vibration = 0;
  for (AxisForce& axis : gated_.axes) {
    axis.gradient *= gate;
    axis.bias *= gate;
    axis.amplitude = std::min(axis.amplitude * gate, gated_.limit * kVibrationShare);
    vibration = std::max(vibration, axis.amplitude);
  }
  gated_.limit -= vibration;
  gated_.friction *= gate;
  gated_.damping *= gate;
  return gated_;
}

}  // namespace tvx
