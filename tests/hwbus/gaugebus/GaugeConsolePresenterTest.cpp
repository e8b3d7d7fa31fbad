#include "hwbus/gaugebus/GaugeConsolePresenter.h"
#include "hwbus/gaugebus/LiveNeedle.h"
#include "tests/hwbus/gaugebus/GaugeConsoleRig.h"

namespace tvx::gaugeconsolepresentertest {

struct GaugeConsoleTest : HaltedBusTest {
  void Tick() {
    console.PollTimer_Tick();
    serial.TickTransmit();
  }
  void Answer(int id, int type) {
    const auto reply = Reply(id, type);
    console.OnReply(ReplyView(reply));
  }
  GaugeConsolePresenter console{model, serial, boxes};
};

TEST_F(GaugeConsoleTest, SendingRefusesWhatNoFrameCarries) {
  const char *noId = "No Gauge ID defined", *range = "Commands must be 0 <-> 15",
             *limits = "commandvalue out of limits";
  const std::array<const char*, 4> rows[] = {
      {"", "5", "0", noId},    {"256", "5", "0", noId},     {"x", "5", "0", noId},
      {"7", "16", "0", range}, {"7", "", "0", range},       {"7", "15.7", "0", "Command must be <16."},
      {"7", "5", "", limits},  {"7", "5", "65536", limits}, {"7", "15", "-65535", ""},
      {"0", "0", "0", ""}};
  for (const auto& [id, command, value, message] : rows) {
    boxes.shown.clear();
    Bus().Writes.clear();
    console.ManualGaugeID = id;
    console.CommandNumber = command;
    console.CommandValue = value;
    EXPECT_EQ(console.SendGaugeCommand(), *message == 0) << message;
    serial.TickTransmit();
    EXPECT_EQ(boxes.shown.empty() ? "" : boxes.shown.back(), message);
    EXPECT_EQ(Bus().Writes.size(), *message == 0 ? 1u : 0u);
  }
  EXPECT_EQ(Bus().Writes.back(), (Bytes{0, 0, 0x08, 1, 2, 0xFF}));
}

TEST_F(GaugeConsoleTest, PollingShowsEachReply) {
  console.cmdPollGauge();
  EXPECT_EQ(boxes.shown.back(), "No new GaugeID");
  EXPECT_FALSE(console.Polling());
  console.ManualGaugeID = "7";
  console.cmdPollGauge();
  EXPECT_EQ(console.View().Text7, "-- No reply --");
  Tick();
  EXPECT_EQ(Bus().Writes, (std::vector<Bytes>{{0, 7, 0x78, 1, 2, 0xFF}}));
  for (const char* spinner : {"---", " \\", " |", " /", "---"}) {
    Answer(7, 101);
    EXPECT_EQ(console.View().ProgressIndicator, spinner);
  }
  Tick();
  EXPECT_EQ(console.View().Text7, "0.7.101.1.20.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.0.255");
  EXPECT_EQ((Texts{console.View().boxVersion, console.View().boxName}),
            (Texts{"20", "Digital/Analogue Altimeter "}));
  Answer(7, 99);
  EXPECT_EQ(console.View().boxName, " Unknown ");
  Tick();
  Tick();
  EXPECT_EQ(console.View().Text7, "-- No reply --");
  EXPECT_EQ(console.View().BoxID, "");
  console.cmdStopPoll();
  Answer(7, 101);
  EXPECT_EQ(console.View().BoxID, "");
}

TEST_F(GaugeConsoleTest, StepsStayWithinTheAddresses) {
  for (const auto& [from, by, to] : {std::tuple{"7", 10, "17"}, {"250", 10, "255"}, {"3", -10, "0"}}) {
    console.ManualGaugeID = from;
    console.Step(by);
    EXPECT_EQ(console.ManualGaugeID, to);
  }
}

TEST_F(GaugeConsoleTest, ForcingAGaugeInAsksFirst) {
  model.Gauges[7] = {.GaugeType = 1, .GaugeFunction1 = 60, .GaugeSetting6 = 5};
  for (const auto& [id, type] : {std::pair{"", 101}, {"300", 101}, {"7", 0}}) {
    console.ManualGaugeID = id;
    console.ComboGaugeType = type;
    EXPECT_FALSE(console.cmdAddToConfig());
    EXPECT_EQ(boxes.shown.back(), "GaugeID and/or Gaugetype incorrect");
  }
  console.ManualGaugeID = "7";
  console.ComboGaugeType = 101;
  console.boxAddModel = "1";
  console.boxAddVersion = "22";
  boxes.answers = {kAnswerNo, kAnswerYes};
  int told = 0;
  const Registration changed = console.SetChanged([&told] { ++told; });
  EXPECT_FALSE(console.cmdAddToConfig());
  EXPECT_EQ(told, 0);
  EXPECT_EQ(model.Gauges[7].GaugeType, 1);
  EXPECT_TRUE(console.cmdAddToConfig());
  EXPECT_EQ(model.Gauges[7],
            (GaugeRecord{.GaugeType = 101, .GaugeSetting1 = 1, .GaugeSetting2 = 22, .GaugeSetting6 = 5}));
  EXPECT_TRUE(model.ConfigChanged);
  EXPECT_EQ(told, 1);
}

TEST_F(HaltedBusTest, TheLiveNeedleSendsItsLastPosition) {
  LiveNeedle needle(serial);
  for (int position = 0; position <= 500; ++position) {
    needle.Move(4, 5, position);
    if (position % 100 == 0) needle.Tick();
  }
  serial.TickTransmit();
  needle.Tick();
  serial.TickTransmit();
  needle.Tick();
  serial.TickTransmit();
  ASSERT_EQ(Bus().Writes.size(), 2u);
  EXPECT_EQ(Bus().Writes.back(), (Bytes{0, 4, 0x58, 0xF5, 0x03, 0xFF}));
}

}  // namespace tvx::gaugeconsolepresentertest
