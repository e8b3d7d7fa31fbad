#include "platform/LocalTime.h"

#include <time.h>

namespace tvx {

std::tm LocalTimeOf(std::time_t time) {
  std::tm local{};
  localtime_s(&local, &time);
  return local;
}

}  // namespace tvx
