// The trim wheel, 140: turned by hand or by its motor.
#pragma once

#include "drawn/Device.h"

namespace tvx::drawn {

class TrimDevice : public Device {
 public:
  static constexpr int kFullUp = 10000;

  using Device::Device;
  int Position() const { return position_; }  // 0 full nose down .. 10000 full nose up
  bool AutopilotFlies() const { return resists_; }
  // Turns the wheel by hand; against the motor it hardly moves.
  void TurnByHand(int clicks);

 protected:
  void StartAnew() override { resists_ = byHand_ = false; }  // the wheel stays where it is
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;

 private:
  int position_ = kFullUp / 2;
  bool resists_ = false, byHand_ = false;
};

}  // namespace tvx::drawn
