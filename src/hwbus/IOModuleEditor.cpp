#include "hwbus/IOModuleEditor.h"

#include <cmath>
#include <cstdlib>

#include "hwbus/IOModuleActions.h"
#include "simlink/Keystroke.h"
#include "simlink/Packets.h"

namespace tvx {
namespace {

constexpr std::string_view kNoFunction = "No function selected";
constexpr std::string_view kNoKeystroke = "No keystroke(s) selected";
constexpr std::string_view kOutOfLimits = "One of the definitions is incorrect or out of limits";
constexpr std::string_view kDebounce = "A debounce time must be between 0 and 20";
constexpr int kSwitchesPerGroup = 8;
constexpr int kAllConditions = kIomLitAtMinimum | kIomLitAtMaximum | kIomLitAbove | kIomLitAtValue;

const std::string kEncoderRule =
    "Encoders must have two switches defined with successive numbers\r\n"
    "and must be within the same group (A to F) and lowest number must be encoder A.";

bool Within(float value, double lowest, double highest) {
  const auto wide = static_cast<double>(value);
  return wide >= lowest && wide <= highest;  // false for NaN
}

bool EdgeFits(const IomRecord& definition, const FunctionRecord& function, float value, int stepFlag) {
  if (ActionOf(definition) == IomAction::Command) {
    if (Within(value, -1, 0)) return true;
    return Within(value, 1, 9) && CutEntry(function.FullName, static_cast<int>(value)).has_value();
  }
  if (!IsRelative(definition)) return Within(value, -100, 100);
  const double span = std::fabs(static_cast<double>(function.boxMaximumValue - function.boxMinimumValue));
  return (definition.IncrementFlags & stepFlag) == 0 || Within(value, -span, span);
}

bool AnalogueFits(const IomRecord& definition) {
  const float lowest = definition.OffOnValue, centre = definition.OnOffValue, highest = definition.RawMaximum;
  return Within(lowest, 0, kIomRawTop) && Within(highest, 1, kIomRawTop) && lowest < highest &&
         (centre == 0 || (centre >= 1 && centre > lowest && centre < highest)) && definition.DeadBand >= 0 &&
         definition.DeadBand <= kIomRawTop;
}

bool LampFits(const IomRecord& definition) {
  const int conditions = definition.IncrementFlags;
  return conditions > 0 && conditions <= kAllConditions && std::isfinite(definition.OnOffValue) &&
         ((conditions & kIomLitAbove) == 0 || Within(definition.OffOnValue, 0, 100));
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

std::size_t IomEditor::IndexOf(std::int16_t input) const {
  const auto count = static_cast<std::size_t>(model_.IOMCount());
  for (std::size_t i = 0; i < count; ++i) {
    if (model_.Iom[i].Input == input) return i;
  }
  return count;
}

bool IomEditor::Defined(const IomInput& input) const {
  return IndexOf(IomInputNumber(input)) < static_cast<std::size_t>(model_.IOMCount());
}

IomRecord IomEditor::DefinitionOf(const IomInput& input) const {
  const std::size_t index = IndexOf(IomInputNumber(input));
  if (index < static_cast<std::size_t>(model_.IOMCount())) return model_.Iom[index];
  IomRecord fresh;
  fresh.Input = IomInputNumber(input);
  fresh.SequenceNr = 1;
  fresh.ActionKind = static_cast<Byte>(IomAction::WriteValue);
  fresh.RawMaximum = kIomRawTop;
  fresh.DebounceTime = 5;
  if (input.Kind == IomKind::Switch) fresh.OffOnValue = 100;
  if (input.Kind == IomKind::Analogue) fresh.DeadBand = 8;
  if (input.Kind == IomKind::Lamp) fresh.IncrementFlags = kIomLitAtMaximum;
  return fresh;
}

std::string_view IomEditor::Check(const IomRecord& definition) const {
  const auto input = IomInputOf(definition.Input);
  if (!input) return kOutOfLimits;
  const FunctionRecord* function =
      definition.FunctionNr < 1 ? nullptr : model_.FunctionOf(definition.FunctionNr);
  if (function != nullptr && function->ShortName.empty()) function = nullptr;
  if (input->Kind == IomKind::Switch) return CheckSwitch(definition, function);
  if (function == nullptr) return kNoFunction;
  const bool fits = input->Kind == IomKind::Analogue ? AnalogueFits(definition) : LampFits(definition);
  return fits ? std::string_view{} : kOutOfLimits;
}

std::string_view IomEditor::CheckSwitch(const IomRecord& definition, const FunctionRecord* function) const {
  const IomAction action = ActionOf(definition);
  if (action == IomAction::WriteValue || action == IomAction::Command) {
    if (function == nullptr) return kNoFunction;
    if (action == IomAction::Command && !function->Is(DataType::XplaneCmnd)) return kNoFunction;
    if (!EdgeFits(definition, *function, definition.OffOnValue, kIomStepOffOn) ||
        !EdgeFits(definition, *function, definition.OnOffValue, kIomStepOnOff)) {
      return kOutOfLimits;
    }
  }
  if (action == IomAction::Keystroke && !TypesSomething(definition.OnKeystroke) &&
      !TypesSomething(definition.OffKeystroke)) {
    return kNoKeystroke;
  }
  if (definition.DebounceTime < 0 || definition.DebounceTime > kIomLongestDebounce) return kDebounce;
  if (!EncoderFits(definition)) return kEncoderRule;
  return {};
}

// An encoder's other half is the next switch of its group (of an encoder A) or the one before it (of a B). It
// may still be undefined; it must not be something else. The switch on the other side must not wait for this
// one.
bool IomEditor::EncoderFits(const IomRecord& definition) const {
  const auto type = static_cast<IomSwitchType>(definition.SwitchType);
  if (type == IomSwitchType::Toggle) return true;
  if (type != IomSwitchType::EncoderA && type != IomSwitchType::EncoderB) return false;
  const bool isA = type == IomSwitchType::EncoderA;
  const int place = definition.Input % 1000 % kSwitchesPerGroup;
  if (place == (isA ? kSwitchesPerGroup - 1 : 0)) return false;
  const int towardsHalf = isA ? 1 : -1;
  const auto half = TypeOf(definition.Input + towardsHalf);
  if (half && *half != (isA ? IomSwitchType::EncoderB : IomSwitchType::EncoderA)) return false;
  return place == (isA ? 0 : kSwitchesPerGroup - 1) || TypeOf(definition.Input - towardsHalf) != type;
}

std::optional<IomSwitchType> IomEditor::TypeOf(int input) const {
  const std::size_t index = IndexOf(static_cast<std::int16_t>(input));
  if (index == static_cast<std::size_t>(model_.IOMCount())) return std::nullopt;
  return static_cast<IomSwitchType>(model_.Iom[index].SwitchType);
}

bool IomEditor::Store(const IomRecord& definition) {
  const std::string_view wrong = Check(definition);
  if (!wrong.empty()) {
    boxes_.Show(wrong);
    return false;
  }
  const std::size_t index = IndexOf(definition.Input);
  if (index == static_cast<std::size_t>(model_.IOMCount())) model_.Iom.emplace_back();
  model_.Iom[index] = definition;
  model_.ConfigChanged = true;
  return true;
}

bool IomEditor::Remove(const IomInput& input) {
  const std::size_t index = IndexOf(IomInputNumber(input));
  if (index == static_cast<std::size_t>(model_.IOMCount())) return false;
  model_.Iom.erase(model_.Iom.begin() + static_cast<std::ptrdiff_t>(index));
  model_.ConfigChanged = true;
  return true;
}

std::optional<IomInput> IomTouch::Take(const IOModuleReport& report) {
  if (!base_) {
    base_ = report;
    return std::nullopt;
  }
  for (int i = 0; i < kIomSwitches; ++i) {
    if (report.On(i) == base_->On(i)) continue;
    base_->Groups = report.Groups;
    return IomInput{module_, IomKind::Switch, i};
  }
  for (std::size_t j = 0; j < report.Analogue.size(); ++j) {
    if (std::abs(report.Analogue[j] - base_->Analogue[j]) < kAxisTravel) continue;
    base_->Analogue = report.Analogue;
    return IomInput{module_, IomKind::Analogue, static_cast<int>(j)};
  }
  return std::nullopt;
}

}  // namespace tvx
