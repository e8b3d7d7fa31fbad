// Conversions between number types: to the nearest integer with halves to even, and checked.
#pragma once

#include <cmath>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace tvx {

// A value that does not fit the type it must be stored in or sent as. Thrown by the *OrThrow operations;
// every public operation that uses them catches it at its own boundary.
class RangeError : public std::range_error {
 public:
  using std::range_error::range_error;
};

// The nearest whole number, halves to the even neighbour: 0.5 -> 0, 1.5 -> 2, -2.5 -> -2. NaN stays NaN.
inline double RoundHalfEven(double value) {
  const double down = std::floor(value);
  const double rest = value - down;
  if (rest < 0.5) return down;
  if (rest > 0.5) return down + 1.0;
  return std::fmod(down, 2.0) == 0.0 ? down : down + 1.0;
}

// `value` rounded to the integer type T (at most 32 bits); std::nullopt for NaN, an infinity, or a
// value outside T.
template <typename T>
std::optional<T> RoundTo(double value) {
  static_assert(std::is_integral_v<T> && sizeof(T) <= 4);
  // A sum of this size has no place for a fraction: adding rounds it away, halves to even. Up to 2^51 that is
  // exact, and what lies above fits no T.
  constexpr double kNoFraction = 6755399441055744.0;  // 1.5 * 2^52
  const double rounded = (value + kNoFraction) - kNoFraction;
  if (!(rounded >= static_cast<double>(std::numeric_limits<T>::min()) &&
        rounded <= static_cast<double>(std::numeric_limits<T>::max()))) {
    return std::nullopt;
  }
  return static_cast<T>(rounded);
}

// As RoundTo; throws RangeError where RoundTo gives std::nullopt.
template <typename T>
T RoundToOrThrow(double value) {
  const auto result = RoundTo<T>(value);
  if (!result) throw RangeError("value " + std::to_string(value) + " does not fit");
  return *result;
}

}  // namespace tvx
