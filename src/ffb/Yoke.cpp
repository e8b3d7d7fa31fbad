#include "ffb/Yoke.h"

#include <algorithm>
#include <cmath>

namespace tvx {
namespace {

constexpr int kResendCycles = 25;     // what does not change is told again once a second
constexpr double kGripSeconds = 0.2;  // a knock is no grip
constexpr double kOnItsWay = 150;     // counts/s
constexpr double kGripCycle = 0.04;   // a late cycle is one look at the yoke, and counts as no more
constexpr double kServoLag = 0.15;    // s: how far behind a moving place a yoke without a hand may be
constexpr double kHalfRawRange = 32768;

double HalfRangeGradient(double gradient, const AxisCalibration& axis) {
  return gradient * std::abs(axis.scale) * kHalfRawRange / kYokeTravel;
}

double RawForce(double force, const AxisCalibration& axis) {
  return axis.scale < 0 ? -force : force;
}

}  // namespace

void Yoke::Configure(const YokeSettings& settings) {
  settings_ = settings;
  line_.SetAddress(settings.address);
  line_.SetCalibration(settings.roll, settings.pitch);
}

void Yoke::SelectMode(YokeMode mode) {
  mode_ = mode;
  settled_ = gripped_ = false;
  sendAll_ = true;
  if (mode == YokeMode::Centre) colour_ = kModeRed;
  if (mode == YokeMode::FollowAP) colour_ = kModeGreen;
}

bool Yoke::Usable() const {
  return settings_.calibrated && line_.PortOpen() && line_.AnsweredWithinMs(kYokeSilentMs);
}

std::array<double, kAxes> Yoke::Position() const {
  return {static_cast<double>(line_.RollPosition()), static_cast<double>(line_.PitchPosition())};
}

std::uint16_t Yoke::TakePressed() {
  const std::uint16_t now = Held();
  const auto pressed = static_cast<std::uint16_t>(now & ~buttonsBefore_);
  buttonsBefore_ = now;
  return pressed;
}

SafetyCause Yoke::OwnCause() const {
  if (mode_ == YokeMode::Off) return SafetyCause::Off;
  if (!settings_.calibrated) return SafetyCause::NotCalibrated;
  if (!line_.PortOpen()) return SafetyCause::PortClosed;
  if (!line_.AnsweredWithinMs(kYokeSilentMs)) return SafetyCause::YokeSilent;
  const Byte status = line_.LastReply().status;
  if ((status & yokestatus::kStopButton) != 0 || (status & yokestatus::kPower) == 0) {
    return SafetyCause::StopButton;
  }
  return SafetyCause::None;
}

ForceCommand Yoke::Wanted(const Cycle& cycle) const {
  const ForceSettings& forces = cycle.settings.forces;
  const auto flown = [&] {
    return cycle.feel.Wanted(cycle.values, forces, settings_.Has(yokeoption::kEffects),
                             settings_.Has(yokeoption::kTrimMovesCentre));
  };
  switch (mode_) {
    case YokeMode::Ffb:
      return flown();
    case YokeMode::FollowAP:
      if (!cycle.values.AutopilotServos) return flown();
      return Feel::Held(forces, cycle.values.AutopilotRoll * double{kYokeTravel},
                        cycle.values.AutopilotPitch * double{kYokeTravel});
    case YokeMode::Servo:
      if (cycle.follow) return Feel::Held(forces, (*cycle.follow)[0], (*cycle.follow)[1]);
      return Feel::Centred(forces);
    case YokeMode::Centre:
    case YokeMode::Off:
      break;
  }
  return Feel::Centred(forces);
}

void Yoke::ProcessTimer_Tick(const Cycle& cycle) {
  line_.DropStalePiece();
  cause_ = cycle.cause == SafetyCause::Halted ? cycle.cause : OwnCause();
  if (cause_ == SafetyCause::None) cause_ = cycle.cause;
  const double opening = gate_.Next(cause_, cycle.seconds);
  if (gate_.Shut()) {
    shaper_.Restart();
    settled_ = gripped_ = false;
    sendAll_ = true;
    line_.ComposeCmd(YokeCommand::Release, TimeParameter(kFadeMs));
  } else {
    const double speed = cycle.settings.servoSpeed;
    // The last forces fade where something that they come from is no number.
    const ForceCommand wanted = cycle.cause == SafetyCause::NotANumber ? shaper_.Last() : Wanted(cycle);
    const ForceCommand& command =
        shaper_.Next(wanted, Position(), opening * settings_.forceLevel, speed, cycle.seconds);
    ComposeForces(command, speed);
    ComposeFeel(command);
    ComposeVibration(command);
    sendAll_ = false;
    WatchGrip(cycle);
  }
  line_.ComposeCmd(YokeCommand::Report);
  line_.SendSerial();
}

void Yoke::Release() {
  line_.ComposeCmd(YokeCommand::Release, TimeParameter(kFadeMs));
  line_.SendSerial();
  gate_ = {};
  shaper_.Restart();
}

void Yoke::ComposeForces(const ForceCommand& command, double speed) {
  const AxisCalibration& roll = settings_.roll;
  const AxisCalibration& pitch = settings_.pitch;
  const AxisForce& r = command.axes[0];
  const AxisForce& p = command.axes[1];
  const int rollPlace = PositionParameter(roll.RawAt(r.centre));
  const int pitchPlace = PositionParameter(pitch.RawAt(p.centre));
  if (command.drive == Drive::Spring) {
    line_.ComposeCmd(YokeCommand::Spring, rollPlace, pitchPlace,
                     GradientParameter(HalfRangeGradient(r.gradient, roll)),
                     GradientParameter(HalfRangeGradient(p.gradient, pitch)));
  } else {
    const double scale = std::min(std::abs(roll.scale), std::abs(pitch.scale));
    line_.ComposeCmd(YokeCommand::Servo, rollPlace, pitchPlace, SpeedParameter(speed / scale),
                     FractionParameter(r.gradient));  // that of both axes
  }
  line_.ComposeCmd(YokeCommand::Bias, SignedParameter(RawForce(r.bias, roll)),
                   SignedParameter(RawForce(p.bias, pitch)), FractionParameter(command.limit),
                   TimeParameter(kHoldMs));
}

void Yoke::ComposeFeel(const ForceCommand& command) {
  const std::array<int, 2> feel{FractionParameter(command.friction), FractionParameter(command.damping)};
  if (++cyclesSinceFeel_ < kResendCycles && !sendAll_ && feel == sentFeel_) return;
  cyclesSinceFeel_ = 0;
  sentFeel_ = feel;
  line_.ComposeCmd(YokeCommand::Feel, feel[0], feel[1]);
}

void Yoke::ComposeVibration(const ForceCommand& command) {
  const AxisForce& r = command.axes[0];
  const AxisForce& p = command.axes[1];
  const std::array<int, 4> vibration{FrequencyParameter(r.frequency), FractionParameter(r.amplitude),
                                     FrequencyParameter(p.frequency), FractionParameter(p.amplitude)};
  if (++cyclesSinceVibration_ < kResendCycles && !sendAll_ && vibration == sentVibration_) return;
  cyclesSinceVibration_ = 0;
  sentVibration_ = vibration;
  line_.ComposeCmd(YokeCommand::Vibration, vibration[0], vibration[1], vibration[2], vibration[3]);
}

// A grip is a deflection against the servo. The yoke must have been where the master is before: one whose
// pilot has just given control away, and still holds it, is not gripped. That it stands where the servo wants
// it is not enough, since the servo begins at the place where the yoke stands.
void Yoke::WatchGrip(const Cycle& cycle) {
  const double threshold = cycle.settings.gripThreshold;
  if (mode_ != YokeMode::Servo || !cycle.follow || threshold <= 0 || gate_.Opening() < 1) {
    grippedFor_ = 0;
    return;
  }
  const auto position = Position();
  double off = 0, moved = 0, away = 0, towards = 0;
  for (std::size_t i = 0; i < kAxes; ++i) {
    const double place = shaper_.Last().axes[i].centre;
    const double step = position[i] - positionBefore_[i];
    if (std::abs(position[i] - place) > off) {
      off = std::abs(position[i] - place);
      towards = place > position[i] ? step : -step;
    }
    moved = std::max(moved, std::abs(place - placesBefore_[i]));
    away = std::max(away, std::abs((*cycle.follow)[i] - place));
    placesBefore_[i] = place;
  }
  positionBefore_ = position;
  const double lag = cycle.seconds > 0 ? kServoLag * moved / std::min(cycle.seconds, kLongestCycle) : 0;
  if (off < threshold / 2 && away < threshold / 2) settled_ = true;
  const bool held = settled_ && off > threshold + lag;
  // A yoke that goes to its place by itself is still on its way: no hand holds it.
  const bool onItsWay = towards > kOnItsWay * cycle.seconds;
  if (!held) grippedFor_ = 0;
  if (held && !onItsWay) grippedFor_ += std::min(cycle.seconds, kGripCycle);
  if (grippedFor_ >= kGripSeconds) gripped_ = true;
}

}  // namespace tvx
