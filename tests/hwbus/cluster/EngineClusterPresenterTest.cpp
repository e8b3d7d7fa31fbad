#include "hwbus/cluster/EngineClusterPresenter.h"
#include "tests/hwbus/cluster/EngineClusterRig.h"

namespace tvx::engineclusterpresentertest {

using Record = std::array<int, 3>;

struct EngineClusterEditorTest : EngineClusterRig {
  EngineClusterEditorTest() {
    model.Functions[61].ComboDT = static_cast<Byte>(DataType::XplaneCmnd);
    edits = editor.SetChanged([this] { ++told; });
  }
  Record Of(int setting) const {
    const EngineClusterRecord& r = model.EngineCluster[static_cast<std::size_t>(setting)];
    return {r.Value1, r.Value2, r.Value3};
  }
  void Set(int setting, const Record& r) {
    model.EngineCluster[static_cast<std::size_t>(setting)] = {
        static_cast<std::int16_t>(r[0]), static_cast<std::int16_t>(r[1]), static_cast<std::int16_t>(r[2])};
  }
  EngineClusterPresenter editor{model, cluster};
  int told = 0;
  Registration edits;
};

TEST_F(EngineClusterEditorTest, EveryEditOfAChannel) {
  using Edit = std::function<void(EngineClusterPresenter&)>;
  const auto function = [](int number) { return [number](auto& e) { e.SetFunction(2, number); }; };
  const auto plate = [](int number) { return [number](auto& e) { e.SetPlate(2, number); }; };
  const struct {
    Record before;
    Edit edit;
    Record after;
    bool changed;
  } cases[] = {
      {{0, 0, 0}, function(60), {1, 60, -1}, true},  // from nothing: shown, and Plate 0 was nobody's choice
      {{0, 0, 1}, function(60), {1, 60, 1}, true},   // somebody's choice
      {{0, 62, 0}, function(60), {0, 60, 0}, true},  // another Function: the rest stays
      {{1, 62, 0}, function(0), {0, 0, 0}, true},    // none: not shown
      {{1, 62, 0}, function(301), {1, 62, 0}, false}, {{1, 62, 0}, plate(-1), {1, 62, -1}, true},
      {{1, 62, 0}, plate(2), {1, 62, 0}, false},      {{1, 62, 0}, plate(-2), {1, 62, 0}, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    Set(2, c.before);
    model.ConfigChanged = false;
    told = 0;
    c.edit(editor);
    EXPECT_EQ(Of(2), c.after);
    EXPECT_EQ(model.ConfigChanged, c.changed);
    EXPECT_EQ(told, c.changed ? 1 : 0);
  }
}

TEST_F(EngineClusterEditorTest, SaysWhatAChannelLacks) {
  const struct {
    Record record;
    std::string_view remark;
    int plate;  // as chosen in the list
  } cases[] = {
      {{0, 0, 0}, "", -1},  // an untouched record chooses no Plate
      {{1, 0, 0}, "No Function", -1},
      {{1, 60, 0}, "", 0},
      {{1, 60, 99}, "No such Plate", 99},
      {{1, 61, 0}, "A command has no value", 0},
      {{1, 3000, 0}, "Function not defined", 0},
      {{1, -5, 0}, "Function not defined", 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    Set(7, c.record);
    EXPECT_EQ(editor.Remark(7), c.remark);
    EXPECT_EQ(editor.PlateOf(7), c.plate);
    EXPECT_EQ(editor.PlateItemsOf(7).back().second, c.plate == 99 ? "099  (no such Plate)" : "001  Second");
  }
}

TEST_F(EngineClusterEditorTest, OptionsReachTheFrameAtOnceAndKeepEachOther) {
  Start();
  editor.SetDual(true);
  editor.SetBacklight(true);
  EXPECT_TRUE(editor.SetExtraBits(" 64 "));
  EXPECT_EQ(Of(8), (Record{1, 1, 64}));
  EXPECT_EQ(Tick(), (Places{{1, 'F'}, {38, 64}, {39, 1}, {40, 0xAA}}));
  editor.SetDual(false);
  editor.SetBacklight(false);
  EXPECT_EQ(Of(8), (Record{0, 0, 64}));
  EXPECT_EQ(Tick(), (Places{{1, 'F'}, {38, 64}, {40, 0xAA}}));
  for (const char* text : {"", "-1", "256", "64x", "1.5", "99999999999999999999"})
    EXPECT_FALSE(editor.SetExtraBits(text)) << text;
  EXPECT_EQ(editor.ExtraBits(), 64);
  EXPECT_NE(EngineClusterPresenter::ExtraBitsRemark("253"), "") << "the instrument lights' own bit";
}

TEST_F(EngineClusterEditorTest, TriesANeedleWhileHalted) {
  using Spot = EngineClusterPresenter::Spot;
  const struct {
    bool dual;
    int channel, plate;
    Spot spot;
    Places frame;
    std::string_view reading;
  } cases[] = {
      {false, 0, 0, Spot::Lowest, {}, "00.00 at 0"},
      {false, 7, 0, Spot::Highest, {{16, 3}, {17, 0xE8}}, "100.00 at 1000"},
      {true, 4, -1, Spot::Middle, {{16, 2}, {17, 0x1C}}, "539.50 at 540"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    Set(8, {c.dual ? 1 : 0, 0, 0});
    Set(c.channel, {0, 60, c.plate});
    port.Writes.clear();
    editor.Try(c.channel, c.spot);
    Places frame = c.frame;
    frame.insert({{1, 'F'}, {39, 0xAA}, {40, 0xAA}});
    ASSERT_EQ(port.Writes.size(), 1u);
    EXPECT_EQ(NotZero(port.Writes[0]), frame);
    EXPECT_EQ(editor.Reading(c.channel), c.reading);
    EXPECT_EQ(editor.Reading(1), "") << "one needle is tried at a time";
  }
  Start();
  port.Writes.clear();
  editor.Try(0, Spot::Highest);
  editor.MoveNeedle(0, 500);
  EXPECT_TRUE(port.Writes.empty()) << "the cycle moves the needles";
  EXPECT_EQ(editor.Reading(7), "") << "nothing is known yet of a channel that is not shown";
}

TEST_F(EngineClusterEditorTest, AFunctionGivenWhileRunningIsFollowed) {
  Start();
  const int before = sim.PortCount();
  editor.SetFunction(0, 60);
  editor.SetPlate(0, 0);
  ASSERT_EQ(sim.PortCount(), before + 1);
  editor.SetEnabled(0, false);
  editor.SetEnabled(0, true);
  EXPECT_EQ(sim.PortCount(), before + 1) << "its port is still there";
  cluster.cmdStop_Click();
  editor.SetFunction(0, 63);
  EXPECT_EQ(sim.PortCount(), before + 1) << "halted: nothing is asked of the simulator";
  cluster.cmdRun_Click();
  EXPECT_EQ(sim.PortCount(), before + 2);
  EngineClusterRig::Set(3, 100);
  EXPECT_EQ(Tick(), (Places{{1, 'F'}, {2, 3}, {3, 0xE8}, {40, 0xAA}}));

  sim.CloseAllPorts();
  cluster.ForgetPorts();
  editor.SetFunction(0, 60);
  EXPECT_EQ(sim.PortCount(), 0) << "the ports are opened by the next start, not now";
}

}  // namespace tvx::engineclusterpresentertest
