#include "virtualcockpit/devices/VorDevice.h"

#include <algorithm>

namespace tvx::vc {

void VorDevice::OnCommand(int command, std::int32_t value) {
  if (command == 5) course_ = std::clamp(value, 0, kNeedleSpan);
  if (command == 6) glide_ = std::clamp(value, 0, kNeedleSpan);
  if (command == 11) {
    const int flag = value & 0xFF;
    flag_ = flag == 1 ? ToFrom::To : flag == 2 ? ToFrom::From : ToFrom::Off;
    glideFlag_ = (value >> 8 & 0xFF) != 0;
  }
}

void VorDevice::TurnKnob(int degrees) {
  knob_ = ((knob_ + degrees) % 360 + 360) % 360;
  Changed();
}

void VorDevice::FillReply(Reply& reply) {
  const int raw = kKnobSteps - (knob_ * kKnobSteps + 180) / 360;
  reply[5] = 'C';
  reply[6] = static_cast<Byte>(raw >> 8);
  reply[7] = static_cast<Byte>(raw & 0xFF);
  reply[8] = 'A';
}

}  // namespace tvx::vc
