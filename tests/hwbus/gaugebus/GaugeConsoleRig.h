// A gauge bus in memory for the search and the test console.
#pragma once

#include "config/NameTables.h"
#include "hwbus/gaugebus/Serial.h"
#include "tests/Story.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeSerialPort.h"

namespace tvx {

struct GaugeBusRig : testing::Test {
  GaugeBusRig() { model.General.ComPortGS = 5; }
  ConfigModel model;
  FakeMessageBoxes boxes;
  std::array<FakeSerialPort, kHardwareGroups> ports;
  FakeClock clock;
  HardwarePorts hardware{model, PointersTo(ports)};
  Serial serial{hardware, boxes, clock};
};

struct HaltedBusTest : GaugeBusRig {
  HaltedBusTest() {
    FillNameTables(model);
    serial.OpenComPorts();
  }
  static std::array<Byte, kReplySize> Reply(int id, int type, int gaugeModel = 1, int version = 20) {
    std::array<Byte, kReplySize> reply{0, static_cast<Byte>(id), static_cast<Byte>(type),
                                       static_cast<Byte>(gaugeModel), static_cast<Byte>(version)};
    reply[24] = 0xFF;
    return reply;
  }
  FakeSerialPort& Bus() { return ports[0]; }
};

}  // namespace tvx
