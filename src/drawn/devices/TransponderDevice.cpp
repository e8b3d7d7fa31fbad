#include "drawn/devices/TransponderDevice.h"

#include <algorithm>
#include <array>

#include "drawn/Wire.h"

namespace tvx::drawn {
namespace {

using Mode = TransponderDevice::Mode;

namespace command {
constexpr int kCode = 4, kMode = 6, kSecondCode = 12;
}
namespace place {
constexpr std::size_t kCodeHigh = 7, kCodeLow = 8, kIdent = 13, kWhichCode = 15, kKnob = 17;
}
constexpr int kHighestCode = 7777, kHighestDigit = 7, kDigits = 4;
constexpr int kLastMode = static_cast<int>(Mode::Test);

constexpr std::array<int, kDigits> kPlaces = {1000, 100, 10, 1};

int DigitOf(int code, int digit) {
  return code / kPlaces[static_cast<std::size_t>(digit)] % 10;
}

bool IsCode(std::int32_t value) {
  if (value < 0 || value > kHighestCode) return false;
  for (int digit = 0; digit < kDigits; ++digit) {
    if (DigitOf(value, digit) > kHighestDigit) return false;
  }
  return true;
}

// The positions of the knob from left to right.
constexpr std::array kKnob = {Mode::Off, Mode::Standby, Mode::On, Mode::Altitude, Mode::Test};
constexpr std::array kKeyedKnob = {Mode::Off, Mode::Standby, Mode::Test, Mode::On, Mode::Altitude};

}  // namespace

// The mode knob stays where it stands.
void TransponderDevice::StartAnew() {
  code_ = 0;
  ident_ = false;
  typed_.clear();
  flightLevel_ = secondCode_ = 0;
}

void TransponderDevice::OnCommand(int number, std::int32_t value) {
  if (number == command::kCode && IsCode(value) && !HandRules()) code_ = value;
  if (number == kFlightLevelCommand && HasKeys()) flightLevel_ = value;
  if (number == command::kMode && value >= 0 && value <= kLastMode && !HandRules())
    mode_ = static_cast<Mode>(value);
  if (number == command::kSecondCode && IsCode(value)) secondCode_ = value;
}

void TransponderDevice::TurnDigit(int digit, int clicks) {
  if (digit < 0 || digit >= kDigits) return;
  const int old = DigitOf(code_, digit);
  code_ += (OnCircle(old + clicks, kHighestDigit + 1) - old) * kPlaces[static_cast<std::size_t>(digit)];
  typed_.clear();
  HandMoved();
}

void TransponderDevice::Key(int digit) {
  if (digit < 0 || digit > kHighestDigit) return;
  typed_ += static_cast<char>('0' + digit);
  if (typed_.size() == kDigits) {
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
  mode_ = order[static_cast<std::size_t>(std::clamp(static_cast<int>(at) + clicks, 0, kLastMode))];
  HandMoved();
}

void TransponderDevice::Ident() {
  ident_ = true;
  Changed();
}

// The identification button is told once.
void TransponderDevice::FillReply(Reply& reply) {
  PutLetters(reply, 'X', HasKeys() ? 'F' : 'Y');
  PutByte(reply, place::kCodeHigh, DigitOf(code_, 0) * 16 + DigitOf(code_, 1));
  PutByte(reply, place::kCodeLow, DigitOf(code_, 2) * 16 + DigitOf(code_, 3));
  if (HasKeys()) {
    const auto at = std::find(kKeyedKnob.begin(), kKeyedKnob.end(), mode_) - kKeyedKnob.begin();
    PutByte(reply, place::kKnob, static_cast<int>(at) + 1);
  } else {
    PutByte(reply, place::kWhichCode, 1);
    PutByte(reply, place::kKnob, static_cast<int>(mode_) + 1);
  }
  PutByte(reply, place::kIdent, ident_ ? 1 : 0);
  if (ident_) Changed();
  ident_ = false;
}

void TransponderDevice::ReadReply(const Reply& reply) {
  if (WasTold(command::kMode)) return;
  const int knob = ByteAt(reply, place::kKnob) - 1;
  if (knob < 0 || knob > kLastMode) return;
  mode_ = HasKeys() ? kKeyedKnob[static_cast<std::size_t>(knob)] : static_cast<Mode>(knob);
}

}  // namespace tvx::drawn
