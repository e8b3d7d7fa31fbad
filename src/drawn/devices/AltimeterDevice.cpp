#include "drawn/devices/AltimeterDevice.h"

#include <algorithm>

#include "drawn/Wire.h"

namespace tvx::drawn {
namespace {

namespace command {
constexpr int kFeet = 4, kPressure = 12;
}
namespace place {
constexpr std::size_t kPressure = 7, kReportsClicks = 10, kClicks = 12;
}
constexpr int kMostClicks = 100;  // in one answer; the field holds 127
constexpr int kNoClicks = 128;    // the field's value for them
constexpr int kStandardMillibar = 1013, kStandardInches = 2992, kHighestPressure = 32767;

}  // namespace

void AltimeterDevice::OnCommand(int number, std::int32_t value) {
  if (number == command::kFeet) feet_ = value;
  if (number == command::kPressure) pressure_ = value;
}

void AltimeterDevice::TurnKnob(int clicks) {
  clicks_ = std::clamp(clicks_ + clicks, -kMostClicks, kMostClicks);
  Changed();
}

// Always reports clicks of the knob, also when there were none: the pressure alone would be taken as a
// setting, and a whole millibar that is converted there and back would creep.
void AltimeterDevice::FillReply(Reply& reply) {
  const int standard = Inches() ? kStandardInches : kStandardMillibar;
  PutLetters(reply, 'P', 'P');
  PutWord(reply, place::kPressure, std::clamp(pressure_.value_or(standard), 0, kHighestPressure));
  PutByte(reply, place::kReportsClicks, 1);
  PutByte(reply, place::kClicks, kNoClicks + clicks_);
  clicks_ = 0;
}

}  // namespace tvx::drawn
