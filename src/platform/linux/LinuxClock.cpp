#include "platform/linux/LinuxClock.h"

#include <chrono>

namespace tvx {

std::int64_t LinuxClock::MonotonicMs() const {
  using namespace std::chrono;
  return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

std::tm LinuxClock::LocalTime() const {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return local;
}

}  // namespace tvx
