#include "drawn/devices/AutopilotDevice.h"

#include <algorithm>

#include "drawn/Wire.h"

namespace tvx::drawn {
namespace {

namespace command {
constexpr int kLamps = 4, kAltitude = 5, kVerticalSpeed = 6, kTrim = 12;
}
namespace place {
constexpr std::size_t kButtons = 7, kAltitude = 10, kAltitudeTurned = 12, kVerticalSpeed = 13,
                      kVerticalSpeedTurned = 15;
}
constexpr int kClick = 100;  // ft, ft/min
constexpr int kHighest = 50000, kFastest = 6000, kFullTrim = 16000;

}  // namespace

void AutopilotDevice::StartAnew() {
  lamps_ = 0;
  altitude_ = verticalSpeed_ = trim_ = 0;
  pressed_ = 0;
  altitudeTurned_ = speedTurned_ = false;
}

void AutopilotDevice::OnCommand(int number, std::int32_t value) {
  if (number == command::kLamps) lamps_ = static_cast<std::uint32_t>(std::max(value, 0));
  if (number == command::kAltitude && !HandRules()) altitude_ = std::clamp(value, 0, kHighest);
  if (number == command::kVerticalSpeed && !HandRules())
    verticalSpeed_ = std::clamp(value, -kFastest, kFastest);
  if (number == command::kTrim) trim_ = std::clamp(value, -kFullTrim, kFullTrim);
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
  PutByte(reply, place::kButtons, pressed_);
  PutWord(reply, place::kAltitude, altitude_);
  PutByte(reply, place::kAltitudeTurned, altitudeTurned_ ? 1 : 0);
  PutWord(reply, place::kVerticalSpeed, verticalSpeed_);
  PutByte(reply, place::kVerticalSpeedTurned, speedTurned_ ? 1 : 0);
  pressed_ = 0;
  altitudeTurned_ = speedTurned_ = false;
}

}  // namespace tvx::drawn
