#include "simlink/PortValue.h"

#include "base/NumberFormat.h"
#include "base/Rounding.h"

namespace tvx {
namespace {

template <typename T>
bool StoreRounded(T& slot, float value) {
  const auto rounded = RoundTo<T>(value);
  if (rounded) slot = *rounded;
  return rounded.has_value();
}

}  // namespace

bool StoreDataValue(PortRow& row, Byte dataType, float value) {
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

std::optional<float> RawValue(const PortRow& row, Byte dataType) {
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

float ScaleRead(const FunctionRecord& function, float raw) {
  return static_cast<float>((static_cast<double>(raw) + function.BoxAdd) * function.Multiplier /
                            function.Devider);
}

float ScaleWrite(const FunctionRecord& function, float value) {
  return static_cast<float>(static_cast<double>(value) * function.Devider / function.Multiplier -
                            function.BoxAdd);
}

std::optional<std::uint16_t> BcdNibbles(float value) {
  const ShortText text = FormatNumber(value, "00000");
  if (text.length < 5) return std::nullopt;
  unsigned nibbles = 0;
  for (const char digit : text.View().substr(1, 4)) {
    if (digit < '0' || digit > '9') return std::nullopt;
    nibbles = nibbles << 4 | static_cast<unsigned>(digit - '0');
  }
  return static_cast<std::uint16_t>(nibbles);
}

std::optional<float> BcdValue(std::uint16_t nibbles) {
  int value = 0;
  for (int shift = 12; shift >= 0; shift -= 4) {
    const int digit = nibbles >> shift & 0xF;
    if (digit > 9) return std::nullopt;
    value = value * 10 + digit;
  }
  return static_cast<float>(value);
}

}  // namespace tvx
