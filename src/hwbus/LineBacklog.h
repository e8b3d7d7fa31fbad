// How much a serial line still has to carry of what was written to it. The line's speed is known; what the
// adapter and the driver hold cannot be asked for.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace tvx {

// 38400 baud with 11 bits to a byte.
inline constexpr double kLineBytesPerMs = 38400.0 / 11 / 1000;

class LineBacklog {
 public:
  // Bytes that the line has taken.
  void Add(std::size_t bytes, std::int64_t nowMs) {
    const double before = Bytes(nowMs);
    bytes_ = before + static_cast<double>(bytes);
    atMs_ = nowMs;
    added_ += bytes;
  }
  // Bytes that it has not carried yet.
  double Bytes(std::int64_t nowMs) const {
    return std::max(0.0, bytes_ - static_cast<double>(nowMs - atMs_) * kLineBytesPerMs);
  }
  // How long it takes to carry them.
  double Ms(std::int64_t nowMs) const { return Bytes(nowMs) / kLineBytesPerMs; }
  // The line was opened anew: what it held is gone.
  void Clear() { bytes_ = 0; }
  // All bytes ever added.
  std::uint64_t Added() const { return added_; }

 private:
  double bytes_ = 0;  // at atMs_
  std::int64_t atMs_ = 0;
  std::uint64_t added_ = 0;
};

}  // namespace tvx
