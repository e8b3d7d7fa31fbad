// The meaning of the numbers in an IO module's definition (IomRecord).
#pragma once

#include <optional>

#include "config/Records.h"

namespace tvx {

inline constexpr int kIomSwitches = 48;  // six groups A..F of eight
inline constexpr int kIomAnalogues = 8;
inline constexpr int kIomLamps = 32;
inline constexpr int kIomLongestDebounce = 20;
inline constexpr int kIomRawTop = 4095;  // of an analogue input

enum class IomKind { Switch, Analogue, Lamp };

// What a definition defines.
struct IomInput {
  int Module = 1;  // 1 or 2
  IomKind Kind = IomKind::Switch;
  int Index = 0;  // 0-based
  bool operator==(const IomInput&) const = default;
};

// `Input` of a definition: 1000 a module, plus 0..47 a switch, 100..107 an analogue input, 200..231 a lamp.
// Nothing for any other number.
constexpr std::optional<IomInput> IomInputOf(int input) {
  const int module = input / 1000, place = input % 1000;
  if (module < 1 || module > 2 || input < 0) return std::nullopt;
  if (place < kIomSwitches) return IomInput{module, IomKind::Switch, place};
  if (place >= 100 && place < 100 + kIomAnalogues) return IomInput{module, IomKind::Analogue, place - 100};
  if (place >= 200 && place < 200 + kIomLamps) return IomInput{module, IomKind::Lamp, place - 200};
  return std::nullopt;
}
constexpr std::int16_t IomInputNumber(const IomInput& input) {
  const int base = input.Kind == IomKind::Switch ? 0 : input.Kind == IomKind::Analogue ? 100 : 200;
  return static_cast<std::int16_t>(input.Module * 1000 + base + input.Index);
}

// ActionKind: what a switch does. Any other character counts as WriteValue.
enum class IomAction : Byte {
  WriteValue = 'v',
  Keystroke = 'd',
  Command = 'c',  // an X-Plane command; the edge's value is its entry number
  NoAction = 'n',
  NotUsed = 'u',
};

// IncrementFlags of a switch.
inline constexpr int kIomStepOffOn = 1;
inline constexpr int kIomStepOnOff = 2;
// IncrementFlags of a lamp: it is lit where one of the conditions that are set holds.
inline constexpr int kIomLitAtMinimum = 1;
inline constexpr int kIomLitAtMaximum = 2;
inline constexpr int kIomLitAbove = 4;    // at OffOnValue percent of the span or above
inline constexpr int kIomLitAtValue = 8;  // equal to OnOffValue

enum class IomSwitchType : std::int16_t { Toggle = 0, EncoderA = 1, EncoderB = 2 };

// An edge value that sends nothing.
inline constexpr float kIomSendNothing = -1.0f;

}  // namespace tvx
