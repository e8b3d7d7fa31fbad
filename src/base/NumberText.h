// Numbers that are read from text, the same in every locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "base/Bytes.h"

namespace tvx {

// A number as files hold it: decimal, with an optional sign, fraction and exponent ("0.5", ".5",
// "-1.25E-03"). A value too small for T becomes 0 or the nearest denormal. std::nullopt for other text, for
// infinities and NaN, and for a value too large for T. T is float or double.
template <typename T>
std::optional<T> ParseReal(std::string_view text);

// The same, rounded to the nearest whole number, halves to the even one; std::nullopt where that does not fit
// T. T is Byte or std::int16_t.
template <typename T>
std::optional<T> ParseInteger(std::string_view text);

// A number as a hand types it into a box: the same with blanks around it, and a comma or a point before its
// fraction. "2,992" is a little less than three. Groups of digits cannot be set apart: "1.000,5" and "1 000"
// are refused.
template <typename T>
std::optional<T> TypedReal(std::string_view text);

// A whole number from `lowest` to `highest` in a box; a fraction other than 0 is refused.
std::optional<int> TypedWhole(std::string_view text, int lowest, int highest);

}  // namespace tvx
