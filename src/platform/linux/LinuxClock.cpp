#include "platform/linux/LinuxClock.h"

#include <time.h>

#include "platform/LocalTime.h"

namespace tvx {

std::int64_t LinuxClock::MonotonicMs() const {
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000;
}

std::tm LinuxClock::LocalTime() const {
  return LocalTimeOf(std::time(nullptr));
}

}  // namespace tvx
