#include "drawn/devices/DiscDevices.h"

#include <algorithm>

namespace tvx::drawn {
namespace {

// The first and the second needle, pointer or disc; most of these have no other commands.
namespace command {
constexpr int kPitch = 4, kBank = 5;
constexpr int kRmiCard = 4;
constexpr int kFirst = 5, kSecond = 6;
constexpr int kDistance = 12;
}  // namespace command
namespace place {
constexpr std::size_t kGyro = 7, kBug = 10, kKnob = 7;
}
constexpr int kSteepest = 900, kFullBank = 1800;  // tenths of a degree
constexpr int kStepsPerDegree = kTurnSteps / 360;

int PointerOf(std::int32_t value) {
  return value < 0 || value >= kTurnSteps ? kParked : value;
}

}  // namespace

void AttitudeDevice::OnCommand(int number, std::int32_t value) {
  if (number == command::kPitch) pitch_ = std::clamp(value, -kSteepest, kSteepest);
  if (number == command::kBank) bank_ = std::clamp(value, -kFullBank, kFullBank);
  told_ = told_ || number == command::kPitch || number == command::kBank;
}

void HeadingDevice::OnCommand(int number, std::int32_t value) {
  if (number == command::kFirst) disc_ = OnCircle(value);
  if (number == command::kSecond && !HandRules()) bug_ = OnCircle(value);
}

void HeadingDevice::TurnBug(int clicks) {
  bug_ = OnCircle(bug_ + clicks % 360 * kStepsPerDegree);
  HandMoved();
}

void HeadingDevice::TurnGyro(int clicks) {
  gyro_ = OnCircle(gyro_ + clicks % 360 * kStepsPerDegree);
  Changed();
}

void HeadingDevice::FillReply(Reply& reply) {
  PutWord(reply, place::kGyro, gyro_);
  PutWord(reply, place::kBug, bug_);
}

void AdfDevice::OnCommand(int number, std::int32_t value) {
  if (number == command::kFirst) pointer_ = PointerOf(value);
  if (number == command::kSecond && !HandRules()) card_ = OnCircle(value);
}

void AdfDevice::TurnCard(int degrees) {
  const int shown = (card_ + kStepsPerDegree / 2) / kStepsPerDegree;
  knob_ = OnCircle(shown + degrees % 360, 360);
  card_ = knob_ * kStepsPerDegree;
  HandMoved();
}

void AdfDevice::FillReply(Reply& reply) {
  PutLetters(reply, 'C', 'A');
  PutWord(reply, place::kKnob, KnobRaw(knob_));
}

void RmiDevice::OnCommand(int number, std::int32_t value) {
  if (number == command::kRmiCard) card_ = OnCircle(value);
  if (number == command::kFirst) pointer1_ = PointerOf(value);
  if (number == command::kSecond) pointer2_ = PointerOf(value);
  if (number == command::kDistance) distance_ = std::max(value, 0);
}

}  // namespace tvx::drawn
