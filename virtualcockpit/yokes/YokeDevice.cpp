#include "virtualcockpit/yokes/YokeDevice.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tvx::vc {
namespace {

constexpr std::size_t kFrameSize = 13;  // with the separator
enum Command { kSpring = 1, kBias = 2, kFeel = 3, kVibration = 4, kServo = 5, kRelease = 6, kReport = 7 };
// Status bits of the answer.
constexpr int kHasPower = 1, kStopPressed = 4, kFades = 8;
constexpr Byte kKind = 200;
// Places in the answer.
constexpr std::size_t kReplySize = 25, kStatusPlace = 3, kRollPlace = 6, kRollMark = 8, kPitchPlace = 9,
                      kPitchMark = 11, kButtonsPlace = 12;
// What a parameter's whole stands for.
constexpr double kWhole = 16383, kNoForce = 8192, kWholeForce = 8191, kWholeGradient = 2048;
constexpr double kHalfRange = 32768;  // raw steps at which a whole gradient gives the whole force
constexpr double kPlaceSteps = 4, kSpeedSteps = 16, kTenths = 10, kThousand = 1000;
constexpr double kMass = 0.02;     // force that speeds an axis up by one travel a second in a second
constexpr double kBearing = 0.06;  // force of the bearings' drag at one travel a second
constexpr double kOwnFriction = 0.01;
constexpr double kWholeFriction = 0.2, kWholeDamping = 0.5;  // force; force at one travel a second
constexpr double kServoBand = 0.125;  // of the travel: there the servo gives its whole force
constexpr double kFadeSeconds = 0.5;
constexpr int kNoiseEvery = 97;  // of a noisy line's bytes one in so many is lost

int Parameter(const std::vector<Byte>& frame, int number) {
  const auto at = static_cast<std::size_t>(1 + 2 * number);
  return (frame[at] & 0x7F) + (frame[at + 1] & 0x7F) * 128;
}

double PlaceOf(int parameter) {
  return (parameter * kPlaceSteps - YokeDevice::kRawCentre) / YokeDevice::kRawTravel;
}

double Signed(int parameter) {
  return (parameter - kNoForce) / kWholeForce;
}

}  // namespace

std::string_view FaultText(YokeFault fault) {
  switch (fault) {
    case YokeFault::None:
      return "no fault";
    case YokeFault::Silent:
      return "never answers";
    case YokeFault::Garbled:
      return "garbled answers";
    case YokeFault::Half:
      return "answers break off";
    case YokeFault::Noisy:
      return "loses bytes";
    case YokeFault::NoPower:
      return "motors without power";
    case YokeFault::Dead:
      return "dead";
  }
  return "";
}

void YokeDevice::OnBytes(ByteView bytes) {
  if (fault_ == YokeFault::Dead) return;
  for (const Byte byte : bytes) {
    if (fault_ == YokeFault::Noisy && ++discarded_ % kNoiseEvery == 0) continue;
    // An address may be 0 or 255 too; after it, every byte but the last has its highest bit set and only a
    // start has not.
    if (byte == 0 && frame_.size() != 1) {
      discarded_ += frame_.size();
      frame_.assign(1, byte);
    } else if (frame_.empty()) {
      if (byte != 0xFF) ++discarded_;
    } else {
      frame_.push_back(byte);
      if (frame_.size() < kFrameSize) continue;
      // A frame that lost a byte has its separator where the end belongs, and the next one's start behind.
      const bool whole = byte == 0xFF && frame_[kFrameSize - 2] == 0xFF;
      if (whole && (address_ == 0 || frame_[1] == address_)) {
        OnFrame();
      } else {
        discarded_ += frame_.size();
      }
      frame_.clear();
    }
  }
}

