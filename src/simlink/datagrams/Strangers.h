// Datagrams of computers that are not the simulator's: counted by their address, and not decoded.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tvx {

struct Stranger {
  std::uint32_t address = 0;  // IPv4, its first number in the highest byte
  std::uint64_t datagrams = 0;
  std::int64_t lastMs = 0;
};

class Strangers {
 public:
  static constexpr std::size_t kMost = 8;

  // Never allocates. Where too many are known, the one that was heard longest ago is forgotten.
  void Note(std::uint32_t address, std::int64_t nowMs);
  void Clear() { rows_ = {}; }
  // The one that sent most of those heard within the last `withinMs`; null where there is none.
  const Stranger* Loudest(std::int64_t nowMs, std::int64_t withinMs) const;

 private:
  std::array<Stranger, kMost> rows_{};
};

// "192.168.1.7"
std::string AddressText(std::uint32_t address);

}  // namespace tvx
