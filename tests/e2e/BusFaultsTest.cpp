// The gauge bus in trouble, as the configuration's user meets it: two gauges at one address, damaged and late
// answers, a cable pulled out of a search; and a gauge's new address over the real line.
#include <QProgressBar>

#include "drawn/devices/NeedleDevice.h"
#include "tests/e2e/Flight.h"
#include "tests/e2e/Hands.h"

namespace tvx::e2e {
namespace {

using std::chrono::seconds;
using vc::DeviceFault;

struct BusFaults : testing::Test {
  BusFaults() {
    flight.TheProgram().Begin();
    EXPECT_TRUE(Eventually([this] { return Model().Gauges[10].GaugeType != 0; }));
    OnForm("frmMain").Press("CmdConfigure");
  }
  ConfigModel& Model() { return flight.TheProgram().Model(); }
  vc::GaugeBus& Bus() { return flight.TheCockpit().Gauges(); }
  void SetFault(int gaugeID, DeviceFault fault) { Bus().Find(gaugeID)->SetFault(fault); }
  // Searches the addresses below `end`, then cancels.
  void SearchUpTo(int end) {
    const OnForm form("FrmMainConfigure");
    form.Press("cmdStartTest");
    auto& progress = form.The<QProgressBar>("ProgressBar1");
    ASSERT_TRUE(Eventually([&] { return !progress.isVisible() || progress.value() >= end; }, seconds(60)));
    form.Press("cmdStartTest");
    ASSERT_FALSE(progress.isVisible());
  }
  // What the gauge list says of the connection; empty for a gauge that is not in it.
  static std::string State(int gaugeID) {
    const auto& list = OnForm("FrmMainConfigure").The<QTreeWidget>("Configlist");
    const auto lines = list.findItems(QString("%1").arg(gaugeID, 3, 10, QChar('0')), Qt::MatchExactly);
    return lines.isEmpty() ? std::string() : lines.front()->text(8).toStdString();
  }
  static std::string SearchWords() { return OnForm("FrmMainConfigure").Text("LabelSearch"); }
  OnForm Dialog(int gaugeID) {
    flight.TheProgram().Configuration().OpenGauge(gaugeID);
    return OnForm("frmInstrument");
  }

