// Who has a UDP port of this computer.
#pragma once

#include <cstdint>
#include <string>

namespace tvx {

// "name (pid)" of the program that is bound to the IPv4 port; "a program (pid)" where this user may not look
// into it; empty where none is.
std::string OwnerOfUdpPort(std::int32_t port);

}  // namespace tvx
