#include "platform/LocalTime.h"

#include <time.h>

namespace tvx {

std::tm LocalTimeOf(std::time_t time) {
  std::tm local{};
  localtime_r(&time, &local);
  return local;
}

}  // namespace tvx
