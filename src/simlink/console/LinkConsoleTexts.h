// The test console's fixed texts, and what its boxes take.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "simlink/datagrams/Packets.h"
#include "simlink/references/FunctionTexts.h"

namespace tvx {

// What the help button shows, its lines parted by CR LF.
std::string ConsoleHelp();

// A box for a whole number, by its name.
struct ConsoleBox {
  std::string_view name;
  std::int64_t lowest, highest;
};
namespace consolebox {
inline constexpr ConsoleBox kRemotePort{"boxRemotePort", 1, 65535};
inline constexpr ConsoleBox kLocalPort{"boxLocalPort", 1, 65535};
inline constexpr ConsoleBox kIndex{"boxIndex", 0, 255};
inline constexpr ConsoleBox kReferenceIndex{"boxReferenceIndex", 0, kDataValuesPerGroup - 1};
inline constexpr ConsoleBox kIdentifier{"boxRREFIdentifier", 0, 32767};
inline constexpr ConsoleBox kFrequency{"boxRREFFrequency", 1, 255};  // what the packet holds
inline constexpr ConsoleBox kFunctionNr{"boxFunctionNr", kFirstConfigurable, kLastConfigurable};
// Its text is that of boxValue, which takes fractions for a float.
inline constexpr ConsoleBox kIntegerValue{"", -2147483648LL, 2147483647};
}  // namespace consolebox

// The number typed into a box; std::nullopt when it is no number, or none that the box takes.
std::optional<std::int32_t> WholeNumber(std::string_view text, const ConsoleBox& box);

// What is wrong with a text in one of the console's boxes, by the box's name; empty when it is right, or
// when the box is not one that is checked.
std::string ConsoleProblem(std::string_view box, std::string_view text);

}  // namespace tvx
