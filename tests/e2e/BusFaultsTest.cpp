// The gauge bus in trouble, as the configuration's user meets it: two gauges at one address, damaged and late
// answers, a cable pulled out of a search; and a gauge's new address over the real line.
#include <QProgressBar>
#include <QTreeWidget>
#include <algorithm>

#include "drawn/devices/NeedleDevice.h"
#include "tests/e2e/Flight.h"
#include "tests/e2e/Hands.h"
#include "virtualcockpit/bus/Drawn.h"

namespace tvx::e2e {
namespace {

using std::chrono::seconds;
using vc::DeviceFault;

class BusFaults : public testing::Test {
 protected:
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
  SetFault(10, DeviceFault::Duplicate);
  SetFault(11, DeviceFault::Garbled);
  SetFault(12, DeviceFault::Late);
  SetFault(13, DeviceFault::Dead);
  SetFault(14, DeviceFault::Silent);
  SearchUpTo(30);
  const std::string words = SearchWords();
  EXPECT_EQ(words.find("Search ended after "), 0u) << words;
  EXPECT_NE(
      words.find(
          "\nGaugeID 010: two gauges have this address. Unplug one of them and give the other a new one."),
      std::string::npos)
      << words;
  EXPECT_NE(words.find("\nGaugeID 011: unreadable answer."), std::string::npos) << words;
  EXPECT_EQ(std::count(words.begin(), words.end(), '\n'), 2) << words;
  const char* const states[] = {"Connected",     "Not Connected", "Connected",
                                "Not Connected", "Not Connected", "Connected"};
  for (int id = 10; id < 16; ++id) EXPECT_EQ(State(id), states[id - 10]) << id;
  EXPECT_EQ(State(37), "Unkown") << "the search did not come that far";
  EXPECT_EQ(Model().Gauges[10].GaugeSetting1, before.GaugeSetting1) << "the second one is another model";

  // One of the two is unplugged, the other gets its new address.
  SetFault(10, DeviceFault::None);
  const OnForm dialog = Dialog(10);
  dialog.Type("boxNewGaugeID", "2");
  dialog.PressAndWait("cmdSetNewGaugeID");
  dialog.Press("CmdClose");
  SearchUpTo(16);
  EXPECT_EQ(SearchWords().find("two gauges"), std::string::npos) << SearchWords();
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
  dialog.PressAndWait("cmdSetNewGaugeID");
  EXPECT_EQ(flight.boxes.shown.back(),
            "Gauge is not connected; Search/Check connections\r\nNew GaugeID cannot be written to Gauge");
  dialog.PressAndWait("cmdRead");
  EXPECT_NE(dialog.Text("LabelIdentity").find("Small gauge; Single Needle + Display, model 1"),
            std::string::npos);

  // A line that carries no command: nothing moves.
  Bus().SetFault(vc::LineFault::Deaf);
  flight.boxes.answers = {kAnswerNo};
  dialog.PressAndWait("cmdSetNewGaugeID");
  EXPECT_EQ(flight.boxes.asked.back(),
            "The gauge does not answer as GaugeID 009.\r\nMove its settings there all the same?");
  Bus().SetFault(vc::LineFault::None);
  ASSERT_NE(Bus().Find(kOld), nullptr);
  EXPECT_EQ(Model().Gauges[kOld].GaugeFunction1, settings.GaugeFunction1);

  dialog.PressAndWait("cmdRead");
  const std::size_t messages = flight.boxes.shown.size();
  dialog.PressAndWait("cmdSetNewGaugeID");
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
  OnForm("SaveConfig").Press("cmdSave");
  OnForm("SaveConfig").Press("CmdClose");
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
  EXPECT_EQ(flight.boxes.shown.back().find("The search has ended. COM 5 "), 0u) << flight.boxes.shown.back();
  EXPECT_EQ(State(37), "Unkown");
  flight.TheCockpit().GaugeLine().Plug();
  // What a user does next: plugs it in and searches again.
  form.Press("cmdStartTest");
  EXPECT_TRUE(Eventually([&] { return State(11) == "Connected"; })) << SearchWords();
}

}  // namespace
}  // namespace tvx::e2e
