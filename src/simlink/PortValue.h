// How a value gets into a port's slots and out of them: the conversions of every data type, without a table
// or a socket.
#pragma once

#include <cstdint>
#include <optional>

#include "config/Records.h"
#include "simlink/PortTable.h"

namespace tvx {

// Stores a value of a DATA group into the slot of data type `dataType` (a DataType code), rounded to the
// nearest integer, halves to even, where the slot is an integer. Codes without a slot (6, 7, above 7) store
// nothing. False, and nothing stored, when the value does not fit the slot. Never allocates or throws.
bool StoreDataValue(PortRow& row, Byte dataType, float value);

// Whether a Function of this data type reads a value of a DATA group.
constexpr bool ReadsDataGroup(Byte dataType) {
  return dataType <= static_cast<Byte>(DataType::BcdCode);
}

// The unscaled value of a port. Nothing for data types that have none, and for a BCD port whose nibbles are
// no decimal digits.
std::optional<float> RawValue(const PortRow& row, Byte dataType);

// Scaling of a Function on reading, (raw + add) * multiply / divide, and its inverse on writing. A factor of
// 0 gives infinities or NaN where it divides.
float ScaleRead(const FunctionRecord& function, float raw);
float ScaleWrite(const FunctionRecord& function, float value);

// The four decimal digits that `value` shows in its places 2 to 5 of "00000", one a nibble, the first in the
// highest. Nothing when the value has no such text. A value of six digits or more is cut after its fifth:
// 123456 gives 2345 as nibbles; so does a negative value's sign count as a place: -5 gives 0000.
std::optional<std::uint16_t> BcdNibbles(float value);

// The number 0..9999 that four nibbles hold; nothing when one is above 9.
std::optional<float> BcdValue(std::uint16_t nibbles);

}  // namespace tvx
