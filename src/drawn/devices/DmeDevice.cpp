#include "drawn/devices/DmeDevice.h"

#include <algorithm>

#include "drawn/Wire.h"
#include "drawn/devices/RadioDevice.h"

namespace tvx::drawn {
namespace {

namespace command {
constexpr int kDistance = 4, kSpeed = 5, kMinutes = 6, kFlags = 11, kFrequency = 12;
}
// Flags: whether a station is received, and above that the source that the program shows.
constexpr int kReceived = 1, kSourceShift = 4, kSourceMask = 0x0F;
namespace place {
constexpr std::size_t kSelector = 17, kFrequencyLow = 19, kFrequencyHigh = 20, kSource = 24;
}
constexpr int kFirstReceiver = 2, kHasFrequency = 3, kSecondReceiver = 4;  // of the selector's byte
constexpr int kLargestFrequency = 65535;

}  // namespace

// The selectors stay where they stand.
void DmeDevice::StartAnew() {
  distance_ = speed_ = minutes_ = 0;
  received_ = setByHand_ = false;
  toldSource_ = frequency_ = 0;
}

void DmeDevice::OnCommand(int number, std::int32_t value) {
  if (number == command::kDistance) distance_ = std::max(value, 0);
  if (number == command::kSpeed) speed_ = std::max(value, 0);
  if (number == command::kMinutes) minutes_ = std::max(value, 0);
  if (number == command::kFlags && value >= 0) {
    received_ = (value & kReceived) != 0;
    toldSource_ = value >> kSourceShift & kSourceMask;
  }
  if (number == command::kFrequency) frequency_ = std::clamp(value, 0, kLargestFrequency);
}

void DmeDevice::TurnReceiver(int clicks) {
  receiver_ = std::clamp(receiver_ + clicks, 1, 2);
  Changed();
}

void DmeDevice::TurnSource(int clicks) {
  source_ = static_cast<Source>(std::clamp(static_cast<int>(source_) + clicks, 1, 3));
  Changed();
}

void DmeDevice::TurnCoarse(int clicks) {
  FrequencyPair pair{Band::Nav, 0, frequency_};
  pair.TurnCoarse(clicks);
  frequency_ = pair.standby;
  setByHand_ = true;
  Changed();
}

void DmeDevice::TurnFine(int clicks) {
  FrequencyPair pair{Band::Nav, 0, frequency_};
  pair.TurnFine(clicks);
  frequency_ = pair.standby;
  setByHand_ = true;
  Changed();
}

// A frequency is told from the moment on that the hand has set one.
void DmeDevice::FillReply(Reply& reply) {
  PutLetters(reply, 'S', 'D');
  if (!HasFrequency()) {
    PutByte(reply, place::kSelector, receiver_ == 1 ? kFirstReceiver : kSecondReceiver);
    return;
  }
  if (!setByHand_) return;
  PutByte(reply, place::kSelector, kHasFrequency);
  PutByte(reply, place::kFrequencyLow, frequency_);
  PutByte(reply, place::kFrequencyHigh, frequency_ >> 8);
  PutByte(reply, place::kSource, static_cast<int>(source_));
}

void DmeDevice::ReadReply(const Reply& reply) {
  const int selector = ByteAt(reply, place::kSelector);
  if (!HasFrequency()) {
    if (selector == kFirstReceiver || selector == kSecondReceiver)
      receiver_ = selector == kFirstReceiver ? 1 : 2;
    return;
  }
  const int source = ByteAt(reply, place::kSource);
  if (selector == kHasFrequency && source >= 1 && source <= 3) source_ = static_cast<Source>(source);
}

}  // namespace tvx::drawn
