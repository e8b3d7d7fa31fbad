#include "virtualcockpit/devices/DmeDevice.h"

#include <algorithm>

#include "virtualcockpit/devices/RadioDevice.h"
#include "virtualcockpit/devices/Wire.h"

namespace tvx::vc {

void DmeDevice::OnCommand(int command, std::int32_t value) {
  if (command == 4) distance_ = std::max(value, 0);
  if (command == 5) speed_ = std::max(value, 0);
  if (command == 6) minutes_ = std::max(value, 0);
  if (command == 11 && value >= 0) {
    received_ = (value & 1) != 0;
    toldSource_ = value >> 4 & 0x0F;
  }
  if (command == 12) frequency_ = std::clamp(value, 0, 65535);
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
    PutByte(reply, 17, receiver_ == 1 ? 2 : 4);
    return;
  }
  if (!setByHand_) return;
  PutByte(reply, 17, 3);
  PutByte(reply, 19, frequency_);
  PutByte(reply, 20, frequency_ >> 8);
  PutByte(reply, 24, static_cast<int>(source_));
}

}  // namespace tvx::vc
