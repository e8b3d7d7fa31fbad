// A set of ports that is worked off in the order of their numbers.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "simlink/PortRow.h"

namespace tvx {

// Adding a port, and working off those that are in, cost the same however many ports there could be.
class DuePorts {
 public:
  void Add(Port port) {
    words_[port / kBits] |= Bit(port);
    filled_[port / kBits / kBits] |= Bit(port / kBits);
  }
  void Clear() {
    words_.fill(0);
    filled_.fill(0);
  }
  // Calls `serve` with each port, lowest first, and takes it out when that returns true. Ends at the first
  // false: that port and all above it stay. True when the set is empty afterwards. `serve` adds no ports.
  template <typename Serve>
  bool WorkOff(Serve serve) {
    for (std::size_t part = 0; part < filled_.size(); ++part) {
      for (; filled_[part] != 0; filled_[part] &= filled_[part] - 1) {
        const std::size_t word = part * kBits + Lowest(filled_[part]);
        for (std::uint64_t left = words_[word]; left != 0; left &= left - 1) {
          if (serve(static_cast<Port>(word * kBits + Lowest(left)))) continue;
          words_[word] = left;
          return false;
        }
        words_[word] = 0;
      }
    }
    return true;
  }

 private:
  static constexpr std::size_t kBits = 64;
  static constexpr std::size_t kWords = (kMaxPorts + kBits - 1) / kBits;

  static std::uint64_t Bit(std::size_t number) { return std::uint64_t{1} << number % kBits; }
  static std::size_t Lowest(std::uint64_t bits) { return static_cast<std::size_t>(std::countr_zero(bits)); }

  std::array<std::uint64_t, kWords> words_{};                         // one bit for each port
  std::array<std::uint64_t, (kWords + kBits - 1) / kBits> filled_{};  // one for each word that is not 0
};

}  // namespace tvx
