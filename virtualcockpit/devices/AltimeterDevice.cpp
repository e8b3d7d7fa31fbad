#include "virtualcockpit/devices/AltimeterDevice.h"

#include <algorithm>

namespace tvx::vc {
namespace {

constexpr int kMostClicks = 100;  // in one answer; the field holds 128 less
constexpr int kStandardMillibar = 1013, kStandardInches = 2992;

}  // namespace

void AltimeterDevice::OnCommand(int command, std::int32_t value) {
  if (command == 4) feet_ = value;
  if (command == 12) pressure_ = value;
}

void AltimeterDevice::TurnKnob(int clicks) {
  clicks_ = std::clamp(clicks_ + clicks, -kMostClicks, kMostClicks);
  Changed();
}

// Always reports clicks of the knob, also none: the pressure alone would be taken as a setting, and a whole
// millibar that is converted there and back would creep.
void AltimeterDevice::FillReply(Reply& reply) {
  const int pressure =
      std::clamp(pressure_.value_or(Inches() ? kStandardInches : kStandardMillibar), 0, 32767);
  reply[5] = 'P';
  reply[6] = static_cast<Byte>(pressure >> 8);
  reply[7] = static_cast<Byte>(pressure & 0xFF);
  reply[8] = 'P';
  reply[9] = 1;
  reply[11] = static_cast<Byte>(128 + clicks_);
  clicks_ = 0;
}

}  // namespace tvx::vc
