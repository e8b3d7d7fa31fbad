// Game controllers through SDL, by number, without a window.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/JoystickDevice.h"

namespace tvx {

// Axes 0..5 of a device are X, Y, Z, R, U, V in the order of its driver, and its first hat the point of view:
// what is what on a given device is the user's to choose. A number is given to a device when it is first
// seen and stays with it, by its GUID and serial number, so that pulling one out does not renumber the
// others. Two devices of one kind that are pulled out together may come back in the other order.
class SdlJoystick final : public JoystickDevice {
 public:
  // `unreadable`: why a device that is connected is not seen, in words, or empty; asked now and then.
  explicit SdlJoystick(std::function<std::string()> unreadable = {}) : unreadable_(std::move(unreadable)) {}
  ~SdlJoystick() override;
  SdlJoystick(const SdlJoystick&) = delete;
  SdlJoystick& operator=(const SdlJoystick&) = delete;

  // SDL is started by the first call; where it cannot be, no number has a device.
  bool joyGetPosEx(std::int32_t number, JoyInfoEx& record) override;
  const JoystickInfo* Describe(std::int32_t number) override;
  std::string Trouble() override;

 private:
  struct Slot {
    JoystickInfo info;
    void* joystick = nullptr;  // an SDL_Joystick; nullptr while it is unplugged
  };

  bool Start();
  void Refresh();
  const Slot* SlotOf(std::int32_t number);  // null without a device
  Slot& SlotFor(const std::string& identity);

  std::function<std::string()> unreadable_;
  std::vector<Slot> slots_;
  bool started_ = false, failed_ = false;
  std::string trouble_;  // as of
  std::chrono::steady_clock::time_point troubleAt_{};
};

// An SDL axis (-32768..32767) as a position 0..65535.
constexpr std::uint32_t JoystickAxis(std::int16_t value) {
  return static_cast<std::uint32_t>(value + 32768);
}
// An SDL hat's bits (1 up, 2 right, 4 down, 8 left) as hundredths of a degree; 65535 where centred, and for
// bits that contradict each other.
std::uint32_t JoystickHat(std::uint8_t bits);

}  // namespace tvx
