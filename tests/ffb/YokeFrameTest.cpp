#include "ffb/YokeFrame.h"
#include "ffb/YokeLine.h"
#include "tests/Test.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeSerialPort.h"
#include "tests/fakes/Wire.h"

namespace tvx::test::yokeframetest {

TEST(YokeFrame, IsBuiltByteByByte) {
  const struct {
    Byte address, command;
    int p[4];
    Bytes expected;
  } rows[] = {
      {1, 1, {0, 0, 0, 0}, {0, 1, 0x81, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0xFF}},
      {255, 0x81, {16383, 0, 0, 0}, {0, 255, 0x81, 0xFF, 0xFF, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0xFF}},
      {2, 5, {127, 128, 129, 8192}, {0, 2, 0x85, 0xFF, 0x80, 0x80, 0x81, 0x81, 0x81, 0x80, 0xC0, 0xFF}},
      {3, 7, {-1, 16384, -32768, 32767}, {0, 3, 0x87, 255, 255, 255, 255, 255, 255, 255, 255, 0xFF}},
  };
  for (const auto& row : rows) {
    const auto frame = YokeFrame(row.address, row.command, row.p[0], row.p[1], row.p[2], row.p[3]);
    EXPECT_EQ(Bytes(frame.begin(), frame.end()), row.expected) << int{row.command};
  }
}

TEST(YokeFrame, ParametersAreKeptInRange) {
  const double nan = std::nan(""), inf = std::numeric_limits<double>::infinity();
  const std::pair<int, int> rows[] = {
      {PositionParameter(-5), 0},    {PositionParameter(1e9), 16383}, {PositionParameter(nan), 8192},
      {FractionParameter(1), 16383}, {FractionParameter(nan), 0},     {SignedParameter(0), 8192},
      {SignedParameter(-1), 1},      {SignedParameter(nan), 8192},    {SignedParameter(-inf), 1},
      {GradientParameter(1), 2048},  {FrequencyParameter(12.5), 125}, {SpeedParameter(1600), 100},
  };
  for (std::size_t i = 0; i < std::size(rows); ++i) EXPECT_EQ(rows[i].first, rows[i].second) << "row " << i;
}

TEST(YokeFrame, PositionsFromRawValues) {
  const std::tuple<int, int, float, int> rows[] = {
      {30000, 30000, 0.05f, 0},         {30004, 30000, 0.125f, 0},   // 0.5 goes to the even 0
      {30012, 30000, 0.125f, 2},        {29988, 30000, 0.125f, -2},  // 1.5 to the even 2
      {65535, 30000, 0.05f, 511},       {0, 30000, 0.05f, -511},    {40000, 30000, -0.01f, -100},
      {40000, 30000, std::nanf(""), 0}, {40000, 30000, 1e30f, 511}, {0, 65535, 0, 0},
  };
  for (const auto& [raw, centre, scale, expected] : rows)
    EXPECT_EQ(AxisPosition(raw, {centre, scale}), expected) << raw;
}

Bytes Reply() {
  return Wire(". 09 . 05 .. =30001 P =513 S =32771 . =258 =1000 ..... FF");
}

TEST(YokeFrame, ReplyIsReadByteByByte) {
  YokeReply reply;
  ASSERT_EQ(ReadYokeReply(Reply(), 9, reply), YokeReplyKind::Correct);
  EXPECT_EQ((std::vector<int>{reply.address, reply.status, reply.rawRoll, reply.rawPitch, reply.buttons,
                              reply.rollLoad, reply.pitchLoad}),
            (std::vector<int>{9, 5, 30001, 513, 0x8003, 258, 1000}));
  EXPECT_EQ(ReadYokeReply(Reply(), 0, reply), YokeReplyKind::Correct) << "any sender";
}

struct Line {
  FakeSerialPort port;
  FakeClock clock;
  YokeLine line{port, clock};
  Line() {
    port.Open(3);
    line.SetAddress(9);
    line.SetCalibration({30000, 0.05f}, {1000, 0.1f});
  }
};

// Each text; and a bad reply leaves the last good positions in force.
TEST(YokeLine, SaysWhatItThinksOfEachReply) {
  Line l;
  Bytes longer = Reply(), noP = Reply(), noS = Reply(), other = Reply();
  longer.push_back(0);
  noP[8] = 'Q';
  noS[11] = 0;
  other[1] = 8;
  l.port.Arrive(Reply());
  EXPECT_EQ((std::tuple{l.line.ReceivedMessage(), l.line.PitchPosition(), l.line.Activity(),
                        l.line.PitchText().View(), l.line.RollLoadText().View()}),
            (std::tuple{"Correct", -49, " \\", "-9.6", "25.8"}));
  const std::pair<Bytes, std::string> rows[] = {{Bytes(), "Inc. reply"},
                                                {longer, "Inc. reply"},
                                                {noP, "Garbled reply"},
                                                {noS, "Garbled reply"},
                                                {other, "Wrong Reply"}};
  for (const auto& [bytes, text] : rows) {
    l.port.Arrive(Reply());
    ASSERT_EQ(l.line.ReceivedMessage(), "Correct");
    if (bytes.empty()) {
      l.port.Raise(SerialEvent::Received);
    } else {
      l.port.Arrive(bytes);
    }
    EXPECT_EQ(l.line.ReceivedMessage(), text) << bytes.size();
    EXPECT_EQ(l.line.PitchPosition(), -49);
    EXPECT_EQ(l.port.Waiting(), 0u);
  }
  l.port.Raise(SerialEvent::Break);
  EXPECT_EQ(l.line.ReceivedMessage(), "Break rcvd.");
  l.port.Raise(SerialEvent::Framing);
  EXPECT_EQ(l.line.ReceivedMessage(), "Framing err.");
}

TEST(YokeLine, CommandsTakeThirteenBytesAndGoOutInOneWrite) {
  Line l;
  l.line.ComposeCmd(4, 2, 1, 2, 3, 4);
  l.line.ComposeCmd(YokeCommand::Report);
  const Bytes expected{0, 4, 0x82, 0x81, 0x80, 0x82, 0x80, 0x83, 0x80, 0x84, 0x80, 0xFF, 0xFF,
                       0, 9, 0x87, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0xFF, 0xFF};
  EXPECT_EQ(Bytes(l.line.TransmitQueue().begin(), l.line.TransmitQueue().end()), expected);
  EXPECT_TRUE(l.line.SendSerial());
  EXPECT_EQ(l.port.Writes, (std::vector<Bytes>{expected}));
  l.line.SendSerial();
  EXPECT_EQ(l.port.Writes.size(), 1u) << "an empty queue is not written";
  l.port.RefuseWrites = true;
  l.line.ComposeCmd(YokeCommand::Report);
  EXPECT_FALSE(l.line.SendSerial());
  EXPECT_TRUE(l.line.TransmitQueue().empty()) << "forces of the past";
  for (int i = 0; i < 1000; ++i) l.line.ComposeCmd(YokeCommand::Report);
  EXPECT_EQ(l.line.TransmitQueue().size(), YokeLine::kQueueLimit / 13 * 13);
}

TEST(YokeLine, FindsTheStartAgainHoweverMuchOfAReplyIsLeft) {
  for (std::size_t left = 1; left < 25; ++left) {
    Line l;
    l.port.SetReceiveThreshold(25);
    l.port.Arrive(ByteView(Reply()).last(left));
    l.line.DropStalePiece();
    EXPECT_EQ(l.port.Waiting(), left) << "it may still be growing";
    l.line.DropStalePiece();
    l.port.Arrive(Reply());
    EXPECT_EQ(l.line.ReceivedMessage(), "Correct") << left;
  }
}

}  // namespace tvx::test::yokeframetest
