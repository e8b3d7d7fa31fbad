// Rudder and brakes out of a joystick's axes.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "config/Records.h"
#include "ffb/pedals/RawPosition.h"
#include "ffb/pedals/clsJoy.h"

namespace tvx {

// The axes in the order of the forms' list; place 0 is no axis.
inline constexpr std::array<std::string_view, 7> kJoystickAxes = {"-none-", "R-Axis", "X-Axis", "Y-Axis",
                                                                  "Z-Axis", "U-Axis", "V-Axis"};
// The position 0..65535 of an axis by its place in the list; 0 for place 0 and beyond the list.
int ReadAxis(clsJoy& joystick, int place);
// Whether a device has the axis at a place in the list. Place 0, and what is beyond the list, is no axis.
bool HasAxis(const JoystickInfo& device, int place);
std::string NoAxisWords(const JoystickInfo& device, int place);  // that it does not have it

// What is wrong with the joystick settings, in the order of looking; empty when they can be used.
std::vector<std::string_view> CheckJoystick(const YokeRecord& record);
inline constexpr std::string_view kJoystickUnusable = "Joystick settings incorrect or incomplete.";

// Least distance between a brake's two ends, and of the rudder's centre from either limit, raw.
inline constexpr int kLeastPedalTravel = 1000;

// -1 at the left limit, 0 at the centre, 1 at the right limit, straight between; a limit may be the larger
// one. Beyond the limits -1 and 1. A hundredth about the centre counts as centred. 0 for settings that fail
// the check.
float RudderRatio(int raw, const YokeRecord& record);
// 0 released, 1 pressed; the first fiftieth counts as released. 0 for settings that fail the check.
float BrakeRatio(int raw, int released, int pressed);

struct PedalRatios {
  float rudder = 0, leftBrake = 0, rightBrake = 0;
};
PedalRatios ReadPedals(clsJoy& joystick, const YokeRecord& record);

}  // namespace tvx
