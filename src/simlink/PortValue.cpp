#include "simlink/PortValue.h"

#include <array>
#include <charconv>

#include "base/NumberFormat.h"

namespace tvx {

std::optional<std::uint16_t> BcdNibbles(float value) {
  const ShortText text = FormatNumber(value, "00000");
  if (text.length < 5) return std::nullopt;
  unsigned nibbles = 0;
  for (const char digit : text.View().substr(1, 4)) {
    if (digit < '0' || digit > '9') return std::nullopt;
    nibbles = nibbles << 4 | static_cast<unsigned>(digit - '0');
  }
  return static_cast<std::uint16_t>(nibbles);
}

std::optional<float> BcdValue(std::uint16_t nibbles) {
  int value = 0;
  for (int shift = 12; shift >= 0; shift -= 4) {
    const int digit = nibbles >> shift & 0xF;
    if (digit > 9) return std::nullopt;
    value = value * 10 + digit;
  }
  return static_cast<float>(value);
}

std::string ValueText(float value) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value);
  return {text.data(), end.ptr};
}

}  // namespace tvx
