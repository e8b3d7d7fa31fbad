#include "virtualcockpit/devices/AudioDevice.h"

#include <algorithm>

#include "virtualcockpit/bus/Wire.h"

namespace tvx::vc {
namespace {

namespace command {
constexpr int kMarkers = 4;
}
// Bytes of the answer, and the bits in the first two of them.
namespace place {
constexpr std::size_t kFirstSelectors = 7, kSecondSelectors = 8, kVolume = 10;
}
constexpr int kCom2Bit = 0, kNav2Bit = 1, kCom1Bit = 5;
constexpr int kNav1Bit = 0, kMarkerBit = 1, kAdfBit = 2, kDmeBit = 3;
constexpr int kVolumeClick = 8, kLoudest = 255;

}  // namespace

void AudioDevice::OnCommand(int number, std::int32_t value) {
  if (number == command::kMarkers) markers_ = static_cast<std::uint32_t>(std::max(value, 0));
}

void AudioDevice::Toggle(Selector selector) {
  bool& on = selected_[static_cast<std::size_t>(selector)];
  on = !on;
  Changed();
}

void AudioDevice::TurnVolume(int clicks) {
  volume_ = std::clamp(volume_ + clicks * kVolumeClick, 0, kLoudest);
  Changed();
}

void AudioDevice::FillReply(Reply& reply) {
  const auto bit = [this](Selector selector, int number) { return Selected(selector) ? 1 << number : 0; };
  PutByte(reply, place::kFirstSelectors,
          bit(Selector::Com2, kCom2Bit) | bit(Selector::Nav2, kNav2Bit) | bit(Selector::Com1, kCom1Bit));
  PutByte(reply, place::kSecondSelectors,
          bit(Selector::Nav1, kNav1Bit) | bit(Selector::Marker, kMarkerBit) | bit(Selector::Adf, kAdfBit) |
              bit(Selector::Dme, kDmeBit));
  PutByte(reply, place::kVolume, volume_);
}

}  // namespace tvx::vc
