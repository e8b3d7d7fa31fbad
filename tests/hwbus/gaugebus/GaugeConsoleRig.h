// A gauge bus in memory for the search and the test console.
#pragma once

#include <gtest/gtest.h>

#include "config/NameTables.h"
#include "hwbus/gaugebus/Serial.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeSerialPort.h"

namespace tvx {

class HaltedBusTest : public testing::Test {
 protected:
  HaltedBusTest() {
    FillNameTables(model);
    model.General.ComPortGS = 5;
    serial.OpenComPorts();
  }
  static std::array<Byte, kReplySize> Reply(int id, int type, int gaugeModel = 1, int version = 20) {
    std::array<Byte, kReplySize> reply{};
    reply[1] = static_cast<Byte>(id);
    reply[2] = static_cast<Byte>(type);
    reply[3] = static_cast<Byte>(gaugeModel);
    reply[4] = static_cast<Byte>(version);
    reply[24] = 0xFF;
    return reply;
  }
  FakeSerialPort& Bus() { return ports[0]; }

  ConfigModel model;
  FakeMessageBoxes boxes;
  std::array<FakeSerialPort, kHardwareGroups> ports;
  FakeClock clock;
  HardwarePorts hardware{model, PointersTo(ports)};
  Serial serial{hardware, boxes, clock};
};

}  // namespace tvx
