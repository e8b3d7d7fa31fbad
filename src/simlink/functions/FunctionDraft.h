// A Function's fields as the text in which a form shows them, and the checks on the way back.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "config/Records.h"
#include "simlink/references/FunctionTexts.h"

namespace tvx {

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

// What keeps a draft from being saved.
struct FunctionProblem {
  std::string_view field;    // a name of FunctionRecord's list
  std::string_view message;  // for the message box
  std::string words;         // for beside the field: what it takes
};

// Puts a draft into `function`. When a field cannot be saved, returns the first such problem, and `function`
// is filled only in part. Descriptions get CR LF; a double quote, which the configuration file cannot hold,
// becomes an apostrophe.
std::optional<FunctionProblem> StoreDraft(const FunctionDraft& draft, FunctionRecord& function);

// Advice on a Function that can be saved and will hardly do what its user means; empty when there is none.
std::string AdviceOn(const FunctionRecord& function);

}  // namespace tvx
