#include "virtualcockpit/devices/NeedleDevice.h"

#include <algorithm>

namespace tvx::vc {
namespace {

int Position(std::int32_t value) {
  return std::clamp(value, 0, kNeedlePositions - 1);
}

}  // namespace

void NeedleDevice::OnCommand(int command, std::int32_t value) {
  const bool cluster = IsCluster();
  if (command == (cluster ? 4 : 5)) {
    first_ = Position(value);
  } else if (cluster ? command == 5 : command == 6 && !HasDisplay()) {
    second_ = Position(value);
  } else if (command == 6 && HasDisplay()) {
    display_ = value;
  } else if (command == 11 && HasDisplay()) {
    displayControl_ = value & 0xFF;
  }
}

}  // namespace tvx::vc