  Flight flight;
};

TEST_F(BusFaults, TheSearchNamesWhatIsWrongAndWhere) {
  const GaugeRecord before = Model().Gauges[10];
  const struct {
    int gaugeID;
    DeviceFault fault;
    const char* state;
  } rows[] = {{10, DeviceFault::Duplicate, "Connected"},  {11, DeviceFault::Garbled, "Not Connected"},
              {12, DeviceFault::Late, "Connected"},       {13, DeviceFault::Dead, "Not Connected"},
              {14, DeviceFault::Silent, "Not Connected"}, {15, DeviceFault::None, "Connected"}};
  for (const auto& row : rows) SetFault(row.gaugeID, row.fault);
  SearchUpTo(30);
  for (const auto& row : rows) EXPECT_EQ(State(row.gaugeID), row.state) << row.gaugeID;
  const std::string words = SearchWords();
  EXPECT_TRUE(Begins(words, "Search ended after "));
  EXPECT_TRUE(
      Holds(words,
            "\nGaugeID 010: two gauges have this address. Unplug one of them and give the other a new one."));
  EXPECT_TRUE(Holds(words, "\nGaugeID 011: unreadable answer."));
  EXPECT_EQ(std::count(words.begin(), words.end(), '\n'), 2) << words;
  EXPECT_EQ(State(37), "Unkown") << "the search did not come that far";
  EXPECT_EQ(Model().Gauges[10].GaugeSetting1, before.GaugeSetting1) << "the second one is another model";

  // One of the two is unplugged, the other gets its new address.
  SetFault(10, DeviceFault::None);
  const OnForm dialog = Dialog(10);
  dialog.Do({{"boxNewGaugeID", "2"}, {"cmdSetNewGaugeID"}, {"CmdClose"}});
  SearchUpTo(16);
  EXPECT_FALSE(Holds(SearchWords(), "two gauges"));
  EXPECT_EQ(State(2), "Connected");
  EXPECT_EQ(State(10), "");
}

TEST_F(BusFaults, ANewAddressIsWrittenAndTheGaugeFliesUnderIt) {
  constexpr int kOld = 21, kNew = 9;
  const GaugeRecord settings = Model().Gauges[kOld];
  const OnForm dialog = Dialog(kOld);
  dialog.Type("boxNewGaugeID", "22");
  EXPECT_EQ(dialog.Text("LabelNewGaugeID"), "GaugeID 022 is used by another gauge.");
  EXPECT_THROW(dialog.Press("cmdSetNewGaugeID"), std::runtime_error) << "it is not offered";
  dialog.Type("boxNewGaugeID", QString::number(kNew));
  EXPECT_EQ(dialog.Text("LabelNewGaugeID"), "free");
  dialog.Press("cmdSetNewGaugeID");
  EXPECT_EQ(flight.boxes.shown.back(),
            "Gauge is not connected; Search/Check connections\r\nNew GaugeID cannot be written to Gauge");
  dialog.Press("cmdRead");
  EXPECT_TRUE(Holds(dialog.Text("LabelIdentity"), "Small gauge; Single Needle + Display, model 1"));

  // A line that carries no command: nothing moves.
  Bus().SetFault(vc::LineFault::Deaf);
  flight.boxes.answers = {kAnswerNo};
  dialog.Press("cmdSetNewGaugeID");
  EXPECT_EQ(flight.boxes.asked.back(),
            "The gauge does not answer as GaugeID 009.\r\nMove its settings there all the same?");
  Bus().SetFault(vc::LineFault::None);
  ASSERT_NE(Bus().Find(kOld), nullptr);
  EXPECT_EQ(Model().Gauges[kOld].GaugeFunction1, settings.GaugeFunction1);

  dialog.Press("cmdRead");
  const std::size_t messages = flight.boxes.shown.size();
  dialog.Press("cmdSetNewGaugeID");
  EXPECT_EQ(flight.boxes.shown.size(), messages);
  EXPECT_EQ(Bus().Find(kOld), nullptr);
  ASSERT_NE(Bus().Find(kNew), nullptr);
  EXPECT_EQ(dialog.Text("LabelGauge"), "009  Small gauge; Single Needle + Display");
  EXPECT_EQ(Model().Gauges[kOld].GaugeType, 0);
  EXPECT_EQ(Model().Gauges[kNew].GaugeFunction1, settings.GaugeFunction1);
  EXPECT_EQ(Model().Gauges[kNew].GaugeSetting3, settings.GaugeSetting3);
  dialog.Press("CmdClose");
  EXPECT_EQ(State(kNew), "Connected");
  EXPECT_EQ(State(kOld), "");

  // Saved, and flown: the needle follows under its new address.
  OnForm("FrmMainConfigure").Press("cmdSaveConfig");
  OnForm("SaveConfig").Do({{"cmdSave"}, {"CmdClose"}});
  OnForm("FrmMainConfigure").Press("CmdClose");
  flight.Sim().RestartFlight(130);
  OnForm("frmMain").Press("butOK");
  ASSERT_TRUE(Eventually([] { return FormShown("frmStatus") != nullptr; }));
  OnForm("frmStatus").Press("cmdRun");
  auto& needle = flight.Instrument<vc::NeedleDevice>(kNew);
  EXPECT_TRUE(Eventually([&] { return needle.First().value_or(0) > 0; }, seconds(10)));
}

TEST_F(BusFaults, APulledCableEndsTheSearchInWords) {
  const OnForm form("FrmMainConfigure");
  form.Press("cmdStartTest");
  auto& progress = form.The<QProgressBar>("ProgressBar1");
  ASSERT_TRUE(Eventually([&] { return progress.value() > 5; }));
  flight.TheCockpit().GaugeLine().Unplug();
  ASSERT_TRUE(Eventually([&] { return !progress.isVisible(); }));
  EXPECT_TRUE(Begins(flight.boxes.shown.back(), "The search has ended. COM 5 "));
  EXPECT_EQ(State(37), "Unkown");
  // What a user does next: plugs it in and searches again.
  flight.TheCockpit().GaugeLine().Plug();
  form.Press("cmdStartTest");
  EXPECT_TRUE(Eventually([&] { return State(11) == "Connected"; })) << SearchWords();
}

// A run that has ended has left the bus in order.
TEST(SetUpHalted, TheConsoleShowsTheAnswerToAQuestionByHand) {
  Flight halted;
  halted.Start();
  OnForm("frmStatus").Press("CmdConfig");
  ASSERT_TRUE(Eventually([] { return FormShown("FrmMainConfigure") != nullptr; }));
  OnForm("FrmMainConfigure").Press("cmdTestGauges");
  const OnForm console("frmTestGauges");
  console.Do({{"ManualGaugeID", "20"}, {"CommandNumber", "7"}, {"CommandValue", "1"}, {"SendGaugeCommand"}});
  EXPECT_TRUE(Eventually([&] { return console.Text("Text7").starts_with("0.20."); }))
      << console.Text("Text7");
}

}  // namespace
}  // namespace tvx::e2e
