// An IO module on a line of its own, as it stands on a desk: 48 switches, 8 axes, 32 lamps.
#pragma once

#include <array>

#include "drawn/units/IOModuleState.h"
#include "virtualcockpit/bus/Frames.h"
#include "virtualcockpit/lines/Unit.h"

namespace tvx::vc {

class IOModuleUnit : public Unit {
 public:
  static constexpr int kSwitches = drawn::IOModuleState::kSwitches, kAxes = drawn::IOModuleState::kAxes,
                       kLamps = drawn::IOModuleState::kLamps;
  static constexpr int kTop = drawn::IOModuleState::kTop;

  // Throws a switch or moves an axis; the module reports at once. A number out of range is ignored, a
  // position is cut to 0..kTop.
  void SetSwitch(int index, bool on);
  void SetAxis(int axis, int raw);
  // One click of an encoder whose first half is switch `first`: one half goes on and off again.
  void Click(int first, bool clockwise);

  const drawn::IOModuleState& State() const { return state_; }
  bool Switch(int index) const { return state_.switches[static_cast<std::size_t>(index)]; }
  int Axis(int axis) const { return state_.axes[static_cast<std::size_t>(axis)]; }
  bool Lamp(int index) const { return state_.Lamp(index); }
  int Brightness() const { return state_.brightness; }
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
  drawn::IOModuleState state_;
  std::array<int, kSwitches> debounce_{};
  int address_ = 10;
};

}  // namespace tvx::vc
