#include "virtualcockpit/lines/IOModuleUnit.h"

#include <algorithm>
#include <cstdlib>

#include "drawn/Wire.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::vc {
namespace {

constexpr int kOwnAddress = 10, kOwnKind = 10, kModel = 1, kVersion = 12;
constexpr int kAll = 255;

namespace command {
constexpr int kReport = 7, kDebounce = 11, kAddress = 13;
}
namespace place {
constexpr std::size_t kSwitches = 6, kAxesHigh = 13, kAxesLow = 17;
}
constexpr std::uint32_t kLowHalf = 0xFFFF;
constexpr Byte kFirstOfGroup = 0x80;  // the bit of a group's first switch

}  // namespace

void IOModuleUnit::SetSwitch(int index, bool on) {
  if (index < 0 || index >= kSwitches || Switch(index) == on) return;
  state_.switches[static_cast<std::size_t>(index)] = on;
  Report();
}

void IOModuleUnit::SetAxis(int axis, int raw) {
  if (axis < 0 || axis >= kAxes || Axis(axis) == raw) return;
  state_.axes[static_cast<std::size_t>(axis)] = std::clamp(raw, 0, kTop);
  Report();
}

void IOModuleUnit::Click(int first, bool clockwise) {
  const int half = clockwise ? first : first + 1;
  SetSwitch(half, true);
  SetSwitch(half, false);
}

void IOModuleUnit::StartAnew() {
  state_.StartAnew();
  debounce_.fill(0);
}

void IOModuleUnit::OnBytes(ByteView bytes) {
  decoder_.Take(bytes, [this](const Frame& frame) {
    const auto* command = std::get_if<CommandFrame>(&frame);
    if (command == nullptr || command->gaugeID != kOwnAddress) return;
    CountFrame();
    OnCommand(command->command, command->value);
  });
}

void IOModuleUnit::OnCommand(int number, std::int32_t value) {
  const auto word = static_cast<std::uint32_t>(std::abs(value)) & kLowHalf;
  switch (number) {
    case command::kReport:
      Report();
      return;
    case command::kDebounce: {
      const int index = static_cast<int>(word >> 8), time = static_cast<int>(word & 0xFF);
      if (index == kAll) debounce_.fill(time);
      if (index < kSwitches) debounce_[static_cast<std::size_t>(index)] = time;
      break;
    }
    case command::kAddress:
      address_ = static_cast<int>(word & 0xFF);
      break;
    default:
      if (!state_.TakeCommand(number, value)) return;
  }
  Changed();
}

void IOModuleUnit::Report() {
  Changed();
  Reply report = EmptyReply(kOwnAddress, kOwnKind, kModel, kVersion);
  for (std::size_t i = 0; i < state_.switches.size(); ++i) {
    if (state_.switches[i]) report[place::kSwitches - 1 + i / 8] |= static_cast<Byte>(kFirstOfGroup >> i % 8);
  }
  // Two axes share a byte for their upper four bits.
  const auto& axes = state_.axes;
  for (std::size_t j = 0; j < axes.size(); j += 2) {
    PutByte(report, place::kAxesHigh + j / 2, axes[j] >> 8 << 4 | axes[j + 1] >> 8);
    PutByte(report, place::kAxesLow + j, axes[j]);
    PutByte(report, place::kAxesLow + j + 1, axes[j + 1]);
  }
  Answer({report.begin(), report.end()});
}

std::string IOModuleUnit::Words() const {
  std::string lit;
  for (int i = 0; i < kLamps; ++i) {
    if (Lamp(i)) lit += " " + std::to_string(i + 1);
  }
  return "IO module lamps" + (lit.empty() ? " none" : lit);
}

}  // namespace tvx::vc
