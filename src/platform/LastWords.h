// What is still sent when the program dies.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
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

// What is prepared, in memory of its own, for a handler that runs at any moment and in any thread.
class PreparedWords {
 public:
  // As LastWords::Prepare.
  void Prepare(const UdpTarget& target, std::span<const ByteView> datagrams) {
    whole_ = false;
    target_ = target;
    count_ = 0;
    for (const ByteView datagram : datagrams) {
      if (count_ == LastWords::kMost || datagram.size() > LastWords::kLongest) continue;
      std::copy(datagram.begin(), datagram.end(), bytes_[count_].begin());
      sizes_[count_++] = datagram.size();
    }
    whole_ = count_ > 0;
  }
  void Forget() { whole_ = false; }
  // Hands each datagram to `send(target, datagram)`, the first time only. As safe as `send` is.
  template <typename Send>
  void SayOnce(Send send) {
    if (!whole_.exchange(false)) return;
    for (std::size_t i = 0; i < count_; ++i) send(target_, ByteView(bytes_[i]).first(sizes_[i]));
  }

 private:
  // Taken back before anything is changed, and by whoever says it.
  std::atomic<bool> whole_ = false;
  static_assert(std::atomic<bool>::is_always_lock_free);
  UdpTarget target_;
  std::size_t count_ = 0;
  std::array<std::size_t, LastWords::kMost> sizes_{};
  std::array<std::array<Byte, LastWords::kLongest>, LastWords::kMost> bytes_{};
};

}  // namespace tvx
