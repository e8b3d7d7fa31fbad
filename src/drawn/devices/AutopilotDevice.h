// The autopilot panel, 124.
#pragma once

#include "drawn/Device.h"

namespace tvx::drawn {

class AutopilotDevice : public Device {
 public:
  enum Lamp { kEngaged = 0x01, kHeading = 0x02, kNav = 0x08, kApproach = 0x10, kAltitude = 0x20 };
  // In the order of the bits in which they are told.
  enum class Button { Ap, Hdg, Nav, Apr, Rev, Alt, Up, Dn };
  static constexpr int kButtons = 8;

  using Device::Device;
  bool Lit(Lamp lamp) const { return (lamps_ & lamp) != 0; }
  int Altitude() const { return altitude_; }            // ft
  int VerticalSpeed() const { return verticalSpeed_; }  // ft/min
  int Trim() const { return trim_; }                    // -16000 down .. 16000 up

  void Press(Button button);
  void TurnAltitude(int clicks);       // 100 ft each, 0..50000
  void TurnVerticalSpeed(int clicks);  // 100 ft/min each, -6000..6000

 protected:
  void StartAnew() override;
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;

 private:
  std::uint32_t lamps_ = 0;
  int altitude_ = 0, verticalSpeed_ = 0, trim_ = 0;
  int pressed_ = 0;  // bits, until they are told
  bool altitudeTurned_ = false, speedTurned_ = false;
};

}  // namespace tvx::drawn
