#include "ffb/Yoke.h"

#include <algorithm>
#include <cmath>

namespace tvx {
namespace {

constexpr int kResendCycles = 25;   // what does not change is told again once a second
constexpr int kVibrationTimes = 3;  // a change of it must arrive, since the limit counts on it
constexpr double kHalfRawRange = 32768;
constexpr double kHoldSeconds = kHoldMs / 1000.0;
constexpr double kShareSlew = 0.5;  // a second

// By YokeMode.
constexpr std::array<std::int32_t, kYokeModes> kColours = {kModeRed, kModeBlue, kModeGreen, kModeAmber,
                                                           kModeGrey};

double HalfRangeGradient(double gradient, const AxisCalibration& axis) {
  return gradient * std::abs(axis.scale) * kHalfRawRange / kYokeTravel;
}

double RawForce(double force, const AxisCalibration& axis) {
  return axis.scale < 0 ? -force : force;
}

}  // namespace

void Yoke::Configure(const YokeSettings& settings) {
  YokeSettings now = settings;
  next_.reset();
  if (!gate_.Shut() && !settings.SameYoke(settings_)) {
    next_ = settings;
    now.address = settings_.address;
    now.calibrated = settings_.calibrated;
    now.roll = settings_.roll;
    now.pitch = settings_.pitch;
  }
  Use(now);
}

void Yoke::Use(const YokeSettings& settings) {
  settings_ = settings;
  if (gate_.Shut()) share_ = settings.forceLevel;
  line_.SetAddress(settings.address);
  line_.SetCalibration(settings.roll, settings.pitch);
}

void Yoke::SelectMode(YokeMode mode) {
  mode_ = mode;
  grip_.Restart();
  sendAll_ = true;
  colour_ = kColours[static_cast<std::size_t>(mode)];
}

bool Yoke::Usable() const {
  return settings_.calibrated && line_.PortOpen() && line_.AnsweredWithinMs(kYokeSilentMs);
}

std::array<double, kAxes> Yoke::Position() const {
  return {static_cast<double>(line_.RollPosition()), static_cast<double>(line_.PitchPosition())};
}

std::uint16_t Yoke::TakePressed() {
  if (!Usable()) return 0;
  const std::uint16_t now = Held();
  const auto pressed = static_cast<std::uint16_t>(now & ~buttonsBefore_.value_or(now));
  buttonsBefore_ = now;
  return pressed;
}

SafetyCause Yoke::OwnCause() const {
  if (mode_ == YokeMode::Off) return SafetyCause::Off;
  if (next_) return SafetyCause::Changed;
  if (!settings_.calibrated) return SafetyCause::NotCalibrated;
  if (!line_.PortOpen()) return SafetyCause::PortClosed;
  if (stalled_) return SafetyCause::Stalled;
  if (!line_.AnsweredWithinMs(kYokeSilentMs)) return SafetyCause::YokeSilent;
  const Byte status = line_.LastReply().status;
  if ((status & yokestatus::kStopButton) != 0 || (status & yokestatus::kPower) == 0) {
    return SafetyCause::StopButton;
  }
  return SafetyCause::None;
}

// Where its servo is to hold it, counts; std::nullopt where none does. The autopilot's place is its own part
// and the trim's: where the yoke stands when the servo lets go.
std::optional<Yoke::Place> Yoke::ServoPlace(const Cycle& cycle) const {
  if (mode_ == YokeMode::Servo) return cycle.follow;
  if (mode_ != YokeMode::FollowAP || !cycle.values.AutopilotServos) return std::nullopt;
  Place place{cycle.values.AutopilotRoll, cycle.values.AutopilotPitch};
  for (std::size_t i = 0; i < kAxes; ++i) {
    const bool trim = settings_.Has(yokeoption::kTrimMovesCentre);
    const auto axis = static_cast<Axis>(i);
    place[i] = PlaceOfRatio(place[i], trim ? Feel::TrimCentre(cycle.values, cycle.settings.forces, axis) : 0);
  }
  return place;
}

ForceCommand Yoke::Wanted(const Cycle& cycle, const std::optional<Place>& place) const {
  const ForceSettings& forces = cycle.settings.forces;
  if (place) return Feel::Held(forces, *place);
  if (mode_ == YokeMode::Ffb || mode_ == YokeMode::FollowAP) {
    return cycle.feel.Wanted(cycle.values, forces, settings_.Has(yokeoption::kEffects),
                             settings_.Has(yokeoption::kTrimMovesCentre));
  }
  return Feel::Centred(forces);
}

void Yoke::ProcessTimer_Tick(const Cycle& cycle) {
  line_.DropStalePiece();
  const bool late = cycle.seconds > kHoldSeconds;
  const bool faded = line_.TakeFaded();
  if (late) line_.Forget();
  if ((late || faded) && !gate_.Shut()) stalled_ = true;
  const std::optional<Place> place = ServoPlace(cycle);
  cause_ = cycle.cause == SafetyCause::Halted ? cycle.cause : OwnCause();
  if (cause_ == SafetyCause::None) cause_ = cycle.cause;
  // A yoke without commands keeps its forces for the hold time and then fades by itself, as steadily as the
  // gate: the two go on together.
  const double opening = gate_.Next(cause_, late ? cycle.seconds - kHoldSeconds : cycle.seconds);
  share_ +=
      std::clamp(settings_.forceLevel - share_, -kShareSlew * cycle.seconds, kShareSlew * cycle.seconds);
  if (gate_.Shut()) {
    ComposeRelease();
  } else {
    const double speed = cycle.settings.servoSpeed;
    // The last forces fade where something that they come from is no number.
    const ForceCommand wanted =
        cycle.cause == SafetyCause::NotANumber ? shaper_.Last() : Wanted(cycle, place);
    const ForceCommand& command = shaper_.Next(wanted, Position(), opening * share_, speed, cycle.seconds);
    ComposeForces(command, speed);
    ComposeFeel(command);
    ComposeVibration(command);
    sendAll_ = false;
    WatchGrip(cycle, place);
  }
  line_.ComposeCmd(YokeCommand::Report);
  line_.SendSerial();
}

// The gate has faded the forces already, so the yoke need not take time for it too.
void Yoke::ComposeRelease() {
  shaper_.Restart();
  grip_.Restart();
  stalled_ = false;
  sendAll_ = true;
  line_.ComposeCmd(YokeCommand::Release, TimeParameter(0));
  if (next_) Use(*std::exchange(next_, std::nullopt));
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
  if (vibration != sentVibration_) vibrationAgain_ = kVibrationTimes;
  if (++cyclesSinceVibration_ < kResendCycles && !sendAll_ && vibrationAgain_ == 0) return;
  cyclesSinceVibration_ = 0;
  vibrationAgain_ = std::max(vibrationAgain_ - 1, 0);
  sentVibration_ = vibration;
  line_.ComposeCmd(YokeCommand::Vibration, vibration[0], vibration[1], vibration[2], vibration[3]);
}

void Yoke::WatchGrip(const Cycle& cycle, const std::optional<Place>& place) {
  const ForceCommand& command = shaper_.Last();
  if (!place) return grip_.Restart();
  if (gate_.Opening() < 1 || command.drive != Drive::Servo) return grip_.LookAway();
  grip_.Look({.positions = Position(),
              .places = {command.axes[0].centre, command.axes[1].centre},
              .goals = *place,
              .threshold = cycle.settings.gripThreshold,
              .force = command.axes[0].gradient,
              .friction = command.friction,
              .seconds = cycle.seconds});
}

}  // namespace tvx
