#include "platform/windows/WindowsClock.h"

#include <chrono>

#include "platform/LocalTime.h"

namespace tvx {

// The performance counter goes on while the computer sleeps.
std::int64_t WindowsClock::MonotonicMs() const {
  using std::chrono::milliseconds;
  return std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

std::tm WindowsClock::LocalTime() const {
  return LocalTimeOf(std::time(nullptr));
}

}  // namespace tvx
