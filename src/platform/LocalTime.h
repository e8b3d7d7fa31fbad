// Times of day as this computer's clock on the wall shows them.
#pragma once

#include <ctime>

namespace tvx {

std::tm LocalTimeOf(std::time_t time);

}  // namespace tvx
