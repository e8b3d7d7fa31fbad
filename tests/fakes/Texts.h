// What was said, shown or sent, in its order; and what a line carries.
#pragma once

#include <string>
#include <vector>

#include "base/Bytes.h"

namespace tvx {
using Texts = std::vector<std::string>;
using Bytes = std::vector<Byte>;
}  // namespace tvx
