#include "virtualcockpit/devices/AutopilotDevice.h"

#include <algorithm>

#include "virtualcockpit/devices/Wire.h"

namespace tvx::vc {
namespace {

constexpr int kClick = 100;
constexpr int kHighest = 50000, kFastest = 6000, kFullTrim = 16000;

}  // namespace

void AutopilotDevice::OnCommand(int command, std::int32_t value) {
  if (command == 4) lamps_ = static_cast<std::uint32_t>(std::max(value, 0));
  if (command == 5 && !HandRules()) altitude_ = std::clamp(value, 0, kHighest);
  if (command == 6 && !HandRules()) verticalSpeed_ = std::clamp(value, -kFastest, kFastest);
  if (command == 12) trim_ = std::clamp(value, -kFullTrim, kFullTrim);
}

void AutopilotDevice::Press(Button button) {
  pressed_ |= 1 << static_cast<int>(button);
  Changed();
}

void AutopilotDevice::TurnAltitude(int clicks) {
  altitude_ = std::clamp((altitude_ / kClick + clicks) * kClick, 0, kHighest);
  altitudeTurned_ = true;
  HandMoved();
}

void AutopilotDevice::TurnVerticalSpeed(int clicks) {
  verticalSpeed_ = std::clamp((verticalSpeed_ / kClick + clicks) * kClick, -kFastest, kFastest);
  speedTurned_ = true;
  HandMoved();
}

// Buttons and turns are told once.
void AutopilotDevice::FillReply(Reply& reply) {
  PutLetters(reply, 'A', 'V');
  PutByte(reply, 7, pressed_);
  PutWord(reply, 10, altitude_);
  PutByte(reply, 12, altitudeTurned_ ? 1 : 0);
  PutWord(reply, 13, verticalSpeed_);
  PutByte(reply, 15, speedTurned_ ? 1 : 0);
  pressed_ = 0;
  altitudeTurned_ = speedTurned_ = false;
}

}  // namespace tvx::vc
