#include "virtualcockpit/sim/flight/HandFlight.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tvx::vc {
namespace {

constexpr double kRadians = std::numbers::pi / 180;
constexpr double kRollRate = 40, kPitchRate = 12;    // degrees/s at full deflection
constexpr double kBankLimit = 75, kPitchLimit = 25;  // degrees
constexpr double kTurn = 1091;                       // turn rate = kTurn * tan(bank) / kt, degrees/s
constexpr double kStallSpeed = 48;                   // kt at 1 g

void Decay(double& value, double seconds, double time) {
  value *= std::exp(-seconds / time);
}

double Within360(double degrees) {
  const double rest = std::fmod(degrees, 360.0);
  return rest < 0 ? rest + 360 : rest;
}

double Usable(double ratio) {
  return std::isfinite(ratio) ? std::clamp(ratio, -1.0, 1.0) : 0;
}

}  // namespace

void HandFlight::Apply(FlightState& state, const Hands& hands, double seconds) {
  state.scriptedElevator = state.elevator;
  state.scriptedAileron = state.aileron;
  const bool flying = state.onGround == 0;
  const double grip = std::clamp(state.airspeed / 80, 0.0, 1.2);  // controls bite with the air
  if (hands.roll && flying) {
    bank_ = std::clamp(bank_ + Usable(hands.rollRatio) * kRollRate * grip * seconds, -kBankLimit, kBankLimit);
  }
  if (hands.pitch && flying) {
    pitch_ = std::clamp(pitch_ + Usable(hands.pitchRatio) * kPitchRate * grip * seconds, -kPitchLimit,
                        kPitchLimit);
  }
  Decay(bank_, seconds, hands.roll && flying ? 12 : 1.5);
  Decay(pitch_, seconds, hands.pitch && flying ? 6 : 1.5);
  const double speed = std::max(state.airspeed, 30.0);
  heading_ += kTurn * std::tan(bank_ * kRadians) / speed * seconds;
  const double climb = speed * 101.27 * std::sin(pitch_ * kRadians);  // ft/min
  height_ += climb / 60 * seconds;
  airspeed_ += (-1.5 * pitch_ - airspeed_) * std::min(1.0, seconds / 3);
  if (!flying || !hands.roll) Decay(heading_, seconds, flying ? 10 : 0.5);
  if (!flying || !hands.pitch) Decay(height_, seconds, flying ? 10 : 0.5);
  if (!hands.roll && !hands.pitch && std::abs(bank_) + std::abs(pitch_) + std::abs(heading_) < 1e-3 &&
      std::abs(height_) + std::abs(airspeed_) < 1e-2) {
    *this = {};  // wholly the script again
    state.stallWarning = flying && state.airspeed < kStallSpeed ? 1 : 0;
    return;
  }
  state.bank += bank_;
  state.pitch += pitch_;
  state.heading = Within360(state.heading + heading_);
  state.headingMagnetic = Within360(state.headingMagnetic + heading_);
  state.compass = Within360(state.compass + heading_);
  const double height = std::max(height_, -state.heightAboveGround);
  state.altitude += height;
  state.indicatedAltitude += height;
  state.heightAboveGround += height;
  if (flying) {
    state.verticalSpeed += climb;
    state.airspeed = std::max(0.0, state.airspeed + airspeed_);
    state.gForce += 1 / std::max(std::cos(bank_ * kRadians), 0.2) - 1;
    if (hands.pitch) state.gForce += 0.8 * Usable(hands.pitchRatio);
  }
  state.stallWarning =
      flying && state.airspeed < kStallSpeed * std::sqrt(std::max(state.gForce, 0.25)) ? 1 : 0;
}

}  // namespace tvx::vc
