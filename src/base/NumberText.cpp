#include "base/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <system_error>

#include "base/Rounding.h"

namespace tvx {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Whether a number that did not fit its type is too large rather than too small: by the place of its first
// digit other than 0, moved by the exponent. The text is known to be a number.
bool IsLarge(std::string_view number) {
  const std::size_t e = number.find_first_of("eE");
  const std::string_view mantissa = number.substr(0, e);
  const std::size_t firstDigit = mantissa.find_first_of("123456789");
  if (firstDigit == std::string_view::npos) return false;
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  long long place = static_cast<long long>(point) - static_cast<long long>(firstDigit);
  if (e != std::string_view::npos) {
    std::string_view exponent = number.substr(e + 1);
    if (!exponent.empty() && exponent.front() == '+') exponent.remove_prefix(1);
    int shift = 0;
    const auto parsed = std::from_chars(exponent.data(), exponent.data() + exponent.size(), shift);
    if (parsed.ec == std::errc::result_out_of_range) return exponent.front() != '-';
    place += shift;
  }
  return place > 0;
}

// What a hand typed, as a file would have it: no blanks around it, a point for the comma.
std::string AsInAFile(std::string_view typed) {
  while (!typed.empty() && (typed.front() == ' ' || typed.front() == '\t')) typed.remove_prefix(1);
  while (!typed.empty() && (typed.back() == ' ' || typed.back() == '\t')) typed.remove_suffix(1);
  std::string text(typed);
  std::replace(text.begin(), text.end(), ',', '.');
  return text;
}

}  // namespace

template <typename T>
std::optional<T> ParseReal(std::string_view text) {
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
    if (!text.empty() && text.front() == '-') return std::nullopt;
  }
  // Keeps out "inf" and "nan", which from_chars would take.
  const std::string_view digits = text.substr(!text.empty() && text.front() == '-' ? 1 : 0);
  if (digits.empty() || (!IsDigit(digits.front()) && digits.front() != '.')) return std::nullopt;

  T value{};
  const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (status == std::errc::invalid_argument || end != text.data() + text.size()) return std::nullopt;
  if (status == std::errc::result_out_of_range) {
    if (IsLarge(digits)) return std::nullopt;
    return T{0};
  }
  return value;
}
template std::optional<float> ParseReal<float>(std::string_view);
template std::optional<double> ParseReal<double>(std::string_view);

template <typename T>
std::optional<T> ParseInteger(std::string_view text) {
  const auto value = ParseReal<double>(text);
  return value ? RoundTo<T>(*value) : std::nullopt;
}
template std::optional<Byte> ParseInteger<Byte>(std::string_view);
template std::optional<std::int16_t> ParseInteger<std::int16_t>(std::string_view);

template <typename T>
std::optional<T> TypedReal(std::string_view text) {
  return ParseReal<T>(AsInAFile(text));
}
template std::optional<float> TypedReal<float>(std::string_view);
template std::optional<double> TypedReal<double>(std::string_view);

std::optional<int> TypedWhole(std::string_view text, int lowest, int highest) {
  const auto number = TypedReal<double>(text);
  if (!number || *number != std::floor(*number) || *number < lowest || *number > highest) return std::nullopt;
  return static_cast<int>(*number);
}

}  // namespace tvx
