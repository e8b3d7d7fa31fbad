#include "virtualcockpit/devices/ClockDevice.h"

#include <algorithm>

#include "virtualcockpit/devices/Wire.h"

namespace tvx::vc {
namespace {

constexpr int kLargest = 65535;

// The seconds of the day beyond the largest value come as that value less them.
int SecondsOf(std::int32_t value) {
  const int seconds = value < 0 ? kLargest - value : value;
  return std::clamp(seconds, 0, ClockDevice::kDaySeconds - 1);
}

}  // namespace

void ClockDevice::OnCommand(int command, std::int32_t value) {
  if (command == 4) utc_ = SecondsOf(value);
  if (command == 5) local_ = SecondsOf(value);
  if (command == 6) {
    monthDay_ = std::clamp(value / 100, 1, 12) * 100 + std::clamp(value % 100, 1, 31);
  }
  if (command == 11 && (value & 1) != 0) offset_ = 0;
  if (command == 12) year_ = std::clamp(value, 0, 99);
  if (command == 13) temperature_ = value;
  if (command == 14) voltage_ = value;
}

std::optional<int> ClockDevice::Shown(const std::optional<int>& seconds) const {
  if (!seconds) return std::nullopt;
  return OnCircle(*seconds + offset_, kDaySeconds);
}

void ClockDevice::TurnMinutes(int minutes) {
  offset_ = (offset_ + minutes % 1440 * 60) % kDaySeconds;
  Changed();
}

void ClockDevice::FillReply(Reply& reply) {
  const int seconds = Local().value_or(0);
  PutByte(reply, 7, year_);
  PutByte(reply, 8, Month());
  PutByte(reply, 9, Day());
  PutByte(reply, 11, seconds / 3600);
  PutByte(reply, 12, seconds / 60 % 60);
  PutByte(reply, 13, seconds % 60);
}

}  // namespace tvx::vc
