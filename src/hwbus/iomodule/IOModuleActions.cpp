#include "hwbus/iomodule/IOModuleActions.h"

#include <algorithm>
#include <cmath>

#include "base/NumberFormat.h"
#include "base/Rounding.h"
#include "simlink/datagrams/Packets.h"
#include "simlink/keys/Keystroke.h"

namespace tvx {
namespace {

constexpr int kLastEntry = 9;

double SpanPart(const FunctionRecord& function) {
  return (static_cast<double>(function.boxMaximumValue) - static_cast<double>(function.boxMinimumValue)) /
         100.0;
}

// Also where a definition's minimum lies above its maximum: the maximum wins.
double Clamped(const FunctionRecord& function, double value) {
  return std::min(std::max(value, static_cast<double>(function.boxMinimumValue)),
                  static_cast<double>(function.boxMaximumValue));
}

IOModuleEffect ValueEffect(double value) {
  return {IOModuleEffect::Kind::Value, 0, static_cast<float>(value), 0};
}

IOModuleEffect CommandEffect(float edgeValue) {
  const auto entry = RoundTo<std::int16_t>(edgeValue);
  if (!entry || *entry < 1 || *entry > kLastEntry) return {};
  return {IOModuleEffect::Kind::Command, 0, 0, *entry};
}

std::string NumberText(double value) {
  return FormatNumberText(value, "0.###");
}

std::string ShortNumber(double value) {
  std::string text = NumberText(value);
  if (text.find('.') == text.npos) return text;
  while (text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
  return text;
}

std::string NameOf(const FunctionRecord* function) {
  return function == nullptr ? std::string("no Function") : function->ShortName;
}

}  // namespace

IOModuleAction ActionOf(const IOModuleRecord& definition) {
  switch (const auto kind = static_cast<IOModuleAction>(definition.ActionKind)) {
    case IOModuleAction::Keystroke:
    case IOModuleAction::Command:
    case IOModuleAction::NoAction:
    case IOModuleAction::NotUsed:
      return kind;
    default:
      return IOModuleAction::WriteValue;
  }
}

bool IsRelative(const IOModuleRecord& definition) {
  return ActionOf(definition) == IOModuleAction::WriteValue && definition.IncrementFlags != 0;
}

bool IsEncoder(const IOModuleRecord& definition) {
  const auto type = static_cast<IOModuleSwitchType>(definition.SwitchType);
  return IsRelative(definition) &&
         (type == IOModuleSwitchType::EncoderA || type == IOModuleSwitchType::EncoderB);
}

bool IsRead(const FunctionRecord& function, int sequenceNr) {
  const auto slot = function.SlotOf(static_cast<Byte>(std::clamp(sequenceNr, 1, 4)));
  switch (static_cast<DataType>(function.ComboDT)) {
    case DataType::XplaneDataref:
      return slot.value > 0;  // times a second
    case DataType::XplaneCmnd:
      return false;
    default:
      return true;
  }
}

IOModuleEffect SwitchEffect(const IOModuleRecord& definition, const FunctionRecord* function, bool on,
                            double current) {
  const float edgeValue = on ? definition.OffOnValue : definition.OnOffValue;
  switch (ActionOf(definition)) {
    case IOModuleAction::Keystroke:
      return {IOModuleEffect::Kind::Keystroke, on ? definition.OnKeystroke : definition.OffKeystroke, 0, 0};
    case IOModuleAction::Command:
      return CommandEffect(edgeValue);
    case IOModuleAction::NoAction:
    case IOModuleAction::NotUsed:
      return {};
    case IOModuleAction::WriteValue:
      break;
  }
  if (function == nullptr) return {};
  if (IsRelative(definition)) {
    const int flag = on ? kIOModuleStepOffOn : kIOModuleStepOnOff;
    if ((definition.IncrementFlags & flag) == 0) return {};
    return ValueEffect(Clamped(*function, current + static_cast<double>(edgeValue)));
  }
  if (edgeValue == kIOModuleSendNothing) return {};
  // ODDITY: a percentage of the span alone, without the minimum, as the definitions were made for.
  return ValueEffect(SpanPart(*function) * static_cast<double>(edgeValue));
}

float AnalogueValue(const IOModuleRecord& definition, const FunctionRecord& function, int raw) {
  const double lowest = RoundHalfEven(static_cast<double>(definition.OffOnValue));
  const double centre = definition.OnOffValue;
  const double highest = definition.RawMaximum;
  const double value = std::min(std::max(static_cast<double>(raw), lowest), highest);
  const double top = function.boxMaximumValue, bottom = function.boxMinimumValue;
  if (centre < 1) return static_cast<float>(value / highest * top);
  if (value >= centre) return static_cast<float>(std::fabs((value - centre) / (highest - centre)) * top);
  return static_cast<float>(std::fabs((centre - value) / (centre - lowest)) * bottom);
}

bool LampLit(const IOModuleRecord& definition, const FunctionRecord& function, double value) {
  const int conditions = definition.IncrementFlags;
  const double bottom = function.boxMinimumValue;
  const double threshold = bottom + SpanPart(function) * static_cast<double>(definition.OffOnValue);
  return ((conditions & kIOModuleLitAtMinimum) != 0 && value == bottom) ||
         ((conditions & kIOModuleLitAtMaximum) != 0 &&
          value == static_cast<double>(function.boxMaximumValue)) ||
         ((conditions & kIOModuleLitAbove) != 0 && value >= threshold) ||
         ((conditions & kIOModuleLitAtValue) != 0 && value == static_cast<double>(definition.OnOffValue));
}

std::string DataName(DataType type) {
  switch (type) {
    case DataType::ByteType:
      return "Data Byte";
    case DataType::Integer:
      return "Data Integer";
    case DataType::UnsignedInt:
      return "Data Uns.Int.";
    case DataType::Long:
      return "Data Long";
    case DataType::Float:
    case DataType::XplaneDataref:
      return "Data Float";
    case DataType::BcdCode:
      return "Data BCD";
    case DataType::XplaneCmnd:
      return "Xplane CMND";
  }
  return "Not Used";
}

std::string ActionName(const IOModuleRecord& definition, const FunctionRecord* function) {
  switch (ActionOf(definition)) {
    case IOModuleAction::Keystroke:
      return "KB Stroke";
    case IOModuleAction::Command:
      return "Xplane CMND";
    case IOModuleAction::NoAction:
      return "No Action ";
    case IOModuleAction::NotUsed:
      return "Not Used";
    case IOModuleAction::WriteValue:
      break;
  }
  return function == nullptr ? "Not Used" : DataName(static_cast<DataType>(function->ComboDT));
}

std::string SwitchPreview(const IOModuleRecord& definition, const FunctionRecord* function, bool on,
                          std::optional<double> current) {
  const IOModuleEffect effect = SwitchEffect(definition, function, on, current.value_or(0.0));
  const std::string edge = on ? "Off->On: " : "On->Off: ";
  switch (effect.What) {
    case IOModuleEffect::Kind::Keystroke: {
      const std::string sequence = KeySequence(effect.Keystroke);
      return edge + (sequence.empty() ? "sends nothing" : "types " + sequence);
    }
    case IOModuleEffect::Kind::Value: {
      if (IsRelative(definition)) {
        if (!IsRead(*function, definition.SequenceNr)) {
          return edge + "sends nothing: " + NameOf(function) +
                 " is not read from the simulator, so no step can start";
        }
        if (!current) {
          const float value = on ? definition.OffOnValue : definition.OnOffValue;
          return edge + "steps " + NameOf(function) + " by " + ShortNumber(static_cast<double>(value)) +
                 ", once its value has come";
        }
      }
      const std::string step = IsRelative(definition) ? " (it is now " + ShortNumber(*current) + ")" : "";
      return edge + "writes " + ShortNumber(static_cast<double>(effect.Value)) + " to " + NameOf(function) +
             step;
    }
    case IOModuleEffect::Kind::Command: {
      const auto path = function == nullptr ? std::nullopt : CutEntry(function->FullName, effect.Entry);
      return edge + (path ? "runs " + std::string(*path) : "sends nothing: there is no such command");
    }
    case IOModuleEffect::Kind::Nothing:
      break;
  }
  return edge + "sends nothing";
}

std::string AnaloguePreview(const IOModuleRecord& definition, const FunctionRecord* function, int raw) {
  if (function == nullptr) return "sends nothing";
  const auto value = static_cast<double>(AnalogueValue(definition, *function, raw));
  if (!std::isfinite(value)) return "sends nothing: the raw limits leave no range";
  return "raw " + std::to_string(raw) + ": writes " + ShortNumber(value) + " to " + NameOf(function);
}

}  // namespace tvx
