// How a value gets into a port's slots and out of them: the conversions of every data type, without a table
// or a socket.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/Rounding.h"
#include "config/Records.h"
#include "simlink/PortRow.h"

namespace tvx {

// The four decimal digits that `value` shows in its places 2 to 5 of "00000", one a nibble, the first in the
// highest. A value of six digits or more is cut after its fifth: 123456 gives the nibbles 2345. A negative
// value's sign counts as a place: -5 gives 0000. std::nullopt for NaN, an infinity or a value whose text is
// too long.
std::optional<std::uint16_t> BcdNibbles(float value);

// The number 0..9999 that four nibbles hold; std::nullopt when one of them is above 9.
std::optional<float> BcdValue(std::uint16_t nibbles);

// A value in the fewest digits that tell it apart from its neighbours.
std::string ValueText(float value);

// Whether a Function of this data type reads a value of a DATA group.
constexpr bool ReadsDataGroup(Byte dataType) {
  return dataType <= static_cast<Byte>(DataType::BcdCode);
}

// Puts `value`, rounded to the nearest integer with halves to even, into `slot`. False, and the slot stays as
// it was, where it does not fit.
template <typename Integer>
bool StoreRounded(Integer& slot, float value) {
  const auto rounded = RoundTo<Integer>(value);
  if (rounded) slot = *rounded;
  return rounded.has_value();
}

// Puts a value of a DATA group into the slot of data type `dataType`, rounded where the slot is an integer.
// Data types without a slot ignore it. False, and no slot changes, when the value does not fit. Never
// allocates or throws.
inline bool StoreDataValue(PortRow& row, Byte dataType, float value) {
  switch (static_cast<DataType>(dataType)) {
    case DataType::ByteType:
      return StoreRounded(row.ByteValue, value);
    case DataType::Integer:
    case DataType::UnsignedInt:  // ODDITY: its slot is signed too, so 32768 and above do not fit
    case DataType::BcdCode:
      return StoreRounded(row.IntValue, value);
    case DataType::Long:
      return StoreRounded(row.LongValue, value);
    case DataType::Float:
      row.FloatValue = value;
      return true;
    default:
      return true;
  }
}

// The unscaled value of a port. std::nullopt for data types that have none, and for a BCD port whose nibbles
// are no decimal digits.
inline std::optional<float> RawValue(const PortRow& row, Byte dataType) {
  const int word = row.IntValue;
  switch (static_cast<DataType>(dataType)) {
    case DataType::ByteType:
      // ODDITY: 255 is taken off, not 256; 128 reads -127 and 255 reads 0, as the instruments expect.
      return static_cast<float>(row.ByteValue > 127 ? row.ByteValue - 255 : row.ByteValue);
    case DataType::Integer:
      return row.IntValue;
    case DataType::UnsignedInt:
      // ODDITY: 65535 is added, not 65536; -1 reads 65534, as the instruments expect.
      return static_cast<float>(word < 0 ? word + 65535 : word);
    case DataType::Long:
      return static_cast<float>(row.LongValue);
    case DataType::Float:
    case DataType::XplaneDataref:
      return row.FloatValue;
    case DataType::BcdCode:
      return BcdValue(static_cast<std::uint16_t>(row.IntValue));
    default:
      return std::nullopt;
  }
}

// Scaling of a Function on reading, (raw + add) * multiply / divide, and its inverse on writing. A factor of
// 0 gives infinities or NaN where it divides.
inline float ScaleRead(const FunctionRecord& function, float raw) {
  return static_cast<float>((static_cast<double>(raw) + function.BoxAdd) * function.Multiplier /
                            function.Devider);
}
inline float ScaleWrite(const FunctionRecord& function, float value) {
  return static_cast<float>(static_cast<double>(value) * function.Devider / function.Multiplier -
                            function.BoxAdd);
}

}  // namespace tvx
