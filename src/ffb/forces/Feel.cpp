#include "ffb/forces/Feel.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace tvx {
namespace {

constexpr double kGroundSeconds = 0.4;  // from the air's forces to the ground's
constexpr double kSlowestGust = 1.2;    // Hz: corner of each of the filter's stages
constexpr double kShockSeconds = 1;     // afterwards a shock is too weak to be felt
constexpr double kShockWindow = 0.2;    // the hardest load so soon after the touch is the shock's
constexpr double kGustSpread = 3;       // makes up for the strength that the filter takes from the noise
constexpr double kBellyShock = 0.5;     // of a touch with the wheels up

const EffectSetting& Of(const ForceSettings& settings, Effect effect, std::size_t axis) {
  return settings.effects[static_cast<std::size_t>(effect)][axis];
}

ForceCommand Base(const ForceSettings& settings, Drive drive) {
  ForceCommand command;
  command.drive = drive;
  command.limit = settings.maximum;
  command.friction = settings.friction;
  command.damping = settings.damping;
  return command;
}

}  // namespace

// Four high-passes of the first order, one behind the other. They keep half of what swings at 2 Hz, and a
// fiftieth of what swings at 0.5 Hz.
double GustFilter::Next(double g, double seconds) {
  const double half = std::numbers::pi * kSlowestGust * seconds;
  if (!started_) stages_[0].in = g;
  started_ = true;
  double value = g;
  for (Stage& stage : stages_) {
    stage.out = ((1 - half) * stage.out + value - stage.in) / (1 + half);
    stage.in = std::exchange(value, stage.out);
  }
  return value;
}

double Feel::Noise() {
  random_ ^= random_ << 13;
  random_ ^= random_ >> 17;
  random_ ^= random_ << 5;
  return static_cast<double>(random_) / 2147483648.0 - 1;
}

void Feel::Advance(const FfbVariables& values, const ForceSettings& settings, double seconds) {
  seconds = std::isnan(seconds) ? 0 : std::clamp(seconds, 0.0, kLongestCycle);
  const double g = std::isfinite(values.NormalG) ? values.NormalG : 1;
  if (ground_ < 0) ground_ = values.OnGround ? 1 : 0;
  const bool touched = values.OnGround && ground_ <= 0;
  ground_ = std::clamp(ground_ + (values.OnGround ? 1 : -1) * seconds / kGroundSeconds, 0.0, 1.0);
  sinceTouch_ += seconds;
  if (touched) {
    sinceTouch_ = 0;
    touchG_ = g;
  } else if (sinceTouch_ < kShockWindow && g > touchG_) {
    touchG_ = g;
  }
  // The strength rises at once and falls slowly, so that a single gust is felt for a while.
  const double gust = gustFilter_.Next(g, seconds);
  const double strength = values.OnGround || values.Paused ? 0 : GustStrength(gust);
  gustStrength_ = std::max(strength, gustStrength_ * std::exp(-seconds / settings.gustTime));
  // First-order noise: a new value is mostly the old one, the more so the shorter the cycle.
  const double keep = std::exp(-seconds / settings.gustTime);
  for (double& each : gusts_) each = keep * each + (1 - keep) * kGustSpread * Noise();
}

double Feel::TrimCentre(const FfbVariables& values, const ForceSettings& settings, Axis axis) {
  const double trim = axis == Axis::Roll ? values.AileronTrim : values.ElevatorTrim;
  if (std::isnan(trim)) return 0;
  return std::clamp(trim, -1.0, 1.0) * settings.trimRange[static_cast<std::size_t>(axis)] * kYokeTravel;
}

ForceCommand Feel::Wanted(const FfbVariables& values, const ForceSettings& settings, bool effects,
                          bool trim) const {
  ForceCommand command = Base(settings, Drive::Spring);
  const double ground = std::max(ground_, 0.0);
  for (std::size_t i = 0; i < kAxes; ++i) {
    AxisForce& axis = command.axes[i];
    const double air = ForceAt(settings.curves[i], values.Airspeed);
    axis.gradient = std::min(air + ground * std::max(settings.groundForce - air, 0.0), settings.maximum);
    if (trim) axis.centre = TrimCentre(values, settings, static_cast<Axis>(i));
    if (!effects || values.Paused) continue;
    axis.bias = gustStrength_ * Of(settings, Effect::Turbulence, i).level * std::clamp(gusts_[i], -1.0, 1.0);
  }
  if (effects && !values.Paused) AddVibrations(values, settings, command);
  return command;
}

// Vibrations of one axis add up as their powers do; the strongest gives the frequency.
void Feel::AddVibrations(const FfbVariables& values, const ForceSettings& settings,
                         ForceCommand& command) const {
  const double air = 1 - std::max(ground_, 0.0);
  const double stallSpeed = StallSpeedUnderLoad(settings.stallSpeed, values.NormalG);
  const double buffet = StallBuffet(values.Airspeed, stallSpeed, settings.stallMargin);
  const double overspeed =
      values.OverspeedWarning ? 1 : OverspeedVibration(values.Airspeed, settings.neverExceedSpeed);
  const double wheels = values.GearDown ? 1 - air : 0;
  const double shock = sinceTouch_ < kShockSeconds ? WheelShock(touchG_, sinceTouch_) : 0;
  for (std::size_t i = 0; i < kAxes; ++i) {
    AxisForce& axis = command.axes[i];
    double power = 0, strongest = 0;
    const auto add = [&](Effect effect, double strength, double frequency) {
      const double amplitude = strength * Of(settings, effect, i).level;
      power += amplitude * amplitude;
      if (amplitude <= strongest) return;
      strongest = amplitude;
      axis.frequency = frequency;
    };
    const auto own = [&](Effect effect) { return Of(settings, effect, i).frequency; };
    add(Effect::StallBuffet, buffet * air, own(Effect::StallBuffet));
    add(Effect::Shaker, values.StallWarning ? air : 0, own(Effect::Shaker));
    add(Effect::Overspeed, overspeed * air, own(Effect::Overspeed));
    add(Effect::WheelShock, shock * (values.GearDown ? 1 : kBellyShock), own(Effect::WheelShock));
    add(Effect::RunwayRumble, RunwayRumble(values.GroundSpeed) * wheels,
        RumbleFrequency(values.GroundSpeed, settings.bumps, own(Effect::RunwayRumble)));
    axis.amplitude = std::sqrt(power);
  }
}

ForceCommand Feel::Centred(const ForceSettings& settings) {
  ForceCommand command = Base(settings, Drive::Spring);
  for (AxisForce& axis : command.axes) axis.gradient = std::min(2 * settings.groundForce, settings.maximum);
  return command;
}

ForceCommand Feel::Held(const ForceSettings& settings, const std::array<double, kAxes>& place) {
  ForceCommand command = Base(settings, Drive::Servo);
  for (std::size_t i = 0; i < kAxes; ++i) {
    command.axes[i].centre = place[i];
    command.axes[i].gradient = kServoForce * settings.maximum;
  }
  return command;
}

}  // namespace tvx
