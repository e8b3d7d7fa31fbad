#include <gtest/gtest.h>

#include "base/Rounding.h"
#include "hwbus/Serial.h"
#include "hwbus/SerialWords.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeSerialPort.h"

namespace tvx {
namespace {

using Bytes = std::vector<Byte>;
using Texts = std::vector<std::string>;

class SerialTest : public testing::Test {
 protected:
  SerialTest() {
    const char* names[] = {"gauges", "engines", "iom1", "iom2", "yoke1", "yoke2"};
    for (std::size_t i = 0; i < kHardwareGroups; ++i) {
      ports[i].Name = names[i];
      ports[i].SharedLog = &log;
    }
    model.General.ComPortGS = 5;
  }
  void ConfigureAll() {
    model.General.ComPortEC = 6;
    model.General.ComPortIOM1 = 7;
    model.General.ComPortIOM2 = 8;
    model.General.ComPortYoke1 = 9;
    model.General.ComPortYoke2 = 10;
  }
  FakeSerialPort& Gauges() { return ports[0]; }
  Bytes TransmitBuffer() const { return serial.TransmitBuffer; }

  ConfigModel model;
  FakeMessageBoxes boxes;
  FakeEventLoop loop;
  Texts log;
  std::array<FakeSerialPort, kHardwareGroups> ports;
  Serial serial{model, PointersTo(ports), boxes, loop};
};

const char* const kNoPower = "No Power on CIM; Check Power Switch and Fuses";

TEST_F(SerialTest, OpensEveryPortTwiceInOrderWithItsThreshold) {
  ConfigureAll();
  serial.OpenComPorts();
  const struct {
    const char* name;
    int com, threshold;
  } order[] = {{"gauges", 5, 25}, {"engines", 6, 16}, {"iom1", 7, 25},
               {"iom2", 8, 25},   {"yoke1", 9, 25},   {"yoke2", 10, 25}};
  Texts expected;
  for (const auto& port : order) {
    const std::string name = port.name;
    const std::string open = name + " open " + std::to_string(port.com);
    for (const std::string& entry :
         {name + " threshold " + std::to_string(port.threshold), open, name + " close", open,
          name + " discard output", name + " discard input"}) {
      expected.push_back(entry);
    }
  }
  EXPECT_EQ(log, expected);
  EXPECT_EQ(TransmitBuffer(), Bytes(40, ' '));
  serial.CloseComPorts();
  serial.CloseComPorts();
  EXPECT_EQ(log.size(), expected.size() + 6);  // closed ports are left alone
}

TEST_F(SerialTest, APortThatFailsHoldsNothingUp) {
  ConfigureAll();
  Gauges().OpenResult = SerialState::NoPermission;
  serial.OpenComPorts();
  EXPECT_TRUE(serial.PortOf(HardwareGroup::Yoke2).IsOpen());
  EXPECT_TRUE(SerialTrouble(5, Gauges().State()));
  EXPECT_FALSE(SerialTrouble(0, Gauges().State())) << "not used";
}

TEST_F(SerialTest, MissingPowerIsToldOnceAnOpeningAndForTheGaugeBusOnly) {
  ConfigureAll();
  for (auto& port : ports) port.Carrier = true;
  serial.OpenComPorts();
  EXPECT_EQ(boxes.shown, Texts{kNoPower});
  EXPECT_TRUE(Gauges().IsOpen());
  Gauges().Carrier = false;
  serial.OpenComPorts();
  EXPECT_EQ(boxes.shown.size(), 1u);
}

TEST_F(SerialTest, AFrameGoesOutOnTheTickAndOnce) {
  serial.OpenComPorts();
  serial.WriteGaugeCommand(12, 3, -300);
  EXPECT_EQ(serial.TransmitPending, 1);
  EXPECT_TRUE(Gauges().Writes.empty());
  serial.TickTransmit();
  serial.TickTransmit();
  EXPECT_EQ(Gauges().Writes, (std::vector<Bytes>{{0x00, 0x0C, 0x3C, 0x2D, 0x03, 0xFF}}));
  EXPECT_EQ(serial.TransmitPending, 0);

  serial.WriteNewGaugeID(3, 200);
  serial.TickTransmit();
  EXPECT_EQ(Gauges().Writes.back(), (Bytes{0x00, 0x03, 0x2C, 0xC8, 0xAA, 0xFF, 0x20}));
}

TEST_F(SerialTest, WritersWaitForTheSlotAndKeepTheirOrder) {
  serial.OpenComPorts();
  loop.onYield = [&] {
    if (loop.yields % 3 == 0) serial.TickTransmit();
  };
  for (int gauge = 1; gauge <= 4; ++gauge) serial.WriteGaugeCommand(gauge, 5, gauge);
  serial.WriteNewGaugeID(5, 6);
  serial.TickTransmit();
  ASSERT_EQ(Gauges().Writes.size(), 5u);
  for (Byte gauge = 1; gauge <= 5; ++gauge) EXPECT_EQ(Gauges().Writes[gauge - 1u][1], gauge);
  EXPECT_EQ(loop.yields, 12);
}

TEST_F(SerialTest, AWaitEndsWithTheProgramAndKeepsTheQueuedFrame) {
  serial.WriteGaugeCommand(1, 5, 1);
  const Bytes queued = TransmitBuffer();
  loop.onYield = [&] { loop.ending = true; };
  serial.WriteGaugeCommand(2, 5, 2);
  serial.WriteNewGaugeID(2, 3);
  EXPECT_EQ(TransmitBuffer(), queued);
  EXPECT_FALSE(serial.QueryGauge(3));
  EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(SerialTest, ValuesThatDoNotFitAreTheCallersErrorAndTouchNothing) {
  serial.WriteGaugeCommand(1, 5, 7);
  const Bytes queued = TransmitBuffer();
  EXPECT_THROW(serial.WriteGaugeCommand(2, 5, 65536), RangeError);
  EXPECT_THROW(serial.WriteGaugeCommand(-1, 5, 0), RangeError);
  EXPECT_THROW(serial.WriteNewGaugeID(1, 256), RangeError);
  EXPECT_EQ(TransmitBuffer(), queued);
  EXPECT_EQ(serial.TransmitPending, 1);
  EXPECT_EQ(loop.yields, 0);
}

TEST_F(SerialTest, PseudoAddressesGoToTheirModules) {
  Texts calls;
  const auto note = [&calls](const std::string& who) {
    return [&calls, who](int gaugeID, int command, std::int32_t value) {
      calls.push_back(who + " " + std::to_string(gaugeID) + " " + std::to_string(command) + " " +
                      std::to_string(value));
    };
  };
  serial.WriteGaugeCommand(1000, 1, 1);  // nobody there
  serial.SetModuleCommand(HardwareGroup::IOModule1, note("one"));
  serial.SetModuleCommand(HardwareGroup::IOModule2, note("two"));
  serial.WriteGaugeCommand(1000, 4, -70000);  // unchanged, even where no frame could hold it
  serial.WriteGaugeCommand(2000, 5, 6);
  for (const int nobody : {256, 999, 1001, 3000}) serial.WriteGaugeCommand(nobody, 5, 70000);
  EXPECT_EQ(calls, (Texts{"one 1000 4 -70000", "two 2000 5 6"}));
  EXPECT_EQ(serial.TransmitPending, 0);
}

TEST_F(SerialTest, AQueryWithoutReplyEndsAfterTwentyTicksWithOneMessage) {
  int ticks = 0;
  loop.onYield = [&] {
    if (loop.yields % 2 == 0) return;  // the timer is slower than the loop
    ++ticks;
    serial.TickReplyCountdown();
  };
  EXPECT_FALSE(serial.QueryGauge(7));
  EXPECT_EQ(ticks, 20);
  EXPECT_EQ(boxes.shown, Texts{"Gauge with ID: 7 doesn't respond."});
}

TEST_F(SerialTest, TheTickOpensAClosedPortAndADeadLineLosesTheFrame) {
  serial.WriteGaugeCommand(1, 5, 1);
  serial.TickTransmit();
  EXPECT_EQ(Gauges().Log, (Texts{"threshold 25", "open 5"}));
  EXPECT_EQ(Gauges().Sent.size(), 6u);

  Gauges().Unplug();
  serial.WriteGaugeCommand(2, 5, 1);
  serial.TickTransmit();
  EXPECT_EQ(serial.TransmitPending, 0);
  EXPECT_EQ(Gauges().Sent.size(), 6u);
}

TEST_F(SerialTest, LostPortsComeBackQuietlyAndOthersAreNotTouched) {
  ConfigureAll();
  for (auto& port : ports) port.Carrier = true;
  serial.OpenComPorts();
  boxes.shown.clear();
  log.clear();
  EXPECT_FALSE(serial.ReopenLostPorts());
  EXPECT_TRUE(log.empty());

  Gauges().Unplug();
  ports[4].Unplug();
  EXPECT_FALSE(serial.ReopenLostPorts());
  Gauges().OpenResult = ports[4].OpenResult = SerialState::Open;
  Gauges().Log.clear();
  EXPECT_TRUE(serial.ReopenLostPorts());
  EXPECT_EQ(Gauges().CountOf("open 5"), 1u);
  EXPECT_TRUE(ports[4].IsOpen());
  EXPECT_FALSE(serial.ReopenLostPorts());
  EXPECT_TRUE(boxes.shown.empty());
}

}  // namespace
}  // namespace tvx
