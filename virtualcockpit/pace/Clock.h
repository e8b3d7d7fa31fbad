// The time of the stand-ins: handed in, so that a test can let it pass as it likes.
#pragma once

#include <chrono>
#include <cstdint>

namespace tvx::vc {

inline constexpr std::int64_t kNsPerMs = 1'000'000, kNsPerSecond = 1'000'000'000;

class Clock {
 public:
  virtual ~Clock() = default;
  // Nanoseconds since some fixed moment; never runs backwards.
  virtual std::int64_t NowNs() const = 0;
  std::int64_t NowMs() const { return NowNs() / kNsPerMs; }
};

// The computer's own.
class SystemClock final : public Clock {
 public:
  std::int64_t NowNs() const override {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
  }
};

}  // namespace tvx::vc
