// The joystick beside the yokes: rudder pedals with toe brakes, usually.
#pragma once

#include <cstdint>

#include "platform/JoystickDevice.h"

namespace tvx {

// One joystick number. Every read asks the device anew, without a memory: two reads in one cycle may differ.
// Without a device each value is that of the clean record, 0; no read fails.
class clsJoy {
 public:
  explicit clsJoy(JoystickDevice& device) : device_(&device) {}

  std::int32_t JoystickID = 0;  // to be set before reading; 0-based

  std::int32_t JoyCurBut() { return Read(&JoyInfoEx::ButtonNumber); }
  std::int32_t JoyButState() { return Read(&JoyInfoEx::Buttons); }
  std::int32_t JoyPOV() { return Read(&JoyInfoEx::Pov); }
  std::int32_t JoyV() { return Read(&JoyInfoEx::VPos); }
  std::int32_t JoyU() { return Read(&JoyInfoEx::UPos); }
  std::int32_t JoyR() { return Read(&JoyInfoEx::RPos); }
  std::int32_t JoyZ() { return Read(&JoyInfoEx::ZPos); }
  std::int32_t JoyY() { return Read(&JoyInfoEx::YPos); }
  std::int32_t JoyX() { return Read(&JoyInfoEx::XPos); }

  // ODDITY: a position can be assigned, but without effect: the next read asks the device.
  void SetJoyPOV(std::int32_t value) { Assign(&JoyInfoEx::Pov, value); }
  void SetJoyV(std::int32_t value) { Assign(&JoyInfoEx::VPos, value); }
  void SetJoyU(std::int32_t value) { Assign(&JoyInfoEx::UPos, value); }
  void SetJoyR(std::int32_t value) { Assign(&JoyInfoEx::RPos, value); }
  void SetJoyZ(std::int32_t value) { Assign(&JoyInfoEx::ZPos, value); }
  void SetJoyY(std::int32_t value) { Assign(&JoyInfoEx::YPos, value); }
  void SetJoyX(std::int32_t value) { Assign(&JoyInfoEx::XPos, value); }

  // Whether there is a device. A value of 0 may also be a pedal at its end.
  bool Present() {
    Read(&JoyInfoEx::XPos);
    return answered_;
  }

 private:
  using Field = std::uint32_t JoyInfoEx::*;

  std::int32_t Read(Field field) {
    position_ = clean_;
    position_.Size = sizeof(JoyInfoEx);
    position_.Flags = kEveryField;
    answered_ = device_->joyGetPosEx(JoystickID, position_);
    return static_cast<std::int32_t>(position_.*field);
  }
  void Assign(Field field, std::int32_t value) { position_.*field = static_cast<std::uint32_t>(value); }

  static constexpr std::uint32_t kEveryField = 255;
  JoystickDevice* device_;
  JoyInfoEx position_;
  JoyInfoEx clean_;
  bool answered_ = false;
};

}  // namespace tvx
