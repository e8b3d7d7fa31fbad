// The meaning of the numbers in an IO module's definition (IOModuleRecord).
#pragma once

#include <optional>

#include "config/Records.h"

namespace tvx {

inline constexpr int kIOModuleGroups = 6;  // of switches, A..F
inline constexpr int kIOModuleGroupSize = 8;
inline constexpr int kIOModuleSwitches = kIOModuleGroups * kIOModuleGroupSize;
inline constexpr int kIOModuleAnalogues = 8;
inline constexpr int kIOModuleLamps = 32;
inline constexpr int kIOModuleLongestDebounce = 20;
inline constexpr int kIOModuleRawTop = 4095;  // of an analogue input

enum class IOModuleKind { Switch, Analogue, Lamp };

// What a definition defines.
struct IOModuleInput {
  int Module = 1;  // 1 or 2
  IOModuleKind Kind = IOModuleKind::Switch;
  int Index = 0;  // 0-based
  bool operator==(const IOModuleInput&) const = default;
};

// `Input` of a definition: 1000 a module, plus 0..47 a switch, 100..107 an analogue input, 200..231 a lamp.
// std::nullopt for any other number.
inline constexpr int kIOModuleInputs = 1000;
inline constexpr int kIOModuleFirstAnalogue = 100;
inline constexpr int kIOModuleFirstLamp = 200;
constexpr std::optional<IOModuleInput> IOModuleInputOf(int input) {
  const int module = input / kIOModuleInputs, place = input % kIOModuleInputs;
  if (module < 1 || module > 2 || input < 0) return std::nullopt;
  if (place < kIOModuleSwitches) return IOModuleInput{module, IOModuleKind::Switch, place};
  const int analogue = place - kIOModuleFirstAnalogue, lamp = place - kIOModuleFirstLamp;
  if (analogue >= 0 && analogue < kIOModuleAnalogues)
    return IOModuleInput{module, IOModuleKind::Analogue, analogue};
  if (lamp >= 0 && lamp < kIOModuleLamps) return IOModuleInput{module, IOModuleKind::Lamp, lamp};
  return std::nullopt;
}
constexpr std::int16_t IOModuleInputNumber(const IOModuleInput& input) {
  const int first = input.Kind == IOModuleKind::Switch     ? 0
                    : input.Kind == IOModuleKind::Analogue ? kIOModuleFirstAnalogue
                                                           : kIOModuleFirstLamp;
  return static_cast<std::int16_t>(input.Module * kIOModuleInputs + first + input.Index);
}

// ActionKind: what a switch does. Any other character counts as WriteValue.
enum class IOModuleAction : Byte {
  WriteValue = 'v',
  Keystroke = 'd',
  Command = 'c',  // an X-Plane command; the edge's value is its entry number
  NoAction = 'n',
  NotUsed = 'u',
};

// IncrementFlags of a switch.
inline constexpr int kIOModuleStepOffOn = 1;
inline constexpr int kIOModuleStepOnOff = 2;
// IncrementFlags of a lamp: it is lit where one of the conditions that are set holds.
inline constexpr int kIOModuleLitAtMinimum = 1;
inline constexpr int kIOModuleLitAtMaximum = 2;
inline constexpr int kIOModuleLitAbove = 4;    // at OffOnValue percent of the span or above
inline constexpr int kIOModuleLitAtValue = 8;  // equal to OnOffValue

enum class IOModuleSwitchType : std::int16_t { Toggle = 0, EncoderA = 1, EncoderB = 2 };

// The edge value for "send nothing".
inline constexpr float kIOModuleSendNothing = -1.0f;

}  // namespace tvx
