#include "drawn/Device.h"

#include "drawn/Wire.h"

namespace tvx::drawn {
namespace {

constexpr int kLighting = 8;  // the command
constexpr std::uint32_t kLitBit = 0x01, kBus1Bit = 0x02, kBus2Bit = 0x04, kInstrumentLightsBit = 0x4000,
                        kNavigationLightsBit = 0x8000;
constexpr int kBrightnessShift = 4, kBrightnessMask = 0x0F;

FaceLight LightOf(std::int32_t word) {
  const auto bits = static_cast<std::uint32_t>(word < 0 ? 0 : word);
  FaceLight light;
  light.told = true;
  light.lit = (bits & kLitBit) != 0;
  light.bus1 = (bits & kBus1Bit) != 0;
  light.bus2 = (bits & kBus2Bit) != 0;
  light.brightness = static_cast<int>(bits >> kBrightnessShift & kBrightnessMask);
  light.instrumentLights = (bits & kInstrumentLightsBit) != 0;
  light.navigationLights = (bits & kNavigationLightsBit) != 0;
  return light;
}

}  // namespace

std::string_view FaultText(DeviceFault fault) {
  switch (fault) {
    case DeviceFault::None:
      return "works";
    case DeviceFault::Silent:
      return "does not answer";
    case DeviceFault::Garbled:
      return "answers are damaged";
    case DeviceFault::Half:
      return "answers break off";
    case DeviceFault::Late:
      return "answers late";
    case DeviceFault::Duplicate:
      return "address used twice";
    case DeviceFault::Dead:
      return "without power";
  }
  return "";
}

void Device::SetNow(std::int64_t nowMs) {
  now_ = nowMs;
  if (!diesAt_ || nowMs < *diesAt_) return;
  diesAt_.reset();
  SetFault(DeviceFault::Dead);
}

void Device::SetFault(DeviceFault fault) {
  const bool comesOn = fault_ == DeviceFault::Dead && fault != DeviceFault::Dead;
  fault_ = fault;
  Changed();
  if (comesOn) PowerUp();
}

void Device::PowerUp() {
  if (!traits_.startsAnew) return;
  StartAnew();
  light_ = {};
  handMoved_ = false;
  startsUntil_ = now_ + kStartMs;
  Changed();
}

void Device::Receive(int command, std::int32_t value) {
  lastCommand_ = command;
  lastValue_ = value;
  ++heard_;
  // What it shows already, told once more, is no change.
  auto& told = told_[static_cast<std::size_t>(command) % told_.size()];
  if (told != value) ++changes_;
  told = value;
  if (command == kLighting) {
    light_ = LightOf(value);
  } else {
    OnCommand(command, value);
  }
}

Reply Device::Answer() {
  Reply reply = EmptyReply(identity_.gaugeID, identity_.type, identity_.model, identity_.version);
  FillReply(reply);
  handMoved_ = false;
  ++answers_;
  return reply;
}

void Device::TakeAnswer(const Reply& answer) {
  ReadReply(answer);
  ++answers_;
  ++changes_;
}

}  // namespace tvx::drawn
