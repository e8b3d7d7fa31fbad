#include "virtualcockpit/bus/Device.h"

namespace tvx::vc {
namespace {

constexpr int kLighting = 8;

FaceLight LightOf(std::int32_t word) {
  const auto bits = static_cast<std::uint32_t>(word < 0 ? 0 : word);
  FaceLight light;
  light.told = true;
  light.lit = (bits & 0x01) != 0;
  light.bus1 = (bits & 0x02) != 0;
  light.bus2 = (bits & 0x04) != 0;
  light.brightness = static_cast<int>(bits >> 4 & 0x0F);
  light.instrumentLights = (bits & 0x4000) != 0;
  light.navigationLights = (bits & 0x8000) != 0;
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
    case DeviceFault::Late:
      return "answers late";
    case DeviceFault::Duplicate:
      return "address used twice";
    case DeviceFault::Dead:
      return "without power";
  }
  return "";
}

void Device::Receive(int command, std::int32_t value) {
  lastCommand_ = command;
  lastValue_ = value;
  ++changes_;
  if (command == kLighting) {
    light_ = LightOf(value);
  } else {
    OnCommand(command, value);
  }
}

Reply Device::Answer() {
  Reply reply{};
  reply.front() = 0x00;
  reply[1] = identity_.gaugeID;
  reply[2] = identity_.type;
  reply[3] = identity_.model;
  reply[4] = identity_.version;
  FillReply(reply);
  handMoved_ = false;
  reply.back() = 0xFF;
  ++answers_;
  return reply;
}

}  // namespace tvx::vc
