// Parts of the replies, in words for the configuration dialogs.
#pragma once

#include <string>

#include "base/NumberFormat.h"
#include "instruments/kinds/ReplyNumbers.h"

namespace tvx {

template <std::size_t Byte>
std::string ByteText(ReplyView reply) {
  return std::to_string(ReplyByte(reply, Byte));
}
template <std::size_t Byte>
std::string WordText(ReplyView reply) {
  return std::to_string(ReplyWord(reply, Byte));
}
// kHz above 100 MHz: "118.500 MHz".
template <std::size_t Byte>
std::string MegahertzText(ReplyView reply) {
  return FormatNumberText(100.0 + ReplyWord(reply, Byte) / 1000.0, "000.000") + " MHz";
}
template <std::size_t Byte>
std::string SquawkText(ReplyView reply) {
  return FormatNumberText(SquawkOf(ReplyByte(reply, Byte), ReplyByte(reply, Byte + 1)), "0000");
}
template <std::size_t Byte>
std::string KnobText(ReplyView reply) {
  return FormatNumberText(KnobAngle(ReplyWord(reply, Byte)), "000") + "°";
}

}  // namespace tvx
