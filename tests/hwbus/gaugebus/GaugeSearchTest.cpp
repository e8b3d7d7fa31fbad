#include "hwbus/gaugebus/GaugeSearch.h"
#include "tests/hwbus/gaugebus/GaugeConsoleRig.h"

namespace tvx::gaugesearchtest {

struct GaugeSearchTest : HaltedBusTest {
  // What answers at an address, called when its command has left.
  using Answer = std::function<void()>;

  void OneTick() {
    const std::size_t before = Bus().Writes.size();
    serial.TickTransmit();
    if (Bus().Writes.size() > before) {
      const auto& frame = Bus().Writes.back();
      EXPECT_EQ(frame[2] >> 4, frame[1] == kOther ? 3 : kCommandReportState);
      if (frame[2] >> 4 != kCommandReportState) return search.Tick();
      asked.push_back(frame[1]);
      if (const auto answer = answers.find(frame[1]); answer != answers.end()) answer->second();
    }
    search.Tick();
  }
  void RunToEnd() {
    ASSERT_TRUE(search.Start());
    for (int ticks = 0; search.Running() && ticks < 3000; ++ticks) OneTick();
    ASSERT_FALSE(search.Running());
  }
  Answer Plain(int id, int type, int gaugeModel = 1) {
    return [=, this] {
      const auto reply = Reply(id, type, gaugeModel);
      search.OnReply(ReplyView(reply));
    };
  }

  int kOther = -1;  // a gauge that somebody else sends command 3
  GaugeSearch search{model, serial, boxes};
  std::map<int, Answer> answers;
  std::vector<int> asked;
};

TEST_F(GaugeSearchTest, AsksEveryAddressAndTakesNewGaugesIn) {
  model.Gauges[3] = {.GaugeType = 4, .GaugeSetting1 = 9, .GaugeFunction1 = 60};
  model.Gauges[17].GaugeType = 101;
  answers[3] = Plain(3, 4, 2);
  answers[12] = Plain(12, 1);
  answers[255] = Plain(255, 130);
  RunToEnd();
  ASSERT_EQ(asked.size(), 256u);
  for (int id = 0; id < 256; ++id) EXPECT_EQ(asked[static_cast<std::size_t>(id)], id);
  EXPECT_EQ(std::tuple(model.Gauges[12].GaugeSetting2, model.Gauges[255].GaugeType), std::tuple(20, 130));
  EXPECT_EQ(std::tuple(model.Gauges[3].GaugeSetting1, model.Gauges[3].GaugeFunction1), std::tuple(2, 60))
      << "the gauge itself knows its model";
  EXPECT_TRUE(model.ConfigChanged);
  EXPECT_EQ(model.GaugeState[255], GaugeConnection::Connected);
  EXPECT_EQ(model.GaugeState[17], GaugeConnection::NotConnected);
  EXPECT_EQ(search.Summary(), "Search done: 3 gauges found; configured, but silent: 017.");
  EXPECT_TRUE(search.Remarks().empty());

  model.ConfigChanged = false;
  RunToEnd();
  EXPECT_FALSE(model.ConfigChanged) << "the same gauges again";
}

TEST_F(GaugeSearchTest, WaitsWhereTheTransmitSlotIsTaken) {
  kOther = 77;
  serial.WriteGaugeCommand(kOther, 3, 1);
  ASSERT_TRUE(search.Start());
  while (search.Done() < 5) OneTick();
  EXPECT_EQ(Bus().Writes.front()[1], 77) << "it is not overwritten";
  EXPECT_EQ(asked[0], 0);
}

TEST_F(GaugeSearchTest, NamesWhatIsWrong) {
  model.Gauges[9].GaugeType = 4;
  answers[2] = [this] {
    Plain(2, 1)();
    Plain(2, 1, 7)();
  };
  answers[5] = [this] { Bus().Arrive({0, 5, 1, 1}); };  // too short to raise an event
  answers[8] = Plain(8, 77);
  answers[9] = Plain(9, 101);
  answers[20] = Plain(19, 1);  // 19 answers late, in 20's turn
  answers[3] = Plain(30, 1);   // 30 was asked before the search
  answers[30] = Plain(30, 1);
  RunToEnd();
  EXPECT_EQ(
      search.Remarks(),
      (Texts{"GaugeID 002: two gauges have this address. Unplug one of them and give the other a new one.",
             "GaugeID 005: unreadable answer. Two gauges may have this address, or the line is disturbed.",
             "GaugeID 008: instrument type 77 is not known.",
             "GaugeID 009: is a \"Digital/Analogue Altimeter \", but configured as \"Large gauge, single "
             "needle \"."}));
  EXPECT_EQ((std::tuple{model.Gauges[8].GaugeType, model.Gauges[9].GaugeType, model.GaugeState[19],
                        model.GaugeState[20]}),
            (std::tuple{0, 4, GaugeConnection::Connected, GaugeConnection::NotConnected}));
}

TEST_F(GaugeSearchTest, CancellingLeavesTheRestUnknown) {
  ASSERT_TRUE(search.Start());
  while (search.Done() < 10) OneTick();
  search.Cancel();
  const std::size_t before = asked.size();
  serial.TickTransmit();
  for (int i = 0; i < 10; ++i) OneTick();
  EXPECT_LE(asked.size(), before + 1);
  EXPECT_EQ(model.GaugeState[9], GaugeConnection::NotConnected);
  EXPECT_EQ(model.GaugeState[11], GaugeConnection::Unknown);
  EXPECT_EQ(search.Summary(), "Search ended after 10 addresses; 0 gauges found.");
  Plain(50, 1)();
  EXPECT_EQ(model.Gauges[50].GaugeType, 0) << "nothing is taken in when no search runs";
}

TEST_F(GaugeSearchTest, NeedsAnOpenBus) {
  ASSERT_TRUE(search.Start());
  Bus().Unplug();
  OneTick();
  EXPECT_FALSE(search.Running());
  EXPECT_TRUE(boxes.shown.back().starts_with("The search has ended. COM 5 unplugged")) << boxes.shown.back();
  EXPECT_FALSE(search.Start());

  Bus().OpenResult = SerialState::Opening;
  serial.WatchLines();
  ASSERT_TRUE(search.Start()) << "it may have been plugged in just now";
  OneTick();
  Bus().Answer(SerialState::Open);
  OneTick();
  EXPECT_TRUE(search.Running());
}

}  // namespace tvx::gaugesearchtest
