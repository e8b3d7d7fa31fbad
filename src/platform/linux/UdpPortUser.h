// Who has a UDP port of this computer.
#pragma once

#include <cstdint>
#include <string>

namespace tvx {

// "name (pid)" of the program that is bound to the IPv4 port; empty where none is, or where this user may not
// look into it. Reads /proc, which takes some milliseconds. `root` stands before /proc; empty but in tests.
std::string UserOfUdpPort(std::int32_t port, const std::string& root = {});

}  // namespace tvx
