#include "virtualcockpit/lines/IoBoard.h"

#include <algorithm>
#include <cstdlib>

namespace tvx::vc {
namespace {

constexpr int kOwnAddress = 10;
constexpr int kAll = 255;

}  // namespace

void IoBoard::SetSwitch(int index, bool on) {
  if (index < 0 || index >= kSwitches || Switch(index) == on) return;
  switches_[static_cast<std::size_t>(index)] = on;
  Report();
}

void IoBoard::SetAxis(int axis, int raw) {
  if (axis < 0 || axis >= kAxes || Axis(axis) == raw) return;
  axes_[static_cast<std::size_t>(axis)] = std::clamp(raw, 0, kTop);
  Report();
}

void IoBoard::Click(int first, bool clockwise) {
  const int half = clockwise ? first : first + 1;
  SetSwitch(half, true);
  SetSwitch(half, false);
}

bool IoBoard::Lamp(int index) const {
  return (lamps_ >> index & 1) != 0 || lampTest_ == kAll || lampTest_ == index + 1;
}

void IoBoard::OnBytes(ByteView bytes) {
  decoder_.Take(bytes, [this](const Frame& frame) {
    const auto* command = std::get_if<CommandFrame>(&frame);
    if (command == nullptr || command->gaugeID != kOwnAddress) return;
    CountFrame();
    OnCommand(command->command, command->value);
  });
}

void IoBoard::OnCommand(int command, std::int32_t value) {
  const auto word = static_cast<std::uint32_t>(std::abs(value)) & 0xFFFF;
  switch (command) {
    case 4:
      lamps_ = (lamps_ & 0xFFFF0000) | word;
      break;
    case 5:
      lamps_ = (lamps_ & 0xFFFF) | word << 16;
      break;
    case 6:
      brightness_ = static_cast<int>(word & 0xF);
      break;
    case 7:
      Report();
      return;
    case 11: {
      const int index = static_cast<int>(word >> 8), time = static_cast<int>(word & 0xFF);
      if (index == kAll) debounce_.fill(time);
      if (index < kSwitches) debounce_[static_cast<std::size_t>(index)] = time;
      break;
    }
    case 12:
      lampTest_ = static_cast<int>(word);
      break;
    case 13:
      address_ = static_cast<int>(word & 0xFF);
      break;
    default:
      return;
  }
  Changed();
}

void IoBoard::Report() {
  Changed();
  std::vector<Byte> report(kReplySize);
  report[1] = kOwnAddress;
  report[2] = kOwnAddress;  // its kind, as an IO module on the gauge bus names it
  report[3] = 1;
  report[4] = 12;
  for (std::size_t i = 0; i < switches_.size(); ++i) {
    if (switches_[i]) report[5 + i / 8] |= static_cast<Byte>(0x80 >> i % 8);
  }
  for (std::size_t j = 0; j < axes_.size(); ++j) {
    const int high = axes_[j] >> 8;
    report[12 + j / 2] |= static_cast<Byte>(j % 2 == 0 ? high << 4 : high);
    report[16 + j] = static_cast<Byte>(axes_[j] & 0xFF);
  }
  report[24] = 0xFF;
  Answer(std::move(report));
}

std::string IoBoard::Words() const {
  std::string lit;
  for (int i = 0; i < kLamps; ++i) {
    if (Lamp(i)) lit += " " + std::to_string(i + 1);
  }
  return "IO module lamps" + (lit.empty() ? " none" : lit);
}

}  // namespace tvx::vc
