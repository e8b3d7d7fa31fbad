#include "virtualcockpit/devices/IoModuleDevice.h"

#include <algorithm>

#include "virtualcockpit/devices/Wire.h"

namespace tvx::vc {

void IoModuleDevice::OnCommand(int command, std::int32_t value) {
  if (command == 4) number_ = value;
  if (command == 5) brightness_ = std::clamp(value, 0, kBrightest);
  if (command == 6) lamps_ = static_cast<std::uint32_t>(std::max(value, 0)) & 0xFFFF;
}

void IoModuleDevice::SetAnalogue(int number, int value) {
  if (number < 0 || number >= kAnalogues) return;
  analogues_[static_cast<std::size_t>(number)] = std::clamp(value, 0, 4095);
  Changed();
}

int IoModuleDevice::Analogue(int number) const {
  return number < 0 || number >= kAnalogues ? 0 : analogues_[static_cast<std::size_t>(number)];
}

// Of two analogue values in turn, one byte holds the high four bits of both, and a byte for each the low
// eight.
void IoModuleDevice::FillReply(Reply& reply) {
  for (std::size_t i = 0; i < 6 && i < text_.size(); ++i) PutByte(reply, 6 + i, text_[i]);
  for (std::size_t k = 0; k < kAnalogues / 2; ++k) {
    const int even = analogues_[2 * k];
    const int odd = analogues_[2 * k + 1];
    PutByte(reply, 13 + k, (even >> 8) << 4 | odd >> 8);
    PutByte(reply, 17 + 2 * k, even);
    PutByte(reply, 18 + 2 * k, odd);
  }
}

}  // namespace tvx::vc
