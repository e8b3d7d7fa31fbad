// Moves a needle of a live gauge by hand, while the run is halted.
#pragma once

#include <cstdint>

#include "hwbus/gaugebus/Serial.h"

namespace tvx {

// Remembers where the needle is wanted and sends it when the transmit slot is free: a slider that is dragged
// never waits, and the last position always arrives.
class LiveNeedle {
 public:
  explicit LiveNeedle(Serial& serial) : serial_(serial) {}

  void Move(int gaugeID, int command, std::int32_t position) {
    wanted_ = {gaugeID, command, position};
    due_ = true;
  }
  // After Serial::TickTransmit.
  void Tick() {
    if (!due_ || serial_.TransmitPending()) return;
    due_ = false;
    serial_.WriteGaugeCommand(wanted_.gaugeID, wanted_.command, wanted_.position);
  }

 private:
  struct Wanted {
    int gaugeID = 0, command = 0;
    std::int32_t position = 0;
  };
  Serial& serial_;
  Wanted wanted_;
  bool due_ = false;
};

}  // namespace tvx
