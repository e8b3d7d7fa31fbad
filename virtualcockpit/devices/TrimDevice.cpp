#include "virtualcockpit/devices/TrimDevice.h"

#include <algorithm>

#include "virtualcockpit/devices/Wire.h"

namespace tvx::vc {
namespace {

constexpr int kFree = 100, kAgainstMotor = 20;  // a click

}  // namespace

void TrimDevice::OnCommand(int command, std::int32_t value) {
  if (command == 5 && !HandRules()) position_ = std::clamp(value, 0, kFullUp);
  if (command == 11) resists_ = (value & 1) != 0;
}

void TrimDevice::TurnByHand(int clicks) {
  position_ = std::clamp(position_ + clicks * (resists_ ? kAgainstMotor : kFree), 0, kFullUp);
  byHand_ = true;
  HandMoved();
}

void TrimDevice::FillReply(Reply& reply) {
  PutLetters(reply, 'P', 'T');
  PutWord(reply, 7, position_);
  PutByte(reply, 13, byHand_ ? 1 : 0);
  byHand_ = false;
}

}  // namespace tvx::vc
