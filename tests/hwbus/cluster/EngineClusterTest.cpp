
#include "tests/hwbus/cluster/EngineClusterRig.h"

namespace tvx::engineclustertest {

TEST(EngineClusterFrame, EveryNeedleAtItsPlace) {
  const int positions[] = {2, 4, 6, 22, 8, 12, 14, 16, 16, 18, 20, 10, 24, 26, 28, 30};
  for (int needle = 0; needle < 16; ++needle) {
    ECFrame frame = EmptyECFrame();
    PutECNeedle(frame, needle, 0x1234);
    EXPECT_EQ(NotZero(frame), (Places{{1, 'F'}, {positions[needle], 0x12}, {positions[needle] + 1, 0x34}}));
  }
  ECFrame frame = EmptyECFrame();
  PutECNeedle(frame, 7, 0x1111);
  PutECNeedle(frame, 8, 0x2222);
  EXPECT_EQ(NotZero(frame), (Places{{1, 'F'}, {16, 0x22}, {17, 0x22}}));
  PutECNeedle(frame, 16, 0x3333);
  PutECNeedle(frame, -1, 0x3333);
  EXPECT_EQ(NotZero(frame).size(), 3u);
}

TEST(EngineClusterFrame, LightingBytes) {
  const std::tuple<ECLighting, int, int> cases[] = {{{false, true, 0, 0}, 0, 0},
                                                    {{true, true, 0, 1}, 1, 1},
                                                    {{false, false, 0, 3}, 2, 3},
                                                    {{true, false, 0xF0, 0x80}, 0xF3, 0x80}};
  for (const auto& [lighting, byte38, byte39] : cases) {
    ECFrame frame = EmptyECFrame();
    FinishECFrame(frame, lighting);
    EXPECT_EQ((std::tuple{frame[37], frame[38], frame[39]}), (std::tuple{byte38, byte39, 0xAA}));
    const auto single = SingleNeedleFrame(14, 1079, lighting);
    ASSERT_TRUE(single);
    Places expected{{1, 'F'}, {28, 0x04}, {29, 0x37}, {39, 0xAA}, {40, 0xAA}};
    if (byte38 != 0) expected[38] = byte38;
    EXPECT_EQ(NotZero(*single), expected);
  }
  EXPECT_FALSE(SingleNeedleFrame(15, 1, {}));
  EXPECT_FALSE(SingleNeedleFrame(-1, 1, {}));
}

struct EngineClusterTest : EngineClusterRig {
  // Each answer that is taken discards the output.
  std::size_t Answers() const { return port.CountOf("discard output"); }
  static Bytes Reply(char major = '2', char minor = '7') {
    Bytes reply(16, 0x20);
    reply[0] = 0xFF;
    reply[14] = static_cast<Byte>(major);
    reply[15] = static_cast<Byte>(minor);
    return reply;
  }
};

TEST_F(EngineClusterTest, EveryEnabledChannelInOneFrame) {
  Enable(5, 99);  // no such Plate
  Play(
      "enable 0; enable 3; start; set 0 50; set 3 1000; set 5 258; "
      "tick = F 2=1 3=244 12=1 13=2 22=3 23=232");
  EXPECT_EQ(cluster.boxValue(0).View(), "50.00");
  EXPECT_EQ(cluster.Position(0), 500);
  Play("set 0 -5; set 3 nan; set 5 1e30; tick = F 12=4 13=55; (limited to the needle's range)");
  cluster.cmdStop_Click();
  Play("tick =");
}

TEST_F(EngineClusterTest, TheDualVersionHasItsOwnNeedles) {
  model.EngineCluster[8].Value1 = 1;
  for (int k = 0; k < kECChannels; ++k) Enable(k, 99);
  Start();
  for (int k = 0; k < kECChannels; ++k) Set(k, static_cast<float>(k + 1));
  Play("tick = F 3=1 5=2 7=3 11=8 17=5 19=6 21=7 23=4");
}

TEST_F(EngineClusterTest, RecalibrationIsOneFrameAThenZeroes) {
  Play("enable 0; start; set 0 50");
  cluster.SetLighting(true, true);
  cluster.Recalibrate();
  Places request{{1, 'A'}, {38, 3}, {40, 0xAA}};
  for (int place = 2; place <= 37; ++place) request[place] = 0x10;
  EXPECT_EQ(Tick(), request);
  EXPECT_TRUE(cluster.Recalibrating());
  Play("tick = F 38=3; tick = F 2=1 3=244 38=3");
  for (int i = 0; i < 5; ++i) cluster.Timer1000ms_Tick();
  EXPECT_FALSE(cluster.Recalibrating());
}

TEST_F(EngineClusterTest, ARecalibrationThatTheLineDidNotTakeIsNotLost) {
  Start();
  cluster.Recalibrate();
  Play("refuse 1; tick =; refuse 0");
  EXPECT_EQ(Tick()[1], 'A');
  EXPECT_EQ(Tick()[1], 'F');
}

TEST_F(EngineClusterTest, OfTheOneShotByteOnlyTheBacklightStays) {
  model.EngineCluster[8].Value2 = 1;
  model.EngineCluster[8].Value3 = 0x40;
  Start();
  cluster.ResetCluster();
  Play("tick = F 38=64 39=5; tick = F 38=64 39=1");
}

TEST_F(EngineClusterTest, VersionOfTheReply) {
  Start();
  port.Arrive(Reply());
  EXPECT_EQ(Answers(), 1u);
  Tick();
  EXPECT_EQ(cluster.boxUnitReply(), "Version: 2.7");

  auto bad = Reply('3', '0');
  bad[0] = 0xFE;
  port.Arrive(bad);
  EXPECT_EQ(Answers(), 1u);
  for (const std::size_t length : {1u, 7u, 8u, 15u})
    EXPECT_EQ(ReadECVersion(ByteView(Reply()).first(length)).has_value(), length >= 8) << length;
}

// Time counts, not ticks: at 10 ms an adapter hands the second half over two ticks later.
TEST_F(EngineClusterTest, AnAnswerThatIsHalfInIsNotThrownAway_ARemnantIs) {
  Start();
  const auto reply = Reply();
  const auto tick = [this](std::int64_t after) {
    clock.Advance(after);
    Tick();
    return port.Waiting();
  };
  port.Arrive(ByteView(reply).first(5));
  tick(10);
  tick(10);
  EXPECT_EQ(tick(10), 5u);
  port.Arrive(ByteView(reply).subspan(5));
  EXPECT_EQ(Answers(), 1u);

  port.Arrive(ByteView(reply).first(5));
  EXPECT_EQ(tick(40), 5u);
  EXPECT_EQ(tick(24), 5u);
  EXPECT_EQ(tick(1), 0u) << "no more came of it";
  port.Arrive(ByteView(reply).first(5));
  port.Raise(SerialEvent::Framing);
  EXPECT_EQ(port.Waiting(), 0u);
}

TEST_F(EngineClusterTest, WithoutItsPortSaysSo) {
  port.OpenResult = SerialState::Opening;
  Play("start; tick =");
  EXPECT_TRUE(boxes.shown.empty()) << "not known yet";
  port.Answer(SerialState::NotFound);
  Play("tick =; tick =");
  EXPECT_EQ(boxes.shown, (Texts{"Comm Port for Engine Cluster not found"}));
  EXPECT_TRUE(process.enabled) << "it goes on when the adapter is plugged in";
}

}  // namespace tvx::engineclustertest
