#include "base/NumberFormat.h"

#include <cmath>
#include <cstdio>
#include <cstring>

namespace tvx {
namespace {

ShortText Literal(std::string_view text) {
  ShortText result;
  std::memcpy(result.chars.data(), text.data(), text.size());
  result.length = text.size();
  return result;
}

}  // namespace

ShortText FormatNumber(double value, std::string_view pattern) {
  const std::size_t point = pattern.find('.');
  const std::string_view whole = pattern.substr(0, point);
  const std::string_view decimals =
      point == std::string_view::npos ? std::string_view() : pattern.substr(point + 1);
  const std::size_t minWhole = whole.find('0') == std::string_view::npos ? 0 : whole.size() - whole.find('0');
  const std::size_t lastZero = decimals.rfind('0');
  const std::size_t minDecimals = lastZero == std::string_view::npos ? 0 : lastZero + 1;

  double scale = 1.0;
  for (std::size_t i = 0; i < decimals.size(); ++i) scale *= 10.0;
  const double scaled = std::round(std::fabs(value) * scale);
  if (!(scaled < 1e15)) return Literal("---");
  const auto units = static_cast<unsigned long long>(scaled);
  const auto unitScale = static_cast<unsigned long long>(scale);

  std::array<char, 64> text{};
  int used = 0;
  const auto append = [&](const char* format, int width, unsigned long long number) {
    used += std::snprintf(text.data() + used, text.size() - static_cast<std::size_t>(used), format, width,
                          number);
  };
  if (std::signbit(value) && units != 0) text[static_cast<std::size_t>(used++)] = '-';
  if (units / unitScale != 0 || minWhole > 0) append("%0*llu", static_cast<int>(minWhole), units / unitScale);
  if (point != std::string_view::npos) {
    text[static_cast<std::size_t>(used++)] = '.';
    if (!decimals.empty()) {
      append("%0*llu", static_cast<int>(decimals.size()), units % unitScale);
      std::size_t shown = decimals.size();
      while (shown > minDecimals && text[static_cast<std::size_t>(used) - 1] == '0') --used, --shown;
    }
  }
  if (static_cast<std::size_t>(used) > ShortText{}.chars.size()) return Literal("---");
  return Literal({text.data(), static_cast<std::size_t>(used)});
}

}  // namespace tvx
