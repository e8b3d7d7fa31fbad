#include <gtest/gtest.h>

#include "base/Rounding.h"
#include "hwbus/gaugebus/NewGaugeIDFrame.h"
#include "hwbus/gaugebus/Serial.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeSerialPort.h"

namespace tvx {
namespace {

using Bytes = std::vector<Byte>;
using Texts = std::vector<std::string>;

class SerialTest : public testing::Test {
 protected:
  SerialTest() { model.General.ComPortGS = 5; }
  FakeSerialPort& Gauges() { return ports[0]; }
  Bytes TransmitBuffer() const {
    const ByteView held = serial.TransmitBuffer();
    return {held.begin(), held.end()};
  }

  ConfigModel model;
  FakeMessageBoxes boxes;
  FakeEventLoop loop;
  std::array<FakeSerialPort, kHardwareGroups> ports;
  HardwarePorts hardware{model, PointersTo(ports)};
  Serial serial{hardware, boxes, loop};
};

const char* const kNoPower = "No Power on CIM; Check Power Switch and Fuses";

TEST_F(SerialTest, MissingPowerIsToldOnceAnOpeningAndForTheGaugeBusOnly) {
  model.General.ComPortEC = 6;
  for (auto& port : ports) port.Carrier = true;
  serial.OpenComPorts();
  EXPECT_EQ(boxes.shown, Texts{kNoPower});
  EXPECT_TRUE(Gauges().IsOpen());
  EXPECT_EQ(TransmitBuffer(), Bytes(40, ' '));
  Gauges().Carrier = false;
  serial.OpenComPorts();
  EXPECT_EQ(boxes.shown.size(), 1u);
  serial.CloseComPorts();
  EXPECT_FALSE(Gauges().IsOpen() || ports[1].IsOpen());
}

TEST_F(SerialTest, AFrameGoesOutOnTheTickAndOnce) {
  serial.OpenComPorts();
  serial.WriteGaugeCommand(12, 3, -300);
  EXPECT_TRUE(serial.TransmitPending());
  EXPECT_TRUE(Gauges().Writes.empty());
  serial.TickTransmit();
  serial.TickTransmit();
  EXPECT_EQ(Gauges().Writes, (std::vector<Bytes>{{0x00, 0x0C, 0x3C, 0x2D, 0x03, 0xFF}}));
  EXPECT_FALSE(serial.TransmitPending());

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
  EXPECT_TRUE(serial.TransmitPending());
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
  EXPECT_FALSE(serial.TransmitPending());
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
  EXPECT_FALSE(serial.TransmitPending());
  EXPECT_EQ(Gauges().Sent.size(), 6u);
}

TEST_F(SerialTest, ABatchGoesOutWholeOrSaysWhyNot) {
  using Result = Serial::BatchResult;
  const Bytes frame{0x00, 0x0C, 0x3C, 0x2D, 0x03, 0xFF};
  serial.BeginBatch();
  EXPECT_EQ(serial.SendBatch(), Result::Sent) << "there was none to send";
  serial.AppendToBatch(frame);
  EXPECT_EQ(serial.SendBatch(), Result::Closed);
  serial.OpenComPorts();
  serial.BeginBatch();
  std::size_t frames = 0;
  while (serial.AppendToBatch(frame)) ++frames;
  EXPECT_EQ(frames, FrameBuffer::kRoom / frame.size()) << "what does not fit is refused whole";
  Gauges().RefuseWrites = true;
  EXPECT_EQ(serial.SendBatch(), Result::Full);
  Gauges().RefuseWrites = false;
  EXPECT_EQ(serial.SendBatch(), Result::Sent);
  ASSERT_EQ(Gauges().Writes.size(), 1u);
  EXPECT_EQ(Gauges().Writes[0].size(), frames * frame.size());
  model.General.ComPortGS = 0;
  EXPECT_EQ(serial.SendBatch(), Result::Sent) << "no gauge bus is configured";
  EXPECT_EQ(Gauges().Writes.size(), 1u);
}

TEST(NewGaugeIDFrame, AddressesMustBeInTheirRange) {
  EXPECT_FALSE(BuildNewGaugeIDFrame(256, 1));
  EXPECT_FALSE(BuildNewGaugeIDFrame(1, -1));
  EXPECT_TRUE(BuildNewGaugeIDFrame(0, 255));
}

}  // namespace
}  // namespace tvx
