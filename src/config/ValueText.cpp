#include "config/ValueText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace tvx {
namespace {

template <typename T>
void AppendReal(std::string& out, T value) {
  std::array<char, 400> text;  // the longest is the smallest denormal double
  const auto end = std::to_chars(text.data(), text.data() + text.size(), std::isfinite(value) ? value : T{0},
                                 std::chars_format::fixed);
  out.append(text.data(), end.ptr);
}

void AppendWhole(std::string& out, int value) {
  std::array<char, 12> text;
  out.append(text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr);
}

}  // namespace

void AppendValue(std::string& out, float value) {
  AppendReal(out, value);
}
void AppendValue(std::string& out, double value) {
  AppendReal(out, value);
}
void AppendValue(std::string& out, Byte value) {
  AppendWhole(out, value);
}
void AppendValue(std::string& out, std::int16_t value) {
  AppendWhole(out, value);
}

void AppendValue(std::string& out, std::string_view text) {
  out += '"';
  for (const char c : text) {
    if (c == '\0') continue;
    out += c == '"' ? '\'' : c;
  }
  out += '"';
}

}  // namespace tvx
