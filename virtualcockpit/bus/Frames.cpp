#include "virtualcockpit/bus/Frames.h"

#include <algorithm>

namespace tvx::vc {
namespace {

constexpr Byte kStart = 0x00, kEnd = 0xFF, kBlank = 0x20;
constexpr Byte kAlwaysSet = 0x08, kNegative = 0x04, kHighBit = 0x02, kLowBit = 0x01;
constexpr Byte kNewAddress = 0x2C, kNewAddressMark = 0xAA;

bool IsAddressFrame(const std::array<Byte, kCommandFrameSize>& b) {
  return b[2] == kNewAddress && b[4] == kNewAddressMark;
}

Frame FrameOf(const std::array<Byte, kCommandFrameSize>& b) {
  if (IsAddressFrame(b)) return AddressFrame{b[1], b[3]};
  const int low = (b[3] & ~kLowBit) | (b[2] & kLowBit);
  const int high = (b[4] & ~kHighBit) | (b[2] & kHighBit);
  const std::int32_t magnitude = high * 256 + low;
  return CommandFrame{b[1], b[2] >> 4, (b[2] & kNegative) != 0 ? -magnitude : magnitude};
}

}  // namespace

// Whether what has come so far can still become a frame. The bits that every frame sets let a wrong start be
// seen within five bytes.
bool FrameDecoder::CouldBeFrame() const {
  const auto& b = bytes_;
  if (length_ >= 1 && b[0] != kStart) return false;
  if (length_ >= 3 && (b[2] & kAlwaysSet) == 0) return false;
  const bool addressPossible = length_ < 3 || b[2] == kNewAddress;
  if (length_ >= 4 && (b[3] & kLowBit) == 0 && !addressPossible) return false;
  if (length_ >= 5) {
    const bool address = IsAddressFrame(b);
    if (!address && ((b[3] & kLowBit) == 0 || (b[4] & kHighBit) == 0)) return false;
  }
  return length_ < kCommandFrameSize || b[5] == kEnd;
}

void FrameDecoder::DropFirst() {
  ++(bytes_[0] == kEnd || bytes_[0] == kBlank ? fillers_ : garbage_);
  std::copy(bytes_.begin() + 1, bytes_.begin() + static_cast<std::ptrdiff_t>(length_), bytes_.begin());
  --length_;
}

void FrameDecoder::Take(ByteView bytes, const std::function<void(const Frame&)>& handler) {
  for (const Byte byte : bytes) {
    bytes_[length_++] = byte;
    while (length_ > 0 && !CouldBeFrame()) DropFirst();
    if (length_ < kCommandFrameSize) continue;
    length_ = 0;
    ++frames_;
    handler(FrameOf(bytes_));
  }
}

}  // namespace tvx::vc
