#include "platform/HostName.h"

#include <algorithm>
#include <charconv>

namespace tvx {
namespace {

constexpr std::size_t kLongestName = 253;
constexpr std::size_t kLongestPart = 63;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool IsNameByte(char c) {
  return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

bool IsNamePart(std::string_view part) {
  return !part.empty() && part.size() <= kLongestPart && part.front() != '-' && part.back() != '-' &&
         std::all_of(part.begin(), part.end(), IsNameByte);
}

}  // namespace

std::optional<std::uint32_t> ParseIPv4(std::string_view text) {
  std::uint32_t address = 0;
  const char* at = text.data();
  const char* const end = at + text.size();
  for (int part = 0; part < 4; ++part) {
    if (part > 0 && (at == end || *at++ != '.')) return std::nullopt;
    unsigned value = 0;
    const auto [next, error] = std::from_chars(at, end, value);
    if (error != std::errc{} || next - at > 3 || value > 255) return std::nullopt;
    address = (address << 8) | value;
    at = next;
  }
  return at == end ? std::optional(address) : std::nullopt;
}

bool IsHostName(std::string_view text) {
  if (text.size() > kLongestName) return false;
  if (std::all_of(text.begin(), text.end(), [](char c) { return IsDigit(c) || c == '.'; })) return false;
  for (;;) {
    const std::size_t point = text.find('.');
    if (!IsNamePart(text.substr(0, point))) return false;
    if (point == std::string_view::npos) return true;
    text.remove_prefix(point + 1);
  }
}

}  // namespace tvx
