#include "virtualcockpit/devices/VorDevice.h"

#include <algorithm>

#include "virtualcockpit/devices/Wire.h"

namespace tvx::vc {

// The knobs stand where the simulator's courses do at the start.
VorDevice::VorDevice(const Identity& identity) : Device(identity), knob_(identity.type == 107 ? 60 : 240) {}

void VorDevice::OnCommand(int command, std::int32_t value) {
  if (command == 5) course_ = std::clamp(value, 0, kNeedleSpan);
  if (command == 6) glide_ = std::clamp(value, 0, kNeedleSpan);
  if (command == 11) {
    const int flag = value & 0xFF;
    flag_ = flag == 1 ? ToFrom::To : flag == 2 ? ToFrom::From : ToFrom::Off;
    glideFlag_ = (value >> 8 & 1) == 0;
  }
}

void VorDevice::TurnKnob(int degrees) {
  knob_ = ((knob_ + degrees) % 360 + 360) % 360;
  Changed();
}

void VorDevice::FillReply(Reply& reply) {
  PutLetters(reply, 'C', 'A');
  PutWord(reply, 7, KnobRaw(knob_));
}

}  // namespace tvx::vc
