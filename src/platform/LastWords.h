// What is still sent when the program dies.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "base/Bytes.h"

namespace tvx {

// A computer's IPv4 address (its first number in the highest byte) and a UDP port.
struct UdpTarget {
  std::uint32_t address = 0;
  std::int32_t port = 0;  // 1..65535
  bool operator==(const UdpTarget&) const = default;
};

class LastWords {
 public:
  static constexpr std::size_t kMost = 8;
  static constexpr std::size_t kLongest = 512;  // bytes

  virtual ~LastWords() = default;
  // Where the simulator's datagrams go now; std::nullopt while that is not known.
  virtual std::optional<UdpTarget> Target() const = 0;
  // From now on these leave should the program crash, in place of those of before; none: nothing is said.
  // What is beyond kMost, and what is longer than kLongest, is left out.
  virtual void Prepare(const UdpTarget& target, std::span<const ByteView> datagrams) = 0;
  // Sends one at once, from a socket of its own. False where the system refuses it.
  virtual bool Send(const UdpTarget& target, ByteView datagram) = 0;
};

}  // namespace tvx
