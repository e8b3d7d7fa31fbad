#include "virtualcockpit/devices/IoModuleDevice.h"

#include <algorithm>

namespace tvx::vc {

void IoModuleDevice::OnCommand(int command, std::int32_t value) {
  if (command == 4) value4_ = value;
  if (command == 5) value5_ = value;
  if (command == 6) lamps_ = static_cast<std::uint32_t>(value < 0 ? -value : value) & 0xFFFF;
}

void IoModuleDevice::SetSwitch(int number, bool on) {
  if (number < 0 || number >= kSwitches) return;
  switches_[static_cast<std::size_t>(number)] = on;
  Changed();
}

bool IoModuleDevice::Switch(int number) const {
  return number >= 0 && number < kSwitches && switches_[static_cast<std::size_t>(number)];
}

void IoModuleDevice::SetAnalogue(int number, int value) {
  if (number < 0 || number >= kAnalogues) return;
  analogues_[static_cast<std::size_t>(number)] = std::clamp(value, 0, 4095);
  Changed();
}

// Switch 0 is the highest bit of the sixth byte. Of two analogue values in turn, one byte holds the high four
// bits of both, and a byte for each the low eight.
void IoModuleDevice::FillReply(Reply& reply) {
  for (int i = 0; i < kSwitches; ++i) {
    if (Switch(i)) reply[static_cast<std::size_t>(5 + i / 8)] |= static_cast<Byte>(0x80 >> (i % 8));
  }
  for (std::size_t k = 0; k < kAnalogues / 2; ++k) {
    const int even = analogues_[2 * k];
    const int odd = analogues_[2 * k + 1];
    reply[12 + k] = static_cast<Byte>((even >> 8) << 4 | odd >> 8);
    reply[16 + 2 * k] = static_cast<Byte>(even & 0xFF);
    reply[17 + 2 * k] = static_cast<Byte>(odd & 0xFF);
  }
}

}  // namespace tvx::vc
