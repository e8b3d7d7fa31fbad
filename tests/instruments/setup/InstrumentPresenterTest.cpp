#include "instruments/kinds/Registry.h"
#include "instruments/setup/CalibrationTargets.h"
#include "instruments/setup/InstrumentPresenter.h"
#include "tests/hwbus/gaugebus/GaugeConsoleRig.h"

namespace tvx::instrumentpresentertest {

struct InstrumentPresenterTest : HaltedBusTest {
  InstrumentPresenterTest() {
    model.Gauges[7] = {.GaugeType = 101, .GaugeFunction2 = 8, .GaugeSetting5 = 0x80, .GaugeSetting6 = 3};
    model.Plates.resize(300);
  }
  // Lets time pass, and the gauge answer, until the question has come to its end.
  void Wait() {
    for (int tick = 0; tick < 100 && control.Asking(); ++tick) {
      serial.TickTransmit();
      serial.TickReplyCountdown();
      if (!answers || serial.TransmitPending()) continue;
      const int sentTo = Bus().Writes.back()[1];
      const bool other = sentTo != answersAt && othersLeft-- > 0;
      reply = Reply(other ? otherID : sentTo, 101, 2);
      serial.NoteReply();
    }
    EXPECT_FALSE(control.Asking());
  }
  bool Read() {
    control.Read();
    Wait();
    return !control.Identity().empty();
  }
  // True where the gauge has answered there.
  bool GiveAddress(const char* text) {
    EXPECT_TRUE(control.WriteNewGaugeID(text));
    Wait();
    const auto now = static_cast<std::size_t>(control.GaugeID());
    return now == std::stoul(text) && model.GaugeState[now] == GaugeConnection::Connected;
  }
  ByteView LastReply() const { return reply; }

  bool answers = true;
  int answersAt = 7, otherID = 9, othersLeft = 1000;
  std::array<Byte, kReplySize> reply{};
  InstrumentPresenter control{model, serial, boxes, [this] { return LastReply(); }};
};

TEST_F(InstrumentPresenterTest, TakesWhatTheRecordCanHoldAndNoMore) {
  using P = InstrumentPresenter;
  using G = GaugeRecord;
  const struct {
    bool (*set)(P&, int);
    int lowest, highest;
    int (*kept)(const G&);
  } rows[] = {
      {[](P& p, int v) { return p.SetFunction(1, v); }, 0, 300,
       [](const G& g) { return int{g.GaugeFunction1}; }},
      {[](P& p, int v) { return p.SetFunction(2, v); }, 0, 300,
       [](const G& g) { return int{g.GaugeFunction2}; }},
      {[](P& p, int v) { return p.SetSequence(1, v); }, 0, 4,
       [](const G& g) { return int{g.GaugeInstance1}; }},
      {[](P& p, int v) { return p.SetSequence(2, v); }, 0, 4,
       [](const G& g) { return int{g.GaugeInstance2}; }},
      {[](P& p, int v) { return p.SetPlate(1, v); }, 0, 255, [](const G& g) { return int{g.GaugeSetting3}; }},
      {[](P& p, int v) { return p.SetPlate(2, v); }, 0, 255, [](const G& g) { return int{g.GaugeSetting4}; }},
      {[](P& p, int v) { return p.SetModel(v); }, 0, 255, [](const G& g) { return int{g.GaugeSetting1}; }},
      {[](P& p, int v) { return p.SetSetting6(v); }, 0, 300, [](const G& g) { return int{g.GaugeSetting6}; }},
  };
  control.Open(7);
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const auto& row = rows[i];
    model.ConfigChanged = false;
    EXPECT_FALSE(row.set(control, row.lowest - 1) || row.set(control, row.highest + 1)) << i;
    EXPECT_FALSE(model.ConfigChanged) << i;
    for (const int value : {row.highest, row.lowest}) {
      EXPECT_TRUE(row.set(control, value)) << i;
      EXPECT_EQ(row.kept(model.Gauges[7]), value) << i;
    }
    EXPECT_TRUE(model.ConfigChanged) << i;
  }
  EXPECT_TRUE(control.SetOption(3, 2));
  EXPECT_EQ(model.Gauges[7].GaugeSetting5, 0x82);
}

