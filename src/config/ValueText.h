// Values as text and back, the same in every locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Bytes.h"

namespace tvx {

// A number in decimal notation, with an optional sign, fraction and exponent ("0.5", ".5", "-1.25E-03"). A
// value too small for T becomes 0 or the nearest denormal. std::nullopt for other text, for infinities and
// NaN, and for a value too large for T. T is float or double.
template <typename T>
std::optional<T> ParseReal(std::string_view text);

// The same, rounded to the nearest whole number, halves to the even one; std::nullopt where that does not fit
// T. T is Byte or std::int16_t.
template <typename T>
std::optional<T> ParseInteger(std::string_view text);

// Appends the shortest plain decimal notation that reads back to the same bits, never with an exponent.
// Infinities and NaN, which the file cannot hold, become 0.
void AppendValue(std::string& out, float value);
void AppendValue(std::string& out, double value);
void AppendValue(std::string& out, Byte value);
void AppendValue(std::string& out, std::int16_t value);
// Appends the text between double quotes. There is no escape for a double quote, so one inside becomes an
// apostrophe; NUL characters are left out.
void AppendValue(std::string& out, std::string_view text);

}  // namespace tvx
