#include "drawn/devices/NeedleDevice.h"

#include <algorithm>

namespace tvx::drawn {
namespace {

namespace command {
constexpr int kFirst = 5, kSecond = 6, kDisplay = 6, kDisplayControl = 11;
constexpr int kHousingFirst = 4, kHousingSecond = 5;  // of a cluster's housing
}  // namespace command

int Position(std::int32_t value) {
  return std::clamp(value, 0, kNeedlePositions - 1);
}

}  // namespace

void NeedleDevice::StartAnew() {
  first_ = second_ = 0;
  display_ = 0;
  displayControl_ = 0;
}

void NeedleDevice::OnCommand(int number, std::int32_t value) {
  const bool housing = IsCluster();
  if (number == (housing ? command::kHousingFirst : command::kFirst)) {
    first_ = Position(value);
  } else if (HasDisplay() && number == command::kDisplay) {
    display_ = value;
  } else if (HasDisplay() && number == command::kDisplayControl) {
    displayControl_ = value & 0xFF;
  } else if (number == (housing ? command::kHousingSecond : command::kSecond)) {
    second_ = Position(value);
  }
}

}  // namespace tvx::drawn