TEST_F(InstrumentPresenterTest, ReadsTheLiveInstrument) {
  control.Open(7);
  EXPECT_TRUE(Read());
  EXPECT_EQ(control.Identity(), "Digital/Analogue Altimeter, model 2, version 20");
  ASSERT_EQ(control.Readings().size(), 2u);
  EXPECT_EQ(control.Readings()[0].label, "Pressure setting");
  EXPECT_EQ(model.GaugeState[7], GaugeConnection::Connected);

  // A reply to something asked before: the gauge is asked again.
  const std::size_t asked = Bus().Writes.size();
  answersAt = -1;
  othersLeft = 1;
  EXPECT_TRUE(Read());
  EXPECT_EQ(Bus().Writes.size(), asked + 2);
  EXPECT_TRUE(boxes.shown.empty());
  answersAt = -1;  // another one speaks up, again and again
  othersLeft = 9;
  EXPECT_FALSE(Read());
  EXPECT_EQ(boxes.shown.back(), "Gauge 009 answered instead of 007.");
  answers = false;
  boxes.shown.clear();
  EXPECT_FALSE(Read());
  EXPECT_EQ(boxes.shown, Texts{"Gauge with ID: 7 doesn't respond."});
  EXPECT_EQ(model.GaugeState[7], GaugeConnection::NotConnected);
}

TEST_F(InstrumentPresenterTest, ANewAddressIsCheckedWrittenAndReadBack) {
  model.Gauges[12].GaugeType = 1;
  model.GaugeState[13] = GaugeConnection::Connected;
  control.Open(7);
  const std::pair<const char*, const char*> rows[] = {
      {"256", "A GaugeID is a whole number from 0 to 255."},
      {"7", "This is the gauge's GaugeID."},
      {"12", "GaugeID 012 is used by another gauge."},
      {"13", "GaugeID 013 is used by another gauge."},
      {"20", "Gauge is not connected; Search/Check connections\r\nNew GaugeID cannot be written to Gauge"}};
  for (const auto& [text, message] : rows) {
    EXPECT_FALSE(control.WriteNewGaugeID(text));
    EXPECT_EQ(boxes.shown.back(), message);
  }
  serial.TickTransmit();
  EXPECT_TRUE(Bus().Writes.empty());
  model.GaugeState[7] = GaugeConnection::Connected;
  answersAt = 20;
  EXPECT_TRUE(GiveAddress("20"));
  EXPECT_EQ(Bus().Writes.front(), (Bytes{0, 7, 0x2C, 20, 0xAA, 0xFF, 0x20}));
  // Of which gauge the settings are now, which address that is, and how it stands.
  const auto moved = [this](std::size_t from, std::size_t to) {
    return std::tuple(model.Gauges[from].GaugeType, model.Gauges[to].GaugeType, control.GaugeID(),
                      model.GaugeState[to]);
  };
  EXPECT_EQ(moved(7, 20), std::tuple(0, 101, 20, GaugeConnection::Connected));
  EXPECT_EQ(model.Gauges[20].GaugeSetting6, 3);

  // A gauge that does not answer at its new address: its settings stay, unless the user knows better.
  answers = false;
  boxes.answers = {kAnswerNo, kAnswerYes};
  EXPECT_FALSE(GiveAddress("21"));
  EXPECT_EQ(boxes.asked.size(), 1u);
  EXPECT_EQ(moved(20, 21), std::tuple(101, 0, 20, GaugeConnection::Unknown));
  model.GaugeState[20] = GaugeConnection::Connected;
  EXPECT_FALSE(GiveAddress("21"));
  EXPECT_EQ(moved(20, 21), std::tuple(0, 101, 21, GaugeConnection::Unknown));
}

