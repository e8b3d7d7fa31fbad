// The altimeter with its pressure knob.
#pragma once

#include <optional>

#include "drawn/Device.h"

namespace tvx::drawn {

class AltimeterDevice : public Device {
 public:
  using Device::Device;
  const std::optional<std::int32_t>& Feet() const { return feet_; }
  // The pressure in the window: whole millibar, or hundredths of an inch of mercury where Inches() is true.
  const std::optional<std::int32_t>& Pressure() const { return pressure_; }
  bool Inches() const { return Id().model == 1; }
  // Turns the knob by clicks of a hundredth of an inch, right positive. The clicks wait for the next answer.
  void TurnKnob(int clicks);
  int WaitingClicks() const { return clicks_; }

 protected:
  void StartAnew() override { feet_ = pressure_ = clicks_ = 0; }
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;

 private:
  std::optional<std::int32_t> feet_, pressure_;
  int clicks_ = 0;
};

}  // namespace tvx::drawn
