// What every form of Functions shares: the numbers that users may define, names, texts of message boxes.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tvx {

inline constexpr int kFirstConfigurable = 51;  // the Functions that users define
inline constexpr int kLastConfigurable = 269;
constexpr bool IsConfigurable(int function) {
  return function >= kFirstConfigurable && function <= kLastConfigurable;
}

// Texts of message boxes that the forms of Functions share.
namespace functiontext {
inline constexpr std::string_view kNoShortName = "The Short name of the function is missing";
inline constexpr std::string_view kIncorrectData = "Incorrect data";
inline constexpr std::string_view kNotSaved = "Updates are not saved yet; Continue?";
inline constexpr std::string_view kCannotBeCopied = "Incorrect X-Plane command; Cannot be copied";
inline constexpr std::string_view kOutsideConfigurable = "Function number must be between 51 and 269";
}  // namespace functiontext

// The names of the data types that are offered, by code.
inline constexpr std::array<std::string_view, 9> kDataTypeNames{
    "Byte",     "Integer",     "Unsigned Int.",  "Long",    "Float",
    "BCD code", "Xplane CMND", "Xplane Dataref", "Not used"};
// The signal types, by FunctionUse code.
inline constexpr std::array<std::string_view, 8> kSignalTypes{
    "--",    "Input Switch",    "Input Analogue", "Output LED",
    "Gauge", "Dedicated Gauge", "Macro",          "Switch and LED"};

// What a box takes, in words: "a whole number from 0 to 7", and any number.
inline constexpr std::string_view kRealNumberWords = "a number, such as 0.5 or -12";
std::string WholeNumberWords(int lowest, int highest);

}  // namespace tvx
