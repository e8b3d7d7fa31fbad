#include "hwbus/iomodule/IOModulePresenter.h"

#include <cmath>
#include <cstdlib>

#include "hwbus/iomodule/IOModuleActions.h"
#include "simlink/datagrams/Packets.h"
#include "simlink/keys/Keystroke.h"

namespace tvx {
namespace {

constexpr std::string_view kNoFunction = "No function selected";
constexpr std::string_view kNoKeystroke = "No keystroke(s) selected";
constexpr std::string_view kOutOfLimits = "One of the definitions is incorrect or out of limits";
constexpr std::string_view kDebounce = "A debounce time must be between 0 and 20";
// A definition that is made anew begins with these.
constexpr float kFreshOffOn = 100;  // %
constexpr std::int16_t kFreshDeadBand = 8;
constexpr int kAllConditions =
    kIOModuleLitAtMinimum | kIOModuleLitAtMaximum | kIOModuleLitAbove | kIOModuleLitAtValue;

const std::string kEncoderRule =
    "Encoders must have two switches defined with successive numbers\r\n"
    "and must be within the same group (A to F) and lowest number must be encoder A.";

bool Within(float value, double lowest, double highest) {
  const auto wide = static_cast<double>(value);
  return wide >= lowest && wide <= highest;  // false for NaN
}

bool EdgeFits(const IOModuleRecord& definition, const FunctionRecord& function, float value, int stepFlag) {
  if (ActionOf(definition) == IOModuleAction::Command) {
    if (Within(value, -1, 0)) return true;
    return Within(value, 1, 9) && CutEntry(function.FullName, static_cast<int>(value)).has_value();
  }
  if (!IsRelative(definition)) return Within(value, -100, 100);
  const double span = std::fabs(static_cast<double>(function.boxMaximumValue - function.boxMinimumValue));
  return (definition.IncrementFlags & stepFlag) == 0 || Within(value, -span, span);
}

bool AnalogueFits(const IOModuleRecord& definition) {
  const float lowest = definition.OffOnValue, centre = definition.OnOffValue, highest = definition.RawMaximum;
  return Within(lowest, 0, kIOModuleRawTop) && Within(highest, 1, kIOModuleRawTop) && lowest < highest &&
         (centre == 0 || (centre >= 1 && centre > lowest && centre < highest)) && definition.DeadBand >= 0 &&
         definition.DeadBand <= kIOModuleRawTop;
}

bool LampFits(const IOModuleRecord& definition) {
  const int conditions = definition.IncrementFlags;
  return conditions > 0 && conditions <= kAllConditions && std::isfinite(definition.OnOffValue) &&
         ((conditions & kIOModuleLitAbove) == 0 || Within(definition.OffOnValue, 0, 100));
}

bool TypesSomething(std::int16_t code) {
  return !KeySequence(code).empty();
}

}  // namespace

const char* const kEncoderHelp[5] = {
    "Encoders must have two switches defined with successive numbers",
    "and must be within the same group (A to F) and lowest number must be encoder A.",
    "Encoder A and B give one Off->On and one On->Off  per click depending on direction.",
    "The two defined switches will toggle on either rotating clockwise or counterclockwise.",
    "Which switch will toggle on CW or CCW rotation depends on wiring and encoder type"};
const char* const kToggleHelp =
    "Toggle switches will aternately go On and Off every time the switch is depressed.";

std::size_t IOModulePresenter::IndexOf(std::int16_t input) const {
  const auto count = static_cast<std::size_t>(model_.IOMCount());
  for (std::size_t i = 0; i < count; ++i) {
    if (model_.IOModuleInputs[i].Input == input) return i;
  }
  return count;
}

bool IOModulePresenter::Defined(const IOModuleInput& input) const {
  return IndexOf(IOModuleInputNumber(input)) < static_cast<std::size_t>(model_.IOMCount());
}

IOModuleRecord IOModulePresenter::DefinitionOf(const IOModuleInput& input) const {
  const std::size_t index = IndexOf(IOModuleInputNumber(input));
  if (index < static_cast<std::size_t>(model_.IOMCount())) return model_.IOModuleInputs[index];
  IOModuleRecord fresh;
  fresh.Input = IOModuleInputNumber(input);
  fresh.SequenceNr = 1;
  fresh.ActionKind = static_cast<Byte>(IOModuleAction::WriteValue);
  fresh.RawMaximum = kIOModuleRawTop;
  fresh.DebounceTime = kIOModuleUsualDebounce;
  if (input.Kind == IOModuleKind::Switch) fresh.OffOnValue = kFreshOffOn;
  if (input.Kind == IOModuleKind::Analogue) fresh.DeadBand = kFreshDeadBand;
  if (input.Kind == IOModuleKind::Lamp) fresh.IncrementFlags = kIOModuleLitAtMaximum;
  return fresh;
}

std::string_view IOModulePresenter::Check(const IOModuleRecord& definition) const {
  const auto input = IOModuleInputOf(definition.Input);
  if (!input) return kOutOfLimits;
  const FunctionRecord* function =
      definition.FunctionNr < 1 ? nullptr : model_.FunctionOf(definition.FunctionNr);
  if (function != nullptr && function->ShortName.empty()) function = nullptr;
  if (input->Kind == IOModuleKind::Switch) return CheckSwitch(definition, function);
  if (function == nullptr) return kNoFunction;
  const bool fits = input->Kind == IOModuleKind::Analogue ? AnalogueFits(definition) : LampFits(definition);
  return fits ? std::string_view{} : kOutOfLimits;
}

std::string_view IOModulePresenter::CheckSwitch(const IOModuleRecord& definition,
                                                const FunctionRecord* function) const {
  const IOModuleAction action = ActionOf(definition);
  if (action == IOModuleAction::WriteValue || action == IOModuleAction::Command) {
    if (function == nullptr) return kNoFunction;
    if (action == IOModuleAction::Command && !function->Is(DataType::XplaneCmnd)) return kNoFunction;
    if (!EdgeFits(definition, *function, definition.OffOnValue, kIOModuleStepOffOn) ||
        !EdgeFits(definition, *function, definition.OnOffValue, kIOModuleStepOnOff)) {
      return kOutOfLimits;
    }
  }
  if (action == IOModuleAction::Keystroke && !TypesSomething(definition.OnKeystroke) &&
      !TypesSomething(definition.OffKeystroke)) {
    return kNoKeystroke;
  }
  if (definition.DebounceTime < 0 || definition.DebounceTime > kIOModuleLongestDebounce) return kDebounce;
  if (!EncoderFits(definition)) return kEncoderRule;
  return {};
}

// An encoder takes two switches: A, and B as the next switch of the same group. The other half may still be
// undefined, but must not be anything else. On the far side there must not be an encoder whose own other half
// this switch would have to be.
bool IOModulePresenter::EncoderFits(const IOModuleRecord& definition) const {
  const auto type = static_cast<IOModuleSwitchType>(definition.SwitchType);
  if (type == IOModuleSwitchType::Toggle) return true;
  if (type != IOModuleSwitchType::EncoderA && type != IOModuleSwitchType::EncoderB) return false;
  const bool isA = type == IOModuleSwitchType::EncoderA;
  const int place = definition.Input % kIOModuleInputs % kIOModuleGroupSize;
  if (place == (isA ? kIOModuleGroupSize - 1 : 0)) return false;
  const int towardsHalf = isA ? 1 : -1;
  const auto half = TypeOf(definition.Input + towardsHalf);
  if (half && *half != (isA ? IOModuleSwitchType::EncoderB : IOModuleSwitchType::EncoderA)) return false;
  return place == (isA ? 0 : kIOModuleGroupSize - 1) || TypeOf(definition.Input - towardsHalf) != type;
}

std::optional<IOModuleSwitchType> IOModulePresenter::TypeOf(int input) const {
  const std::size_t index = IndexOf(static_cast<std::int16_t>(input));
  if (index == static_cast<std::size_t>(model_.IOMCount())) return std::nullopt;
  return static_cast<IOModuleSwitchType>(model_.IOModuleInputs[index].SwitchType);
}

bool IOModulePresenter::Store(const IOModuleRecord& definition) {
  const std::string_view wrong = Check(definition);
  if (!wrong.empty()) {
    boxes_.Show(wrong);
    return false;
  }
  const std::size_t index = IndexOf(definition.Input);
  if (index == static_cast<std::size_t>(model_.IOMCount())) model_.IOModuleInputs.emplace_back();
  model_.IOModuleInputs[index] = definition;
  model_.ConfigChanged = true;
  return true;
}

bool IOModulePresenter::Remove(const IOModuleInput& input) {
  const std::size_t index = IndexOf(IOModuleInputNumber(input));
  if (index == static_cast<std::size_t>(model_.IOMCount())) return false;
  model_.IOModuleInputs.erase(model_.IOModuleInputs.begin() + static_cast<std::ptrdiff_t>(index));
  model_.ConfigChanged = true;
  return true;
}

std::optional<IOModuleInput> IOModuleTouch::Take(const IOModuleReport& report) {
  if (!base_) {
    base_ = report;
    return std::nullopt;
  }
  for (int i = 0; i < kIOModuleSwitches; ++i) {
    if (report.On(i) == base_->On(i)) continue;
    base_->Groups = report.Groups;
    return IOModuleInput{module_, IOModuleKind::Switch, i};
  }
  for (std::size_t j = 0; j < report.Analogue.size(); ++j) {
    if (std::abs(report.Analogue[j] - base_->Analogue[j]) < kAxisTravel) continue;
    base_->Analogue = report.Analogue;
    return IOModuleInput{module_, IOModuleKind::Analogue, static_cast<int>(j)};
  }
  return std::nullopt;
}

}  // namespace tvx
