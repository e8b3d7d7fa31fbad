#include "drawn/units/IOModuleState.h"

#include <cstdlib>

namespace tvx::drawn {
namespace {

constexpr int kAll = 255;
constexpr std::uint32_t kLowHalf = 0xFFFF;

namespace command {
constexpr int kFirstLamps = 4, kSecondLamps = 5, kBrightness = 6, kLampTest = 12;
}

}  // namespace

bool IOModuleState::Lamp(int index) const {
  return (lamps >> index & 1) != 0 || lampTest == kAll || lampTest == index + 1;
}

bool IOModuleState::TakeCommand(int number, std::int32_t value) {
  const auto word = static_cast<std::uint32_t>(std::abs(value)) & kLowHalf;
  switch (number) {
    case command::kFirstLamps:
      lamps = (lamps & ~kLowHalf) | word;
      return true;
    case command::kSecondLamps:
      lamps = (lamps & kLowHalf) | word << 16;
      return true;
    case command::kBrightness:
      brightness = static_cast<int>(word & kBrightest);
      return true;
    case command::kLampTest:
      lampTest = static_cast<int>(word);
      return true;
    default:
      return false;
  }
}

void IOModuleState::StartAnew() {
  lamps = 0;
  lampTest = brightness = 0;
}

}  // namespace tvx::drawn
