#include "virtualcockpit/devices/TransponderDevice.h"

#include <algorithm>
#include <array>

#include "virtualcockpit/devices/Wire.h"

namespace tvx::vc {
namespace {

using Mode = TransponderDevice::Mode;

constexpr std::array<int, 4> kPlaces = {1000, 100, 10, 1};

int DigitOf(int code, int place) {
  return code / kPlaces[static_cast<std::size_t>(place)] % 10;
}

bool IsCode(std::int32_t value) {
  if (value < 0 || value > 7777) return false;
  for (int place = 0; place < 4; ++place) {
    if (DigitOf(value, place) > 7) return false;
  }
  return true;
}

// The positions of the knob from left to right.
constexpr std::array kKnob = {Mode::Off, Mode::Standby, Mode::On, Mode::Altitude, Mode::Test};
constexpr std::array kKeyedKnob = {Mode::Off, Mode::Standby, Mode::Test, Mode::On, Mode::Altitude};

}  // namespace

void TransponderDevice::OnCommand(int command, std::int32_t value) {
  if (command == 4 && IsCode(value) && !HandRules()) code_ = value;
  if (command == 5 && HasKeys()) flightLevel_ = value;
  if (command == 6 && value >= 0 && value <= 4 && !HandRules()) mode_ = static_cast<Mode>(value);
  if (command == 12 && IsCode(value)) secondCode_ = value;
}

void TransponderDevice::TurnDigit(int digit, int clicks) {
  if (digit < 0 || digit > 3) return;
  const int old = DigitOf(code_, digit);
  code_ += (OnCircle(old + clicks, 8) - old) * kPlaces[static_cast<std::size_t>(digit)];
  typed_.clear();
  HandMoved();
}

void TransponderDevice::Key(int digit) {
  if (digit < 0 || digit > 7) return;
  typed_ += static_cast<char>('0' + digit);
  if (typed_.size() == 4) {
    code_ = std::stoi(typed_);
    typed_.clear();
  }
  HandMoved();
}

void TransponderDevice::ClearKeys() {
  typed_.clear();
  Changed();
}

void TransponderDevice::TurnMode(int clicks) {
  const auto& order = HasKeys() ? kKeyedKnob : kKnob;
  const auto at = std::find(order.begin(), order.end(), mode_) - order.begin();
  mode_ = order[static_cast<std::size_t>(std::clamp(static_cast<int>(at) + clicks, 0, 4))];
  HandMoved();
}

void TransponderDevice::Ident() {
  ident_ = true;
  Changed();
}

// The identification button is told once.
void TransponderDevice::FillReply(Reply& reply) {
  PutLetters(reply, 'X', HasKeys() ? 'F' : 'Y');
  PutByte(reply, 7, DigitOf(code_, 0) * 16 + DigitOf(code_, 1));
  PutByte(reply, 8, DigitOf(code_, 2) * 16 + DigitOf(code_, 3));
  if (HasKeys()) {
    const auto at = std::find(kKeyedKnob.begin(), kKeyedKnob.end(), mode_) - kKeyedKnob.begin();
    PutByte(reply, 17, static_cast<int>(at) + 1);
  } else {
    PutByte(reply, 15, 1);
    PutByte(reply, 17, static_cast<int>(mode_) + 1);
  }
  PutByte(reply, 13, ident_ ? 1 : 0);
  if (ident_) Changed();
  ident_ = false;
}

}  // namespace tvx::vc
