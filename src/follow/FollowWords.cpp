#include "follow/FollowWords.h"

#include <array>
#include <cstdio>

#include "base/NumberFormat.h"
#include "hwbus/GaugeFrame.h"
#include "hwbus/iomodule/IOModuleInput.h"

namespace tvx {
namespace {

constexpr std::int64_t kMsPerSecond = 1000, kTenthsUpTo = 10, kSecondsPerMinute = 60;

}  // namespace

std::string AgeWords(std::int64_t ms) {
  const std::int64_t seconds = ms / kMsPerSecond;
  if (seconds < kTenthsUpTo) {
    return FormatNumberText(static_cast<double>(ms) / static_cast<double>(kMsPerSecond), "0.0") + " s";
  }
  if (seconds < kSecondsPerMinute) return std::to_string(seconds) + " s";
  return std::to_string(seconds / kSecondsPerMinute) + " min";
}

std::string NumberWords(double value) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.6g", value);
  return text.data();
}

std::string FunctionWords(int number) {
  return "Function " + FormatNumberText(number, "000");
}

std::string HexWords(int gaugeID, int command, std::int32_t value) {
  const auto frame = BuildGaugeFrame(gaugeID, command, value);
  std::string words;
  for (const Byte byte : frame.value_or(GaugeFrame{})) {
    std::array<char, 4> text{};
    std::snprintf(text.data(), text.size(), "%02X", byte);
    words += (words.empty() ? "" : " ") + std::string(text.data());
  }
  return words;
}

std::string InputWords(int number) {
  const auto input = IOModuleInputOf(number);
  if (!input) return "Input " + std::to_string(number);
  const std::string module = "IO module " + std::to_string(input->Module) + ", ";
  switch (input->Kind) {
    case IOModuleKind::Switch:
      return module + "switch " + static_cast<char>('A' + input->Index / kIOModuleGroupSize) +
             std::to_string(input->Index % kIOModuleGroupSize + 1);
    case IOModuleKind::Analogue:
      return module + "axis " + std::to_string(input->Index + 1);
    case IOModuleKind::Lamp:
      return module + "lamp " + std::to_string(input->Index + 1);
  }
  return module;
}

}  // namespace tvx
