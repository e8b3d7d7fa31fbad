// A Function's fields as the text in which a form shows them, and the checks on the way back.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "config/Records.h"

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

// The fields as text, in the record's order. Lines in a text end with LF alone.
struct FunctionDraft {
  static constexpr std::size_t kFields = 21;
  std::array<std::string, kFields> texts;

  // `field` is a name of FunctionRecord's list.
  std::string& At(std::string_view field);
  const std::string& At(std::string_view field) const;
  bool operator==(const FunctionDraft&) const = default;
};

// A Function that is not defined is offered with factors of 1.
FunctionDraft DraftOf(const FunctionRecord& function);

// What a box takes, in words: "a whole number from 0 to 7", and any number.
inline constexpr std::string_view kRealNumberWords = "a number with a decimal point, such as 0.5 or -12";
std::string WholeNumberWords(int lowest, int highest);

// What keeps a draft from being saved.
struct FunctionProblem {
  std::string_view field;    // a name of FunctionRecord's list
  std::string_view message;  // for the message box
  std::string words;         // for beside the field: what it takes
};

// Puts a draft into `function`; the first problem where there is one, and then `function` is incomplete.
// Descriptions get CR LF; a double quote, which the configuration file cannot hold, becomes an apostrophe.
std::optional<FunctionProblem> StoreDraft(const FunctionDraft& draft, FunctionRecord& function);

// What can be saved and will hardly do what is meant, in words; empty where nothing is odd.
std::string AdviceOn(const FunctionRecord& function);

}  // namespace tvx