void YokeDevice::OnFrame() {
  ++commands_;
  const int p1 = Parameter(frame_, 1), p2 = Parameter(frame_, 2), p3 = Parameter(frame_, 3),
            p4 = Parameter(frame_, 4);
  const int command = frame_[2] & 0x7F;
  switch (command) {
    case kSpring:
    case kServo:
      servo_ = command == kServo;
      axes_[0].place = PlaceOf(p1);
      axes_[1].place = PlaceOf(p2);
      if (servo_) {
        servoSpeed_ = p3 * kSpeedSteps / kRawTravel;
        servoForce_ = p4 / kWhole;
      } else {
        axes_[0].gradient = p3 / kWholeGradient * kRawTravel / kHalfRange;
        axes_[1].gradient = p4 / kWholeGradient * kRawTravel / kHalfRange;
      }
      break;
    case kBias:
      axes_[0].bias = Signed(p1);
      axes_[1].bias = Signed(p2);
      limit_ = p3 / kWhole;
      holdLeft_ = p4 / kThousand;
      fadeTime_ = kFadeSeconds;
      released_ = false;
      if (traits_.riseSeconds <= 0) fade_ = 1;
      break;
    case kFeel:
      friction_ = p1 / kWhole;
      damping_ = p2 / kWhole;
      break;
    case kVibration:
      axes_[0].frequency = p1 / kTenths;
      axes_[0].amplitude = p2 / kWhole;
      axes_[1].frequency = p3 / kTenths;
      axes_[1].amplitude = p4 / kWhole;
      break;
    case kRelease:
      released_ = true;
      fadeTime_ = std::max(p1 / kThousand, 0.01);
      break;
    case kReport:
      Answer();
      break;
    default:
      break;
  }
}

int YokeDevice::RawPosition(std::size_t axis) const {
  return static_cast<int>(std::lround(kRawCentre + axes_[axis].position * kRawTravel));
}

void YokeDevice::TakeAnswers(ByteView bytes, const std::array<YokeTravel, kYokeAxes>& travel) {
  answered_.insert(answered_.end(), bytes.begin(), bytes.end());
  while (answered_.size() >= kReplySize) {
    const bool whole = answered_[0] == 0 && answered_[kRollMark] == 'P' && answered_[kPitchMark] == 'S' &&
                       answered_[kReplySize - 1] == 0xFF;
    if (whole) TakeAnswer(ByteView(answered_).first(kReplySize), travel);
    answered_.erase(answered_.begin(), answered_.begin() + (whole ? kReplySize : 1));
  }
}

void YokeDevice::TakeAnswer(ByteView answer, const std::array<YokeTravel, kYokeAxes>& travel) {
  led_ = true;
  const auto word = [&](std::size_t at) { return answer[at] * 256 + answer[at + 1]; };
  for (std::size_t i = 0; i < kYokeAxes; ++i) {
    const auto [low, centre, high] = travel[i];
    const int raw = word(i == 0 ? kRollPlace : kPitchPlace);
    double place = static_cast<double>(raw - kRawCentre) / kRawTravel;
    if (low != high) {
      const bool upper = (raw > centre) == (high > centre);
      const int whole = upper ? high - centre : centre - low;
      place = whole == 0 ? 0 : static_cast<double>(raw - centre) / whole;
    }
    Place(i, place);
  }
  buttons_ = static_cast<std::uint16_t>(word(kButtonsPlace));
  stop_ = (answer[kStatusPlace] & kStopPressed) != 0;
}

void YokeDevice::Answer() {
  if (fault_ == YokeFault::Silent) return;
  std::array<Byte, kReplySize> reply{};
  const auto put = [&reply](std::size_t at, int value) {
    reply[at] = static_cast<Byte>(value >> 8);
    reply[at + 1] = static_cast<Byte>(value & 0xFF);
  };
  reply[1] = address_;
  reply[2] = kKind;
  reply[kStatusPlace] = static_cast<Byte>((fault_ == YokeFault::NoPower ? 0 : kHasPower) |
                                          (stop_ ? kStopPressed : 0) | (fadedSince_ ? kFades : 0));
  fadedSince_ = false;
  put(kRollPlace, RawPosition(0));
  reply[kRollMark] = fault_ == YokeFault::Garbled ? '?' : 'P';
  put(kPitchPlace, RawPosition(1));
  reply[kPitchMark] = 'S';
  put(kButtonsPlace, buttons_);
  put(15, static_cast<int>(std::abs(axes_[0].force) * kThousand));
  put(17, static_cast<int>(std::abs(axes_[1].force) * kThousand));
  reply.back() = 0xFF;
  ++answers_;
  send_(fault_ == YokeFault::Half ? ByteView(reply).first(reply.size() / 2) : ByteView(reply));
}

