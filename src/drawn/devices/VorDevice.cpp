#include "drawn/devices/VorDevice.h"

#include <algorithm>

#include "drawn/Wire.h"

namespace tvx::drawn {
namespace {

namespace command {
constexpr int kCourse = 5, kGlide = 6, kFlags = 11;
}
// Flags: to or from in the low byte, above it whether a glide slope is received.
constexpr int kTo = 1, kFrom = 2, kGlideShift = 8;
namespace place {
constexpr std::size_t kKnob = 7;
}
constexpr int kFirstCourse = 240, kSecondCourse = 60;  // of the stand-in simulator at the start

}  // namespace

VorDevice::VorDevice(const Identity& identity)
    : Device(identity), knob_(identity.type == gaugetype::kVor2 ? kSecondCourse : kFirstCourse) {}

// The knob stays where it stands.
void VorDevice::StartAnew() {
  course_ = glide_ = 0;
  flag_ = ToFrom::Off;
  glideFlag_ = true;
}

void VorDevice::OnCommand(int number, std::int32_t value) {
  if (number == command::kCourse) course_ = std::clamp(value, 0, kNeedleSpan);
  if (number == command::kGlide) glide_ = std::clamp(value, 0, kNeedleSpan);
  if (number == command::kFlags) {
    const int flag = value & 0xFF;
    flag_ = flag == kTo ? ToFrom::To : flag == kFrom ? ToFrom::From : ToFrom::Off;
    glideFlag_ = (value >> kGlideShift & 1) == 0;
  }
}

void VorDevice::TurnKnob(int degrees) {
  knob_ = OnCircle(knob_ + degrees, 360);
  Changed();
}

void VorDevice::FillReply(Reply& reply) {
  PutLetters(reply, 'C', 'A');
  PutWord(reply, place::kKnob, KnobRaw(knob_));
}

void VorDevice::ReadReply(const Reply& reply) {
  knob_ = DegreesOfKnob(WordAt(reply, place::kKnob));
}

}  // namespace tvx::drawn
