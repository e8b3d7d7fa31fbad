#include "drawn/devices/TrimDevice.h"

#include <algorithm>

#include "drawn/Wire.h"

namespace tvx::drawn {
namespace {

namespace command {
constexpr int kPosition = 5, kFlags = 11;
}
constexpr int kAutopilotFlies = 1;  // a flag
namespace place {
constexpr std::size_t kPosition = 7, kByHand = 13;
}
constexpr int kFree = 100, kAgainstMotor = 20;  // positions of a click

}  // namespace

void TrimDevice::OnCommand(int number, std::int32_t value) {
  if (number == command::kPosition && !HandRules()) position_ = std::clamp(value, 0, kFullUp);
  if (number == command::kFlags) resists_ = (value & kAutopilotFlies) != 0;
}

void TrimDevice::TurnByHand(int clicks) {
  position_ = std::clamp(position_ + clicks * (resists_ ? kAgainstMotor : kFree), 0, kFullUp);
  byHand_ = true;
  HandMoved();
}

void TrimDevice::FillReply(Reply& reply) {
  PutLetters(reply, 'P', 'T');
  PutWord(reply, place::kPosition, position_);
  PutByte(reply, place::kByHand, byHand_ ? 1 : 0);
  byHand_ = false;
}

}  // namespace tvx::drawn
