#include "virtualcockpit/devices/AudioDevice.h"

#include <algorithm>

#include "virtualcockpit/devices/Wire.h"

namespace tvx::vc {

void AudioDevice::OnCommand(int command, std::int32_t value) {
  if (command == 4) markers_ = static_cast<std::uint32_t>(std::max(value, 0));
}

void AudioDevice::Toggle(Selector selector) {
  bool& on = selected_[static_cast<std::size_t>(selector)];
  on = !on;
  Changed();
}

void AudioDevice::TurnVolume(int clicks) {
  volume_ = std::clamp(volume_ + clicks * 8, 0, 255);
  Changed();
}

void AudioDevice::FillReply(Reply& reply) {
  const auto bit = [this](Selector selector, int place) { return Selected(selector) ? 1 << place : 0; };
  PutByte(reply, 7, bit(Selector::Com2, 0) | bit(Selector::Nav2, 1) | bit(Selector::Com1, 5));
  PutByte(reply, 8,
          bit(Selector::Nav1, 0) | bit(Selector::Marker, 1) | bit(Selector::Adf, 2) | bit(Selector::Dme, 3));
  PutByte(reply, 10, volume_);
}

}  // namespace tvx::vc
