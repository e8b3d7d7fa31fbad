// An IO module on the gauge bus: sixteen lamps, two values, 48 switches, eight analogue inputs.
#pragma once

#include <array>
#include <bitset>

#include "virtualcockpit/bus/Device.h"

namespace tvx::vc {

class IoModuleDevice : public Device {
 public:
  static constexpr int kLamps = 16, kSwitches = 48, kAnalogues = 8;

  using Device::Device;
  bool Lamp(int number) const { return (lamps_ >> number & 1) != 0; }  // 0..15
  std::int32_t Value4() const { return value4_; }
  std::int32_t Value5() const { return value5_; }

  // Inputs outside their range are ignored; analogue values are cut to 0..4095.
  void SetSwitch(int number, bool on);
  bool Switch(int number) const;
  void SetAnalogue(int number, int value);

 protected:
  void OnCommand(int command, std::int32_t value) override;
  void FillReply(Reply& reply) override;

 private:
  std::uint32_t lamps_ = 0;
  std::int32_t value4_ = 0, value5_ = 0;
  std::bitset<kSwitches> switches_;
  std::array<int, kAnalogues> analogues_{};
};

}  // namespace tvx::vc
