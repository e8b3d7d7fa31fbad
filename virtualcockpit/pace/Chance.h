// Chance that can be repeated: the same seed gives the same sequence on every computer.
#pragma once

#include <cstdint>

namespace tvx::vc {

class Chance {
 public:
  explicit Chance(std::uint32_t seed = 1) : state_(seed == 0 ? 1 : seed) {}
  // True in so many of a hundred cases; 0 or less never, 100 or more always. Every call takes one number.
  bool Hits(double percent) { return Part() * 100 < percent; }
  // A whole number, both ends included; the lower one when they are the wrong way round.
  std::int64_t Between(std::int64_t least, std::int64_t most) {
    const double part = Part();
    return most <= least ? least
                         : least + static_cast<std::int64_t>(part * static_cast<double>(most - least + 1));
  }

 private:
  // 0 up to below 1.
  double Part() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return static_cast<double>(state_) / 4294967296.0;
  }
  std::uint32_t state_;
};

}  // namespace tvx::vc
