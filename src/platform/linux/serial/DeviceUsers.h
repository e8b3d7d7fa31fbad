// Which programs have a device open.
#pragma once

#include <string>
#include <vector>

#include "platform/SerialDevices.h"

namespace tvx {

// Fills `users` and `allUsersSeen` of every device, from what `root`/proc tells this user. A device is known
// by its number, not by the name that it was opened with. The processes that keep this program's lines are
// this program.
void FindUsers(std::vector<SerialDevice>& devices, const std::string& root);

}  // namespace tvx
