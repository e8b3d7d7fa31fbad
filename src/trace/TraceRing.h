// The last five minutes of everything that went in and out, in memory of a fixed size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/Bytes.h"
#include "trace/TraceFile.h"

namespace tvx {

class TraceRing {
 public:
  static constexpr std::int64_t kKeptMs = 5 * 60 * 1000;
  static constexpr std::size_t kUsualSize = 8 * 1024 * 1024;  // bytes; five busy minutes take some six

  explicit TraceRing(std::size_t size = kUsualSize) : ring_(size) {}

  // Takes a piece of up to 65535 bytes; the oldest make room. Longer ones, and those that the ring has no
  // room for, are left out. Never allocates.
  void Note(TraceSource source, bool fromProgram, ByteView bytes, std::int64_t nowMs);
  std::size_t Pieces() const { return pieces_; }
  // All of it as a file, what is older than kKeptMs at `nowMs` apart.
  std::string FileText(std::string_view configuration, std::int64_t nowMs) const;

 private:
  struct Head {
    std::int64_t ms;
    std::uint16_t length;
    TraceSource source;
    bool fromProgram;
  };
  std::size_t Next(std::size_t place, std::size_t by) const { return (place + by) % ring_.size(); }
  void Put(ByteView bytes);
  void Get(std::size_t place, std::span<Byte> out) const;
  Head HeadAt(std::size_t place) const;
  void DropOldest();

  std::vector<Byte> ring_;
  std::size_t begin_ = 0, used_ = 0, pieces_ = 0;
};

}  // namespace tvx