void YokeDevice::Grip(std::size_t axis, double place) {
  gripped_[axis] = true;
  axes_[axis].hand = std::clamp(place, -1.0, 1.0);
}

void YokeDevice::Let() {
  gripped_ = {};
}

void YokeDevice::Place(std::size_t axis, double place) {
  axes_[axis].position = std::clamp(place, -1.0, 1.0);
  axes_[axis].speed = 0;
}

void YokeDevice::SetButton(int button, bool down) {
  if (button < 1 || button > 16) return;
  const auto bit = static_cast<std::uint16_t>(1u << (button - 1));
  buttons_ = static_cast<std::uint16_t>(down ? buttons_ | bit : buttons_ & ~bit);
}

void YokeDevice::Advance(double seconds) {
  for (double left = std::clamp(seconds, 0.0, 1.0); left > 1e-9; left -= kStep) Step(std::min(left, kStep));
}

// The motor's force: spring or servo, and bias, within the limit; and the vibration on top.
double YokeDevice::Wanted(Motion& axis, double seconds) const {
  double force = 0;
  if (servo_) {
    const double away = std::clamp((axis.place - axis.position) / kServoBand, -1.0, 1.0);
    force = servoForce_ * away;
    // No faster than it is told.
    if (std::abs(axis.speed) > servoSpeed_ && axis.speed * force > 0) force = 0;
  } else {
    force = axis.gradient * (axis.place - axis.position);
  }
  axis.phase = std::fmod(axis.phase + axis.frequency * seconds, 1.0);
  axis.vibration = fade_ * axis.amplitude * std::sin(2 * std::numbers::pi * axis.phase);
  return fade_ * std::clamp(force + axis.bias, -limit_, limit_);
}

void YokeDevice::Step(double seconds) {
  holdLeft_ -= seconds;
  if (released_ || holdLeft_ < 0) {
    fade_ = std::max(0.0, fade_ - seconds / fadeTime_);
    fadedSince_ = fadedSince_ || !released_;
  } else if (traits_.riseSeconds > 0) {
    fade_ = std::min(1.0, fade_ + seconds / traits_.riseSeconds);
  }
  if (stop_ || fault_ == YokeFault::NoPower || fault_ == YokeFault::Dead) fade_ = 0;
  for (std::size_t i = 0; i < kYokeAxes; ++i) {
    Motion& axis = axes_[i];
    axis.force = Wanted(axis, seconds);
    if (led_) continue;
    double force = axis.force + axis.vibration;
    // Friction and damping have what spring, servo and bias leave of the limit.
    const double left = std::max(0.0, fade_ * limit_ - std::abs(axis.force));
    double drag =
        kBearing + std::min(fade_ * kWholeDamping * damping_, left / std::max(std::abs(axis.speed), 0.01));
    if (gripped_[i]) {
      force += std::clamp(8 * (axis.hand - axis.position), -kHand, kHand);
      drag += 0.8;  // an arm is no spring
    }
    if (servo_ && fade_ > 0) drag += 0.35;
    // Friction holds what pulls less than itself.
    const double friction = kOwnFriction + std::min(fade_ * kWholeFriction * friction_, left);
    if (std::abs(axis.speed) < 0.01 && std::abs(force) < friction) {
      axis.speed = 0;
      continue;
    }
    force -= std::copysign(friction, axis.speed != 0 ? axis.speed : force);
    // The drag is taken at the end of the step, which stays stable however strong it is.
    axis.speed = (axis.speed + force / kMass * seconds) / (1 + drag / kMass * seconds);
    axis.position += axis.speed * seconds;
    if (std::abs(axis.position) > 1) {
      axis.position = std::copysign(1.0, axis.position);
      axis.speed = 0;
    }
  }
}

}  // namespace tvx::vc
