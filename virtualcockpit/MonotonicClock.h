// The time, on a clock that never jumps.
#pragma once

#include <chrono>
#include <cstdint>

namespace tvx::vc {

// Milliseconds since some fixed moment.
inline std::int64_t NowMs() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

}  // namespace tvx::vc
