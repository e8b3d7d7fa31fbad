// Numbers as the forms show them: patterns such as "000.00" or "####0", never depending on the locale.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace tvx {

// A short text held in place, for displays that change many times a second without allocating.
struct ShortText {
  std::array<char, 24> chars{};
  std::size_t length = 0;

  std::string_view View() const { return {chars.data(), length}; }
  bool operator==(const ShortText& other) const { return View() == other.View(); }
};

// `value` in `pattern`: '0' a digit that is always shown, '#' a digit shown only where it is needed, '.' the
// decimal point. Whole digits beyond the pattern are shown all the same; decimals are cut to the pattern's
// count, rounded, halves away from zero. A pattern without a '0' before the point shows none there:
// FormatNumber(0.5, "###.0") is ".5". Negative values get a leading '-', unless they round to zero. NaN and
// infinities are shown as "---", values whose text does not fit a ShortText likewise.
ShortText FormatNumber(double value, std::string_view pattern);

// The same as a std::string.
inline std::string FormatNumberText(double value, std::string_view pattern) {
  return std::string(FormatNumber(value, pattern).View());
}

}  // namespace tvx
