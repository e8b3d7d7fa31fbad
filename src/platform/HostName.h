// Addresses and names of computers, as texts.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tvx {

// Four decimal numbers 0..255 with points between, and nothing else; the first number is the highest byte.
std::optional<std::uint32_t> ParseIPv4(std::string_view text);
// Whether a text can be the name of a computer: parts of 1 to 63 letters, digits, "-" and "_" with points
// between, at most 253 bytes. Letters beyond ASCII count. A text of digits and points alone is no name, but
// an address, right or wrong.
bool IsHostName(std::string_view text);

}  // namespace tvx
