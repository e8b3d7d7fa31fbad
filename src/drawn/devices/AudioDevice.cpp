#include "drawn/devices/AudioDevice.h"

#include <algorithm>

#include "drawn/Wire.h"

namespace tvx::drawn {
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

void AudioDevice::ReadReply(const Reply& reply) {
  const auto take = [&](Selector selector, std::size_t byte, int number) {
    selected_[static_cast<std::size_t>(selector)] = (ByteAt(reply, byte) >> number & 1) != 0;
  };
  take(Selector::Com2, place::kFirstSelectors, kCom2Bit);
  take(Selector::Nav2, place::kFirstSelectors, kNav2Bit);
  take(Selector::Com1, place::kFirstSelectors, kCom1Bit);
  take(Selector::Nav1, place::kSecondSelectors, kNav1Bit);
  take(Selector::Marker, place::kSecondSelectors, kMarkerBit);
  take(Selector::Adf, place::kSecondSelectors, kAdfBit);
  take(Selector::Dme, place::kSecondSelectors, kDmeBit);
  volume_ = ByteAt(reply, place::kVolume);
}

}  // namespace tvx::drawn
