// Game controllers that are connected and may not be read.
#pragma once

#include <functional>
#include <string>

namespace tvx {

// Of the kernel's list of input devices (/proc/bus/input/devices), the first joystick whose event device this
// user may not read, in words, with what to do; empty where there is none, or no such list.
std::string UnreadableJoystick(const std::string& list = "/proc/bus/input/devices",
                               const std::string& devices = "/dev/input/");

}  // namespace tvx
