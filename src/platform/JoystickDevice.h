// Game controllers, as the joystick reader sees them.
#pragma once

#include <cstdint>
#include <string>

namespace tvx {

// The platform's extended joystick record: thirteen words, 52 bytes.
struct JoyInfoEx {
  std::uint32_t Size = 0;
  std::uint32_t Flags = 0;
  std::uint32_t XPos = 0;  // axes 0..65535, the middle 32768
  std::uint32_t YPos = 0;
  std::uint32_t ZPos = 0;
  std::uint32_t RPos = 0;
  std::uint32_t UPos = 0;
  std::uint32_t VPos = 0;
  std::uint32_t Buttons = 0;       // bit n: button n + 1 is pressed
  std::uint32_t ButtonNumber = 0;  // how many are pressed
  std::uint32_t Pov = 0;           // hat, hundredths of a degree clockwise from ahead; 65535 where centred
  std::uint32_t Reserved1 = 0;
  std::uint32_t Reserved2 = 0;
};
static_assert(sizeof(JoyInfoEx) == 52);

// What a device says of itself.
struct JoystickInfo {
  std::string name;      // as its maker calls it
  std::string identity;  // one word; the same for one device under any number. Two of a kind may share it
  int axes = 0;
};

class JoystickDevice {
 public:
  virtual ~JoystickDevice() = default;
  // Fills the record with how joystick `number` (0-based) stands now. False, and the record as it was, where
  // there is none, or it was unplugged. A number stays with its device: one that is plugged in again gets the
  // number it had. Never waits.
  virtual bool joyGetPosEx(std::int32_t number, JoyInfoEx& record) = 0;
  // Joystick `number`; null where there is none. Valid until the next call. Never allocates while the devices
  // are the same.
  virtual const JoystickInfo* Describe(std::int32_t number) = 0;
  // Why one that is connected is not seen, in words; empty where no such reason is known.
  virtual std::string Trouble() = 0;
};

}  // namespace tvx
