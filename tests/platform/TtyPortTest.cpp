// A serial port over a scripted tty: whatever opening, writing and the device itself do, the port says it and
// goes on.
#include "platform/TtyPort.h"
#include "tests/Test.h"
#include "tests/fakes/FaultTty.h"

namespace tvx {
namespace {

const TtyAnswer kOpened{SerialState::Open, false};

struct TtyPortTest : testing::Test {
  FaultTty::Script line;
  TtyPort port{std::make_unique<FaultTty>(line)};
  int told = 0;
  Registration watched;
  TtyPortTest() {
    watched = port.SetWatcher([this] { ++told; });
  }
  void Opened() {
    line.openings.push_back(kOpened);
    port.Open(5);
  }
};

TEST_F(TtyPortTest, ADeviceThatHangsLeavesThePortOpeningAndEverythingElseAtHand) {
  port.Open(5, SerialReset::Yes);
  EXPECT_EQ(port.State(), SerialState::Opening);
  EXPECT_EQ(port.Device(), "/dev/fault0");
  EXPECT_FALSE(port.Write(Bytes{1}));
  port.DiscardInput();
  port.AskCarrier();
  EXPECT_EQ(line.log, (Texts{"close", "open 5 twice"}));
  EXPECT_EQ(told, 0);
  line.Answer(kOpened);
  EXPECT_TRUE(port.IsOpen());
  EXPECT_EQ(port.CarrierDetect(), false);
  EXPECT_EQ(told, 1);

  port.Open(5);
  port.Close();
  line.Answer(kOpened);  // too late
  EXPECT_EQ(port.State(), SerialState::Closed);
  EXPECT_EQ(told, 1);
}

TEST_F(TtyPortTest, AnOpeningThatFailsSaysWhyAndAnotherDeviceMayComeBack) {
  for (const SerialState why :
       {SerialState::NotFound, SerialState::NoPermission, SerialState::Busy, SerialState::Failed}) {
    line.openings.push_back({why, true});
    port.Open(5);
    EXPECT_EQ(port.State(), why);
    EXPECT_EQ(port.CarrierDetect(), std::nullopt);
  }
  EXPECT_EQ(told, 4);
  line.name = {"/dev/fault7", "plugdev", false};
  Opened();
  EXPECT_TRUE(port.IsOpen());
  EXPECT_EQ((Texts{port.Device(), port.Group()}), (Texts{"/dev/fault7", "plugdev"}));
  EXPECT_FALSE(port.Assigned());
}

TEST_F(TtyPortTest, WhoeverWatchesMayOpenAnewAtOnce) {
  watched = port.SetWatcher([this] {
    if (port.State() == SerialState::Unplugged) port.Open(6);
  });
  for (const bool byEvent : {true, false}) {
    line.gone = false;
    port.Open(5);
    line.Answer(kOpened);
    line.log.clear();
    if (byEvent) {
      line.Gone();
    } else {
      line.gone = true;
      EXPECT_FALSE(port.Write(Bytes{1}));
    }
    EXPECT_EQ(port.State(), SerialState::Opening);
    EXPECT_EQ(line.log, (Texts{"close", "close", "open 6"}));
  }
}

TEST_F(TtyPortTest, AFrameThatIsHalfTakenFollowsWholeAndNoOtherGetsBetween) {
  Opened();
  line.room = {0, 2, 1};
  EXPECT_FALSE(port.Write(Bytes{1, 2, 3, 4})) << "a full line takes no part of it";
  EXPECT_TRUE(port.Write(Bytes{1, 2, 3, 4}));
  EXPECT_TRUE(line.watchingWrite);
  EXPECT_FALSE(port.Write(Bytes{9}));
  line.Writable();
  EXPECT_FALSE(port.Write(Bytes{9}));
  line.Writable();
  EXPECT_FALSE(line.watchingWrite);
  EXPECT_EQ(line.output, (Bytes{1, 2, 3, 4}));
  EXPECT_TRUE(port.Write(Bytes{9}));

  line.room = {1};
  EXPECT_TRUE(port.Write(Bytes{5, 6}));
  line.gone = true;
  line.Writable();
  EXPECT_EQ(port.State(), SerialState::Unplugged);
}

TEST_F(TtyPortTest, CarrierIsToldWhenItChanges) {
  Opened();
  told = 0;
  line.Carrier(false);
  EXPECT_EQ(told, 0);
  line.Carrier(true);
  EXPECT_EQ(told, 1);
  EXPECT_EQ(port.CarrierDetect(), true);
  port.Close();
  EXPECT_EQ(port.CarrierDetect(), std::nullopt);
}

TEST_F(TtyPortTest, BreaksAndFaultyBytesStandWhereTheyCame) {
  std::vector<int> events;
  const Registration handler = port.SetHandler([&](SerialEvent event) {
    events.push_back(static_cast<int>(event));
    Byte room[8];
    if (event == SerialEvent::Received) port.Read(room);
  });
  Opened();
  line.counts = {1, 0};
  line.Arrive(Bytes{7, 0xFF, 0, 0});
  line.counts = {1, 1};
  line.Arrive(Bytes{0xFF, 0});
  line.Arrive(Bytes{0, 8});
  line.Arrive(Bytes{0xFF, 0, 5});
  EXPECT_EQ(events, (std::vector<int>{2, 1001, 1004, 2, 1004}));
  line.input = {1, 2, 3};
  port.DiscardInput();  // what the driver still holds, too
  EXPECT_TRUE(line.input.empty());
}

TEST_F(TtyPortTest, ReceivedComesAtTheThresholdAndAgainWhileEnoughWaits) {
  std::vector<std::size_t> waiting;
  bool reads = true;
  const Registration handler = port.SetHandler([&](SerialEvent event) {
    ASSERT_EQ(event, SerialEvent::Received);
    waiting.push_back(port.Waiting());
    Byte room[25];
    if (reads) port.Read(room);
  });
  port.SetReceiveThreshold(25);
  Opened();
  line.Arrive(Bytes(24, 1));
  EXPECT_TRUE(waiting.empty());
  line.Arrive(Bytes(54, 2));
  EXPECT_EQ(waiting, (std::vector<std::size_t>{78, 53, 28}));
  reads = false;  // it is called once for what has come, not for ever
  line.Arrive(Bytes(40, 3));
  EXPECT_EQ(waiting.size(), 4u);
  EXPECT_EQ(port.Waiting(), 43u);
}

TEST_F(TtyPortTest, AHandlerMayCloseAndOpenThePortAndWaitForMore) {
  int calls = 0;
  std::size_t got = 0;
  Registration handler;
  handler = port.SetHandler([&](SerialEvent) {
    if (++calls == 1) return port.Close();
    if (calls == 2) return port.Open(3);
    Byte room[5];
    got += port.Read(room);
    if (calls > 3) return;
    line.Arrive(Bytes(5, 9));  // delivered inside
    EXPECT_EQ(got, 10u);
    handler.End();
  });
  port.SetReceiveThreshold(5);
  Opened();
  line.Arrive(Bytes(10, 7));
  EXPECT_EQ(std::pair(calls, port.State()), std::pair(1, SerialState::Closed));
  Opened();
  line.openings.push_back(kOpened);
  line.Arrive(Bytes(5, 8));
  EXPECT_EQ(std::pair(calls, port.State()), std::pair(2, SerialState::Open));
  EXPECT_EQ(port.Waiting(), 0u);
  line.Arrive(Bytes(5, 8));
  EXPECT_EQ(std::tuple(calls, got), std::tuple(4, 10u));
}

TEST_F(TtyPortTest, AFloodThatNobodyReadsIsBoundedAndTheNewestBytesStay) {
  Opened();
  line.Arrive(Bytes(TtyPort::kInputRoom + 5000, 7));
  line.Arrive(Bytes{1, 2, 3, 4});
  while (!line.input.empty()) line.Arrive({});  // one event takes only so much
  ASSERT_EQ(port.Waiting(), TtyPort::kInputRoom);
  Bytes all(TtyPort::kInputRoom);
  port.Read(all);
  EXPECT_EQ(Bytes(all.end() - 5, all.end()), (Bytes{7, 1, 2, 3, 4}));
}

}  // namespace
}  // namespace tvx
