#include "virtualcockpit/devices/DiscDevices.h"

#include <algorithm>

namespace tvx::vc {
namespace {

constexpr int kStepsPerDegree = kTurnSteps / 360;

int PointerOf(std::int32_t value) {
  return value < 0 || value >= kTurnSteps ? kParked : value;
}

}  // namespace

void AttitudeDevice::OnCommand(int command, std::int32_t value) {
  if (command == 4) pitch_ = std::clamp(value, -900, 900);
  if (command == 5) bank_ = std::clamp(value, -1800, 1800);
  told_ = told_ || command == 4 || command == 5;
}

void HeadingDevice::OnCommand(int command, std::int32_t value) {
  if (command == 5) disc_ = OnCircle(value);
  if (command == 6 && !HandRules()) bug_ = OnCircle(value);
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
  PutWord(reply, 7, gyro_);
  PutWord(reply, 10, bug_);
}

void AdfDevice::OnCommand(int command, std::int32_t value) {
  if (command == 5) pointer_ = PointerOf(value);
  if (command == 6 && !HandRules()) card_ = OnCircle(value);
}

void AdfDevice::TurnCard(int degrees) {
  const int shown = (card_ + kStepsPerDegree / 2) / kStepsPerDegree;
  knob_ = OnCircle(shown + degrees % 360, 360);
  card_ = knob_ * kStepsPerDegree;
  HandMoved();
}

void AdfDevice::FillReply(Reply& reply) {
  PutLetters(reply, 'C', 'A');
  PutWord(reply, 7, KnobRaw(knob_));
}

void RmiDevice::OnCommand(int command, std::int32_t value) {
  if (command == 4) card_ = OnCircle(value);
  if (command == 5) pointer1_ = PointerOf(value);
  if (command == 6) pointer2_ = PointerOf(value);
  if (command == 12) distance_ = std::max(value, 0);
}

}  // namespace tvx::vc
