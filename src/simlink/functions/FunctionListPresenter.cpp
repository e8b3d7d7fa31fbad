#include "simlink/functions/FunctionListPresenter.h"

#include <algorithm>

#include "base/NumberFormat.h"
#include "simlink/functions/FunctionDraft.h"
#include "simlink/references/FunctionEntries.h"

namespace tvx {
namespace {

constexpr int kLastStandard = 50;

ListedFunction FieldsOf(const FunctionRecord& function) {
  return {function.ShortName, function.FullName, function.ComboClass, function.FuncType};
}

// A text as one column of a line: line ends and tabs become one blank each; those at its end are left out.
std::string Column(std::string_view text) {
  std::string column;
  for (const char c : text) {
    if (c == '\r') continue;
    column += c == '\n' || c == '\t' ? ' ' : c;
  }
  while (!column.empty() && column.back() == ' ') column.pop_back();
  return column;
}

template <typename Names>
std::string NameOf(const Names& names, int code) {
  const auto index = static_cast<std::size_t>(code);
  return code >= 0 && index < names.size() ? std::string(names[index]) : std::string();
}

// What the configuration file can hold.
std::string Storable(std::string text) {
  std::erase_if(text, [](char c) { return c == '\0' || c == '\r' || c == '\n'; });
  std::replace(text.begin(), text.end(), '"', '\'');
  return text;
}

bool IsGood(const ListedFunction& fields) {
  return fields.shortName.find_first_not_of(" \t") != std::string::npos && fields.category >= 0 &&
         fields.category < kCategories && fields.use >= 0 &&
         fields.use < static_cast<int>(kSignalTypes.size());
}

}  // namespace

bool FunctionListPresenter::Editable(int number) {
  return IsConfigurable(number);
}

bool FunctionListPresenter::DescriptionEditable(int number) const {
  const FunctionRecord& function = *model_.FunctionOf(number);
  return Editable(number) && EntryLimit(function.ComboDT) == 0 &&
         function.FullName.find('\n') == std::string::npos;
}

ListedFunction FunctionListPresenter::Fields(int number) const {
  const auto edit = edits_.find(number);
  return edit != edits_.end() ? edit->second : FieldsOf(*model_.FunctionOf(number));
}

void FunctionListPresenter::Edit(int number, const ListedFunction& fields) {
  if (!Editable(number)) return;
  ListedFunction taken = fields;
  if (!DescriptionEditable(number)) taken.fullName = model_.FunctionOf(number)->FullName;
  if (taken == FieldsOf(*model_.FunctionOf(number))) {
    edits_.erase(number);
  } else {
    edits_[number] = taken;
  }
}

bool FunctionListPresenter::Passes(int number, const FunctionFilter& filter) const {
  const ListedFunction fields = Fields(number);
  if (filter.definedOnly && fields.shortName.empty()) return false;
  if (filter.category && fields.category != *filter.category) return false;
  return !filter.use || fields.use == *filter.use;
}

std::string FunctionListPresenter::Text(int number) const {
  const ListedFunction fields = Fields(number);
  return FormatNumberText(number, "000") + '\t' + Column(fields.shortName) + '\t' + Column(fields.fullName) +
         '\t' + Column(NameOf(model_.Categories, fields.category)) + '\t' + NameOf(kSignalTypes, fields.use);
}

std::vector<FunctionLine> FunctionListPresenter::Lines(const FunctionFilter& filter) const {
  std::vector<FunctionLine> lines{{0, std::string(kStandardHeading)}};
  const auto add = [&](int first, int last, const FunctionFilter& by) {
    for (int number = first; number <= last; ++number) {
      if (Passes(number, by)) lines.push_back({number, Text(number)});
    }
  };
  FunctionFilter defined = filter;
  defined.definedOnly = true;
  add(1, kLastStandard, filter);
  add(kLastConfigurable + 1, kFunctions - 1, defined);
  lines.push_back({0, std::string(kConfigurableHeading)});
  add(kFirstConfigurable, kLastConfigurable, filter);
  return lines;
}

std::optional<int> FunctionListPresenter::CmdSave() {
  for (const auto& [number, fields] : edits_) {
    if (IsGood(fields)) continue;
    boxes_.Show(functiontext::kIncorrectData);
    return number;
  }
  for (const auto& [number, fields] : edits_) {
    FunctionRecord& function = model_.Functions[static_cast<std::size_t>(number)];
    // A new Function starts with factors that leave its value as it is.
    if (function.ShortName.empty() && function.Multiplier == 0 && function.Devider == 0) {
      function.Multiplier = function.Devider = 1;
    }
    function.FunctionNr = static_cast<std::int16_t>(number);
    function.ShortName = Storable(fields.shortName);
    if (DescriptionEditable(number)) function.FullName = Storable(fields.fullName);
    function.ComboClass = static_cast<Byte>(fields.category);
    function.FuncType = static_cast<Byte>(fields.use);
    model_.ConfigChanged = true;
  }
  edits_.clear();
  return std::nullopt;
}

bool FunctionListPresenter::MayClose() {
  return !Changed() || boxes_.Ask(functiontext::kNotSaved) != kAnswerNo;
}

}  // namespace tvx
