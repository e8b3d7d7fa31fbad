// How a serial port stands, in words for the user.
#pragma once

#include <string>
#include <string_view>

#include "platform/SerialPort.h"

namespace tvx {

// One line that says how the port stands and, where it is in trouble, what to do. `comNumber` of 0 or less:
// no port was chosen. `device` is the path that was tried, `group` the group that may open it (NoPermission
// only).
std::string SerialWords(int comNumber, SerialState state, std::string_view device, std::string_view group);
std::string SerialWords(int comNumber, const SerialPort& port);

// Whether the user should look at it: a port that was chosen and could not be opened, or went away.
bool SerialTrouble(int comNumber, SerialState state);

}  // namespace tvx
