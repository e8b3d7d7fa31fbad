// Bytes on a line, and cursors that read and write them without ever leaving their span.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tvx {

using Byte = std::uint8_t;
using ByteView = std::span<const Byte>;

// IEEE-754 single from four bytes, least significant byte first. The span must hold at least four bytes.
inline float FloatFromLittleEndian(std::span<const Byte, 4> b) {
  const std::uint32_t bits = static_cast<std::uint32_t>(b[0]) | (static_cast<std::uint32_t>(b[1]) << 8) |
                             (static_cast<std::uint32_t>(b[2]) << 16) |
                             (static_cast<std::uint32_t>(b[3]) << 24);
  return std::bit_cast<float>(bits);
}

// The four bytes of an IEEE-754 single, least significant first.
inline void FloatToLittleEndian(float value, std::span<Byte, 4> out) {
  const auto bits = std::bit_cast<std::uint32_t>(value);
  for (std::size_t i = 0; i < 4; ++i) out[i] = static_cast<Byte>(bits >> (8 * i));
}

// Reads a span from its start. A read that needs more bytes than are left gives std::nullopt (Skip: false)
// and does not move the cursor.
class ByteReader {
 public:
  explicit ByteReader(ByteView bytes) : left_(bytes) {}

  std::size_t Left() const { return left_.size(); }

  std::optional<float> FloatLE() {
    if (left_.size() < 4) return std::nullopt;
    const float value = FloatFromLittleEndian(left_.first<4>());
    left_ = left_.subspan(4);
    return value;
  }
  bool Skip(std::size_t count) {
    if (left_.size() < count) return false;
    left_ = left_.subspan(count);
    return true;
  }

 private:
  ByteView left_;
};

}  // namespace tvx
