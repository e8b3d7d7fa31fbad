// What an IO module on a line of its own shows, and how its switches and axes stand.
#pragma once

#include <array>
#include <cstdint>

namespace tvx::drawn {

struct IOModuleState {
  static constexpr int kSwitches = 48, kAxes = 8, kLamps = 32;
  static constexpr int kTop = 4095;  // an axis at its upper end
  static constexpr int kBrightest = 15;
  static constexpr int kCommands = 16;

  std::array<bool, kSwitches> switches{};
  std::array<int, kAxes> axes{};  // 0..kTop
  std::uint32_t lamps = 0;        // bit n: lamp n was switched on
  int lampTest = 0;               // 0 off, 1..32 one lamp, 255 all
  int brightness = 0;             // 0..kBrightest

  // Whether a lamp is lit: by itself, or by the lamp test.
  bool Lamp(int index) const;
  // False, and no effect, for a command that is not to be seen.
  bool TakeCommand(int command, std::int32_t value);
  // Shows zero; switches and axes stay as they stand.
  void StartAnew();
};

}  // namespace tvx::drawn
