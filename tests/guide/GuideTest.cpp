// What the set-up guide asks and gives, without its form.
#include "guide/FixedInstruments.h"
#include "guide/HandWatch.h"
#include "guide/NeedleSteps.h"
#include "guide/TestFlight.h"
#include "tests/Test.h"
#include "tests/guide/FakeGuideHardware.h"

namespace tvx::guidetest {

std::array<Byte, kReplySize> ReplyOf(int gaugeID, int type, int word7) {
  std::array<Byte, kReplySize> reply{};
  reply[1] = static_cast<Byte>(gaugeID);
  reply[2] = static_cast<Byte>(type);
  reply[6] = static_cast<Byte>(word7 >> 8);
  reply[7] = static_cast<Byte>(word7);
  reply.back() = 0xFF;
  return reply;
}

TEST(Guide, GivesFixedInstrumentsTheirFunctionsAndLeavesOthers) {
  const auto gauge = [](Byte type, std::int16_t function1 = 0, Byte sequence1 = 0,
                        std::int16_t function2 = 0) {
    return GaugeRecord{.GaugeType = type,
                       .GaugeFunction1 = function1,
                       .GaugeInstance1 = sequence1,
                       .GaugeFunction2 = function2,
                       .GaugeInstance2 = Byte{function2 != 0}};
  };
  const GaugeRecord cases[][2] = {
      // found, and given
      {gauge(101), gauge(101, 2, 1, 8)},
      {gauge(101, 60), gauge(101, 60)},
      {gauge(107), gauge(107, 66, 2)},
      {gauge(124), gauge(124, 1, 1, 22)},
      {{.GaugeType = 114}, {.GaugeType = 114, .GaugeSetting5 = 1 | 4}},
      {gauge(110), gauge(110)},  // may be any radio
      {gauge(4), gauge(4)},
  };
  for (const auto& [found, given] : cases) {
    ConfigModel model;
    model.Gauges[9] = found;
    const bool changes = !(found == given);
    EXPECT_EQ(FillFixedInstruments(model), changes ? 1 : 0);
    EXPECT_EQ(model.Gauges[9], given) << static_cast<int>(found.GaugeType);
    EXPECT_EQ(model.ConfigChanged, changes);
  }
  for (std::size_t role = 0; role < kRadioRoles.size(); ++role) {
    ConfigModel model;
    model.Gauges[9].GaugeType = 110;
    EXPECT_EQ(RadioRoleOf(model, 9), "");
    ASSERT_TRUE(GiveRadioRole(model, 9, role));
    EXPECT_EQ(RadioRoleOf(model, 9), kRadioRoles[role].name);
  }
}

// By how much the needle is moved at each of the three points that are asked about; the second and the third
// begin where the one before has ended. Marks between them go along.
TEST(Guide, PutsANeedleRightOnAPlateOfItsOwn) {
  // Then: by how much these marks have moved.
  const std::tuple<std::array<int, 3>, int, int, int, int> cases[] = {
      {{0, 0, 0}, 0, 0, 0, 0}, {{6, 0, 0}, 6, 6, 6, 6}, {{0, 12, -12}, 0, 4, 12, 0}};
  for (const auto& [by, first, second, middle, last] : cases) {
    ConfigModel model;
    FakeGuideHardware hardware;
    model.Gauges[10].GaugeType = 4;
    NeedleSteps steps(model, hardware);
    steps.Refresh();
    steps.SelectNext();
    const auto face = std::ranges::find_if(steps.Faces(), [](const ReadyFace& f) {
      return f.marks.size() / 2 == 3;  // so that the second mark has a third of the way to the middle one
    });
    ASSERT_NE(face, steps.Faces().end());
    const std::vector<FaceMark> marks = face->marks;
    ASSERT_EQ(steps.TakeFace(static_cast<std::size_t>(face - steps.Faces().begin())), "");
    const std::size_t given = model.Gauges[10].GaugeSetting3, plates = model.Plates.size();
    const PlateRecord before = model.Plates[given];
    for (const int way : by) {
      EXPECT_TRUE(steps.Tuning());
      steps.MoveTo(steps.Position() + way);
      steps.Yes();
    }
    EXPECT_FALSE(steps.Tuning());
    EXPECT_EQ(model.Plates[given], before) << "the face's own Plate stays";
    EXPECT_EQ(model.Plates.size(), plates + (middle == 0 ? 0 : 1));
    const auto now = MarksOf(*model.PlateOf(model.Gauges[10].GaugeSetting3));
    EXPECT_EQ(now.front().position, marks.front().position + first);
    EXPECT_EQ(now[1].position, marks[1].position + second);
    EXPECT_EQ(now[3].position, marks[3].position + middle);
    EXPECT_EQ(now.back().position, marks.back().position + last);
  }
}

// The face was undone while its points are asked about.
TEST(Guide, AsksForTheFaceAgainWhereItWasUndone) {
  ConfigModel model;
  FakeGuideHardware hardware;
  model.Gauges[10].GaugeType = 4;
  NeedleSteps steps(model, hardware);
  steps.Refresh();
  steps.SelectNext();
  const ConfigModel before = model;
  ASSERT_EQ(steps.TakeFace(0), "");
  steps.Refresh();
  EXPECT_TRUE(steps.Tuning());
  model = before;
  steps.Refresh();
  EXPECT_EQ(steps.Question(), "Which face moved?");
  steps.MoveTo(500);
  steps.Yes();
  EXPECT_EQ(model.Plates, before.Plates);
  EXPECT_EQ(model.Gauges, before.Gauges);
}

// Every needle from end to end of its Plate, and back; who does not answer is named.
TEST(Guide, TestFlightMovesAllAndNamesTheSilent) {
  ConfigModel model;
  FakeGuideHardware hardware;
  model.Plates.resize(2);
  model.Plates[1].Position[2] = 100;
  model.Plates[1].Position[3] = 700;
  model.Gauges[10] = {.GaugeType = 4, .GaugeSetting3 = 1, .GaugeFunction1 = 1};
  model.Gauges[12].GaugeType = 103;
  TestFlight flight(model, hardware);
  flight.Start();
  EXPECT_EQ(flight.Words().substr(0, 3), "010");
  while (flight.Running()) flight.Tick();
  std::map<std::pair<int, int>, std::vector<std::int32_t>> moves;
  for (const auto& [gauge, command, value] : hardware.sent) moves[{gauge, command}].push_back(value);
  const auto& needle = moves[{10, 5}];
  ASSERT_FALSE(needle.empty());
  EXPECT_EQ(needle.front(), 100);
  EXPECT_EQ(needle.back(), 100);
  EXPECT_EQ(std::ranges::max(needle), 700);
  EXPECT_EQ(std::ranges::min(moves[{12, 4}]), -900);
  EXPECT_EQ(std::ranges::max(moves[{12, 5}]), 1800);
  flight.OnReply(ReplyOf(12, 103, 0));
  EXPECT_EQ(flight.Words(), "1 of 2 instruments answered. Silent: 010.");
}

// A report that differs from the one before tells that a hand was there; a clock changes by itself.
TEST(Guide, NamesWhatAHandHasMoved) {
  ConfigModel model;
  FakeGuideHardware hardware;
  model.Gauges[12].GaugeType = 104;
  model.Gauges[32].GaugeType = 110;
  HandWatch hand(model, hardware);
  hand.Start();
  for (const int second : {1, 2}) hand.OnReply(ReplyOf(12, 104, second));
  hand.OnReply(ReplyOf(32, 110, 18500));
  EXPECT_EQ(hand.Moved(), -1);
  hand.OnReply(ReplyOf(32, 110, 18525));
  EXPECT_EQ(hand.Moved(), 32);
  EXPECT_TRUE(hand.Words().ends_with("It stands at 118.52 MHz: a COM radio.") ||
              hand.Words().ends_with("It stands at 118.53 MHz: a COM radio."))
      << hand.Words();
  for (int i = 0; i < 8; ++i) hand.Tick();
  EXPECT_TRUE(std::ranges::all_of(hardware.sent, [](const auto& sent) { return sent[0] == 32; }));
}

}  // namespace tvx::guidetest
