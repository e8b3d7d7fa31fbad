// An IO module on a line of its own, as it stands on a desk: 48 switches, 8 axes, 32 lamps.
#pragma once

#include <array>

#include "virtualcockpit/bus/Frames.h"
#include "virtualcockpit/lines/Unit.h"

namespace tvx::vc {

class IOModuleUnit : public Unit {
 public:
  static constexpr int kSwitches = 48, kAxes = 8, kLamps = 32;
  static constexpr int kTop = 4095;  // an axis at its upper end

  // Throws a switch or moves an axis; the module reports at once. A number out of range is ignored, a
  // position is cut to 0..kTop.
  void SetSwitch(int index, bool on);
  void SetAxis(int axis, int raw);
  // One click of an encoder whose first half is switch `first`: one half goes on and off again.
  void Click(int first, bool clockwise);

  bool Switch(int index) const { return switches_[static_cast<std::size_t>(index)]; }
  int Axis(int axis) const { return axes_[static_cast<std::size_t>(axis)]; }
  // Whether a lamp is lit: by the program, or by its lamp test.
  bool Lamp(int index) const;
  int Brightness() const { return brightness_; }  // 0..15
  int Debounce(int index) const { return debounce_[static_cast<std::size_t>(index)]; }
  int Address() const { return address_; }
  std::string Words() const override;

 protected:
  void OnBytes(ByteView bytes) override;
  void OnInterrupt() override { decoder_.Reset(); }
  void StartAnew() override;

 private:
  void OnCommand(int number, std::int32_t value);
  void Report();

  FrameDecoder decoder_;
  std::array<bool, kSwitches> switches_{};
  std::array<int, kAxes> axes_{};
  std::array<int, kSwitches> debounce_{};
  std::uint32_t lamps_ = 0;
  int lampTest_ = 0;  // 0 off, 1..32 one lamp, 255 all
  int brightness_ = 0;
  int address_ = 10;
};

}  // namespace tvx::vc
