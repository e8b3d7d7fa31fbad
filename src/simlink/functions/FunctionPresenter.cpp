#include "simlink/functions/FunctionPresenter.h"

#include "base/NumberFormat.h"
#include "config/ValueText.h"
#include "simlink/references/FunctionEntries.h"

namespace tvx {
namespace {

constexpr std::string_view kUsualFrequency = "10";  // per second: smooth, and easy on the link

}  // namespace

FunctionPresenter::FunctionPresenter(ConfigModel& model, MessageBoxes& boxes) : model_(model), boxes_(boxes) {
  Load(kFirstConfigurable);
}

void FunctionPresenter::Load(int number) {
  number_ = number;
  loaded_ = DraftOf(*model_.FunctionOf(number));
  draft_ = loaded_;
}

bool FunctionPresenter::MayLeave() {
  return !Changed() || boxes_.Ask(functiontext::kNotSaved) != kAnswerNo;
}

bool FunctionPresenter::Choose(int number) {
  if (number < 1 || number >= kFunctions || !MayLeave()) return false;
  Load(number);
  return true;
}

void FunctionPresenter::Refresh() {
  if (!Changed()) Load(number_);
}

Byte FunctionPresenter::DataTypeCode() const {
  return ParseInteger<Byte>(draft_.At("ComboDT")).value_or(Byte{255});
}

std::optional<FunctionProblem> FunctionPresenter::Problem() const {
  FunctionRecord record;
  return StoreDraft(draft_, record);
}

std::string FunctionPresenter::Advice() const {
  FunctionRecord record;
  if (StoreDraft(draft_, record)) return {};
  return AdviceOn(record);
}

std::optional<FunctionProblem> FunctionPresenter::Save() {
  FunctionRecord record = *model_.FunctionOf(number_);
  std::optional<FunctionProblem> problem;
  if (!Editable()) {
    problem = FunctionProblem{"FunctionNr", functiontext::kOutsideConfigurable, {}};
  } else {
    problem = StoreDraft(draft_, record);
  }
  if (problem) {
    boxes_.Show(problem->message);
    return problem;
  }
  record.FunctionNr = static_cast<std::int16_t>(number_);
  model_.Functions[static_cast<std::size_t>(number_)] = record;
  model_.ConfigChanged = true;
  Load(number_);
  return std::nullopt;
}

bool FunctionPresenter::CopyEntry(std::optional<std::string_view> path, int element) {
  const int limit = EntryLimit(DataTypeCode());
  std::string& lines = draft_.At("FullName");
  const int number = NextEntryNumber(lines);
  if (path && number > limit) {
    boxes_.Show("This Function has no room for entry #" + std::to_string(number) + ": its data type holds " +
                std::to_string(limit) + ".");
    return false;
  }
  if (!path || !AppendEntry(lines, WithElement(*path, element))) {
    boxes_.Show(functiontext::kCannotBeCopied);
    return false;
  }
  std::erase(lines, '\r');
  if (DataTypeCode() != static_cast<Byte>(DataType::XplaneDataref)) return true;
  std::string& frequency = draft_.At("XPVal" + std::to_string(number));
  if (frequency == "0") frequency = kUsualFrequency;
  return true;
}

std::string FunctionPresenter::Line(int number) const {
  const FunctionRecord& function = *model_.FunctionOf(number);
  return FormatNumberText(number, "000") + "  " + FormatNumberText(function.FunctionSetting, "00") + "  " +
         function.ShortName;
}

}  // namespace tvx
