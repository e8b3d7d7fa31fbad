#include "drawn/devices/IOModuleDevice.h"

#include <algorithm>

#include "drawn/Wire.h"

namespace tvx::drawn {
namespace {

namespace command {
constexpr int kNumber = 4, kBrightness = 5;
}
namespace place {
constexpr std::size_t kText = 6, kHighBits = 13, kLowBits = 17;
}
constexpr std::size_t kTextLength = 6;

}  // namespace

void IOModuleDevice::OnCommand(int number, std::int32_t value) {
  if (number == command::kNumber) number_ = value;
  if (number == command::kBrightness) brightness_ = std::clamp(value, 0, kBrightest);
  if (number == kLampsCommand) lamps_ = static_cast<std::uint32_t>(std::max(value, 0)) & 0xFFFF;
}

void IOModuleDevice::SetAnalogue(int number, int value) {
  if (number < 0 || number >= kAnalogues) return;
  analogues_[static_cast<std::size_t>(number)] = std::clamp(value, 0, kLargestAnalogue);
  Changed();
}

int IOModuleDevice::Analogue(int number) const {
  return number < 0 || number >= kAnalogues ? 0 : analogues_[static_cast<std::size_t>(number)];
}

// Two analogue inputs share a byte for their upper four bits; each has a byte for its lower eight.
void IOModuleDevice::FillReply(Reply& reply) {
  for (std::size_t i = 0; i < kTextLength && i < text_.size(); ++i)
    PutByte(reply, place::kText + i, text_[i]);
  for (std::size_t k = 0; k < kAnalogues / 2; ++k) {
    const int even = analogues_[2 * k];
    const int odd = analogues_[2 * k + 1];
    PutByte(reply, place::kHighBits + k, (even >> 8) << 4 | odd >> 8);
    PutByte(reply, place::kLowBits + 2 * k, even);
    PutByte(reply, place::kLowBits + 2 * k + 1, odd);
  }
}

void IOModuleDevice::ReadReply(const Reply& reply) {
  text_.clear();
  for (std::size_t i = 0; i < kTextLength; ++i) {
    const int letter = ByteAt(reply, place::kText + i);
    if (letter >= ' ' && letter <= '~') text_ += static_cast<char>(letter);
  }
  for (std::size_t k = 0; k < kAnalogues / 2; ++k) {
    const int high = ByteAt(reply, place::kHighBits + k);
    analogues_[2 * k] = (high >> 4) * 256 + ByteAt(reply, place::kLowBits + 2 * k);
    analogues_[2 * k + 1] = (high & 0x0F) * 256 + ByteAt(reply, place::kLowBits + 2 * k + 1);
  }
}

}  // namespace tvx::drawn
