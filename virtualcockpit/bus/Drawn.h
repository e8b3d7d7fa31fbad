// The instruments themselves: what they understand, answer and show is the same in the program's own panel.
#pragma once

#include "drawn/Device.h"

namespace tvx::vc {

using namespace drawn;

}  // namespace tvx::vc
