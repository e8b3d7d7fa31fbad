#include "base/Rounding.h"
#include "hwbus/gaugebus/NewGaugeIDFrame.h"
#include "tests/hwbus/gaugebus/GaugeConsoleRig.h"

namespace tvx::serialtest {

struct SerialTest : GaugeBusRig, Story {
  SerialTest() {
    verbs = {{"open", [this] { serial.OpenComPorts(); }},
             {"write", [this](int gauge, int command,
                              int value) { return serial.WriteGaugeCommand(gauge, command, value); }},
             {"id", [this](int from, int to) { return serial.WriteNewGaugeID(from, to); }},
             {"tick", [this] { serial.TickTransmit(); }},
             {"pending", [this] { return serial.TransmitPending(); }},
             {"sent", [this] { return Hexadecimal(std::exchange(Gauges().Sent, {})); }}};
  }
  static std::string Hexadecimal(const Bytes& bytes) {
    std::ostringstream text;
    for (const Byte byte : bytes) text << (text.tellp() > 0 ? " " : "") << std::hex << int{byte};
    return text.str();
  }
  FakeSerialPort& Gauges() { return ports[0]; }
  Bytes TransmitBuffer() const {
    const ByteView held = serial.TransmitBuffer();
    return {held.begin(), held.end()};
  }
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
  Play(
      "open; write 12 3 -300 = true; pending = true; sent =; tick; tick; sent = 0 c 3c 2d 3 ff; "
      "pending = false; id 3 200 = true; tick; sent = 0 3 2c c8 aa ff 20");
  EXPECT_EQ(Gauges().Writes.size(), 2u);
}

// Whoever writes faster than the line takes it waits for nothing; what finds no room is refused.
TEST_F(SerialTest, FramesQueueInOrderUpToTheirBound) {
  serial.OpenComPorts();
  const int room = static_cast<int>(FrameQueue::kRoom) + 1;  // one has its turn
  for (int gauge = 1; gauge < room; ++gauge) EXPECT_TRUE(serial.WriteGaugeCommand(gauge, 5, gauge));
  EXPECT_TRUE(serial.WriteNewGaugeID(room, 6));
  EXPECT_FALSE(serial.WriteGaugeCommand(200, 5, 1) || serial.WriteNewGaugeID(200, 6));
  for (int tick = 1; tick <= room; ++tick) {
    EXPECT_TRUE(serial.TransmitPending()) << tick;
    serial.TickTransmit();
    ASSERT_EQ(Gauges().Writes.size(), static_cast<std::size_t>(tick));
    EXPECT_EQ(Gauges().Writes.back()[1], tick);
  }
  EXPECT_FALSE(serial.TransmitPending());
  EXPECT_TRUE(serial.WriteGaugeCommand(200, 5, 1));
}

TEST_F(SerialTest, ARunTakesWhatStillWaitsIntoItsFirstBatch) {
  Play("open; write 1 5 0 = true; write 2 5 0 = true; write 3 5 0 = true");
  serial.BeginBatch();
  serial.AppendToBatch(Bytes{9, 9});
  EXPECT_EQ(serial.SendBatch(), Serial::BatchResult::Sent);
  Play("sent = 0 1 58 1 2 ff 0 2 58 1 2 ff 0 3 58 1 2 ff 9 9; pending = false");
}

TEST_F(SerialTest, ValuesThatDoNotFitAreTheCallersErrorAndTouchNothing) {
  serial.WriteGaugeCommand(1, 5, 7);
  const Bytes queued = TransmitBuffer();
  EXPECT_THROW(serial.WriteGaugeCommand(2, 5, 65536), RangeError);
  EXPECT_THROW(serial.WriteGaugeCommand(-1, 5, 0), RangeError);
  EXPECT_THROW(serial.WriteNewGaugeID(1, 256), RangeError);
  EXPECT_EQ(TransmitBuffer(), queued);
  EXPECT_TRUE(serial.TransmitPending());
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
  Registration one = serial.SetModuleCommand(HardwareGroup::IOModule1, note("one"));
  const Registration two = serial.SetModuleCommand(HardwareGroup::IOModule2, note("two"));
  serial.WriteGaugeCommand(1000, 4, -70000);  // unchanged, even where no frame could hold it
  serial.WriteGaugeCommand(2000, 5, 6);
  for (const int nobody : {256, 999, 1001, 3000}) serial.WriteGaugeCommand(nobody, 5, 70000);
  one.End();
  serial.WriteGaugeCommand(1000, 4, 1);
  EXPECT_EQ(calls, (Texts{"one 1000 4 -70000", "two 2000 5 6"}));
  EXPECT_FALSE(serial.TransmitPending());
}

// How many ticks of the countdown until the query has come to its end, and how.
TEST_F(SerialTest, AQueryEndsWithTheReplyOrItsTime) {
  std::vector<bool> ends;
  const auto end = [&](bool answered) { ends.push_back(answered); };
  const std::tuple<const char*, int, int, int, bool> rows[] = {
      {"no reply", 0, -1, 20, false},
      {"no reply, behind ten frames of 20 ms", 11, -1, 24, false},
      {"a reply", 0, 5, 5, true}};
  for (const auto& [what, framesBefore, replyAfter, ticks, answered] : rows) {
    ends.clear();
    boxes.shown.clear();
    for (int i = 0; i < framesBefore; ++i) serial.WriteGaugeCommand(1, 1, 1);
    const Registration query = serial.QueryGauge(7, end);
    for (int tick = 1; tick <= ticks; ++tick) {
      EXPECT_TRUE(ends.empty()) << what << ' ' << tick;
      if (tick == replyAfter) serial.NoteReply();
      serial.TickReplyCountdown();
    }
    EXPECT_EQ(ends, std::vector<bool>{answered}) << what;
    EXPECT_EQ(boxes.shown, answered ? Texts{} : Texts{"Gauge with ID: 7 doesn't respond."}) << what;
    serial.NoteReply();
    EXPECT_EQ(ends.size(), 1u) << what << ": told once";
    while (serial.TransmitPending()) serial.TickTransmit();
  }
}

TEST_F(SerialTest, WhoeverGoesAwayIsNotToldOfHisQuery) {
  int told = 0;
  Registration query = serial.QueryGauge(7, [&](bool) { ++told; });
  query.End();
  for (int tick = 0; tick < 30; ++tick) serial.TickReplyCountdown();
  serial.NoteReply();
  EXPECT_EQ(told, 0);
  EXPECT_TRUE(boxes.shown.empty());
}

TEST_F(SerialTest, TheTickOpensAClosedPortAndADeadLineLosesTheFrame) {
  Play("write 1 5 0 = true; tick; sent = 0 1 58 1 2 ff");
  EXPECT_EQ(Gauges().Log, (Texts{"threshold 25", "open 5"}));
  Gauges().Unplug();
  Play("write 2 5 1 = true; tick; pending = false; sent =");
}

TEST_F(SerialTest, AFrameWaitsForALineThatIsBeingOpenedButNotForEver) {
  Gauges().OpenResult = SerialState::Opening;
  Play("open; write 1 5 0 = true; tick; pending = true");
  Gauges().Answer(SerialState::Open);
  Play("tick; sent = 0 1 58 1 2 ff; open; write 1 5 1 = true");
  for (int tick = 0; tick <= Serial::kOpeningTicks; ++tick) serial.TickTransmit();
  Play("pending = false; (those behind it would wait for ever); write 1 5 1 = true; tick; pending = false");
}

TEST_F(SerialTest, ALineOrItsPowerThatComesBackIsTold) {
  std::vector<bool> cameBack;
  const Registration changed = serial.SetLineChanged([&](bool back) { cameBack.push_back(back); });
  Gauges().Carrier = false;
  serial.OpenComPorts();
  serial.WatchLines();
  EXPECT_EQ(Gauges().CountOf("ask carrier"), 1u);
  Gauges().Unplug();
  Gauges().OpenResult = SerialState::Open;
  serial.WatchLines();
  EXPECT_EQ(cameBack, (std::vector<bool>{false, false, true}));
  Gauges().SetCarrier(true);
  EXPECT_TRUE(serial.LineInTrouble());
  EXPECT_TRUE(Holds(serial.LineWords(), "no power"));
  Gauges().SetCarrier(false);
  EXPECT_FALSE(serial.LineInTrouble());
  EXPECT_EQ(cameBack, (std::vector<bool>{false, false, true, false, true}));
  EXPECT_TRUE(boxes.shown.empty());
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

}  // namespace tvx::serialtest
