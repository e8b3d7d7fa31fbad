#include "drawn/devices/ClockDevice.h"

#include <algorithm>

#include "drawn/Wire.h"

namespace tvx::drawn {
namespace {

namespace command {
constexpr int kUtc = 4, kLocal = 5, kMonthAndDay = 6, kFlags = 11, kYear = 12, kTemperature = 13,
              kVoltage = 14;
}
namespace place {
constexpr std::size_t kYear = 7, kMonth = 8, kDay = 9, kHour = 11, kMinute = 12, kSecond = 13;
}
constexpr int kTimeJumped = 1;  // a flag
constexpr int kLargest = 65535;
constexpr int kDayMinutes = 1440;

// The seconds of the day beyond the largest value come as that value less them.
int SecondsOf(std::int32_t value) {
  const int seconds = value < 0 ? kLargest - value : value;
  return std::clamp(seconds, 0, ClockDevice::kDaySeconds - 1);
}

}  // namespace

void ClockDevice::StartAnew() {
  utc_ = local_ = temperature_ = voltage_ = 0;
  offset_ = year_ = monthDay_ = 0;
}

void ClockDevice::OnCommand(int number, std::int32_t value) {
  if (number == command::kUtc) utc_ = SecondsOf(value);
  if (number == command::kLocal) local_ = SecondsOf(value);
  if (number == command::kMonthAndDay) {
    monthDay_ = std::clamp(value / 100, 1, 12) * 100 + std::clamp(value % 100, 1, 31);
  }
  if (number == command::kFlags && (value & kTimeJumped) != 0) offset_ = 0;
  if (number == command::kYear) year_ = std::clamp(value, 0, 99);
  if (number == command::kTemperature) temperature_ = value;
  if (number == command::kVoltage) voltage_ = value;
}

std::optional<int> ClockDevice::Shown(const std::optional<int>& seconds) const {
  if (!seconds) return std::nullopt;
  return OnCircle(*seconds + offset_, kDaySeconds);
}

void ClockDevice::TurnMinutes(int minutes) {
  offset_ = (offset_ + minutes % kDayMinutes * 60) % kDaySeconds;
  Changed();
}

void ClockDevice::FillReply(Reply& reply) {
  const int seconds = Local().value_or(0);
  PutByte(reply, place::kYear, year_);
  PutByte(reply, place::kMonth, Month());
  PutByte(reply, place::kDay, Day());
  PutByte(reply, place::kHour, seconds / 3600);
  PutByte(reply, place::kMinute, seconds / 60 % 60);
  PutByte(reply, place::kSecond, seconds % 60);
}

}  // namespace tvx::drawn