// A dialog that is closed while its gauge is asked is never told.
TEST_F(InstrumentPresenterTest, AnAskingThatIsCancelledChangesNothing) {
  int told = 0;
  const Registration answered = control.SetAnswered([&] { ++told; });
  control.Open(7);
  EXPECT_TRUE(Read());
  EXPECT_EQ(told, 1);
  control.Read();
  control.Cancel();
  answers = false;
  for (int tick = 0; tick < 30; ++tick) serial.TickReplyCountdown();
  EXPECT_EQ(told, 1);
  EXPECT_TRUE(boxes.shown.empty());
  EXPECT_EQ(model.GaugeState[7], GaugeConnection::Connected);
}

TEST_F(InstrumentPresenterTest, RemovalAsksAndTrialsStayInTheirRange) {
  control.Open(7);
  const TrialField altitude{"Altitude", 4, -100, 5000, "ft"};
  EXPECT_FALSE(control.Try(altitude, 5001));
  EXPECT_TRUE(control.Try(altitude, -100));
  EXPECT_EQ(serial.TransmitBuffer()[2] >> 4, 4);
  serial.CloseComPorts();
  EXPECT_FALSE(control.Try(altitude, 0));
  EXPECT_EQ(boxes.shown.back(), "COM 5 closed");
  boxes.answers = {kAnswerNo, kAnswerYes};
  EXPECT_FALSE(control.Remove());
  EXPECT_EQ(model.Gauges[7].GaugeType, 101);
  EXPECT_TRUE(control.Remove());
  EXPECT_EQ(model.Gauges[7].GaugeType, 0);
}

// What a dialog is built from must fit the record and the frames.
TEST(Descriptions, FitRecordAndFrames) {
  ConfigModel model;
  FillNameTables(model);
  for (int code = 1; code < 256; ++code) {
    const Instrument* kind = InstrumentOf(code);
    if (kind == nullptr) continue;
    const InstrumentDescription d = kind->Describe(code);
    EXPECT_FALSE(d.purpose.empty()) << code;
    EXPECT_EQ(d.setting6.empty(), code != 10) << code;
    for (const FunctionField& field : {d.function1, d.function2})
      EXPECT_EQ(field.label.empty(), field.tip.empty()) << code;
    EXPECT_LE(d.plates.size(), 2u) << code;
    EXPECT_TRUE(d.plates.size() < 1 || !d.function1.label.empty()) << code;
    EXPECT_TRUE(d.plates.size() < 2 || code == 8 || !d.function2.label.empty()) << code;
    int used = kOptionUnlit;
    for (const OptionField& option : d.options) {
      EXPECT_FALSE(option.label.empty() || option.tip.empty()) << code;
      EXPECT_EQ(used & option.mask, 0) << code << ' ' << option.label;
      used |= option.mask;
      for (const OptionChoice& choice : option.choices) EXPECT_EQ(choice.value & ~option.mask, 0) << code;
    }
    for (const TrialField& trial : d.trials) {
      EXPECT_LT(trial.lowest, trial.highest) << code << ' ' << trial.label;
      EXPECT_TRUE(BuildGaugeFrame(1, trial.command, trial.lowest).has_value()) << code;
      EXPECT_TRUE(BuildGaugeFrame(1, trial.command, trial.highest).has_value()) << code;
      EXPECT_TRUE(trial.command != kCommandReportState && trial.command != kCommandLighting) << code;
    }
  }
}

TEST(Descriptions, CalibrationKnowsEveryNeedleWithAPlate) {
  ConfigModel model;
  FillNameTables(model);
  const int types[] = {1, 2, 3, 8, 101, 77};
  for (std::size_t i = 0; i < 6; ++i) model.Gauges[i + 1].GaugeType = static_cast<Byte>(types[i]);
  std::vector<std::array<int, 3>> found;
  for (const CalibrationTarget& t : CalibrationTargets(model))
    found.push_back({t.gaugeID, t.needle, t.command});
  EXPECT_EQ(found, (std::vector<std::array<int, 3>>{
                       {1, 1, 5}, {2, 1, 5}, {3, 1, 5}, {3, 2, 6}, {4, 1, 4}, {4, 2, 5}}));
  model.General.ComPortEC = 6;
  EXPECT_EQ(CalibrationTargets(model).size(), 14u);
  EXPECT_TRUE(CalibrationTargets(model).back().IsEngineCluster());
}

}  // namespace tvx::instrumentpresentertest
