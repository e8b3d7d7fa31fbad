// From nothing to a cockpit that flies, through the set-up guide: every click and every key is a real event,
// and is counted.
#include <QListWidget>
#include <QProgressBar>
#include <QScrollBar>
#include <QTest>

#include "config/plates/PlateLookup.h"
#include "drawn/devices/RadioDevice.h"
#include "guide/forms/GuideForm.h"
#include "instruments/setup/CalibrationTargets.h"
#include "instruments/setup/GaugeWork.h"
#include "platform/qt/QtMulticastListener.h"
#include "tests/e2e/NewInstallation.h"

namespace tvx::e2e {
namespace {

// The hands of a user who is counted: a click, a key, a turn of the wheel is one action each.
class CountedHands {
 public:
  int actions = 0;

  void Click(const char* form, const char* button) { Mouse(OnForm(form).The<QAbstractButton>(button), {}); }
  // Waits until the line is there.
  void ClickLine(const char* form, const char* list, const QString& text) {
    auto& lines = OnForm(form).The<QListWidget>(list);
    const auto found = lines.findItems(text, Qt::MatchStartsWith);
    if (found.size() != 1) throw std::runtime_error("no one line " + text.toStdString());
    while (!lines.viewport()->rect().contains(lines.visualItemRect(found[0]).center())) {
      lines.verticalScrollBar()->triggerAction(lines.visualItemRect(found[0]).top() < 0
                                                   ? QAbstractSlider::SliderPageStepSub
                                                   : QAbstractSlider::SliderPageStepAdd);
      ++actions;
    }
    Mouse(*lines.viewport(), lines.visualItemRect(found[0]).center());
  }

 private:
  void Mouse(QWidget& widget, const QPoint& place) {
    ++actions;
    QTest::mouseClick(&widget, Qt::LeftButton, {}, place);
    QCoreApplication::processEvents();
  }
};

struct GuideRig : testing::Test {
  GuideRig() {
    box_.cockpit->Simulation().SetBeaconTarget({vc::kThisComputer, beaconPort_});
    program_ = std::make_unique<Program>(&boxes_, &keys_, &box_.adapters, nullptr, &beacons_);
    program_->Model().General.LocalPort = std::to_string(FreePort());  // others test on this computer
    program_->Begin();
    EXPECT_TRUE(Eventually([this] { return !boxes_.shown.empty(); })) << "there is no configuration";
    boxes_.shown.clear();
  }
  static vc::Traits WithBeacon() {
    vc::Traits traits = vc::Traits::Default();
    traits.simulator.beacon = true;
    return traits;
  }

  ConfigModel& Model() { return program_->Model(); }
  void FindEverything() {
    hands_.Click("frmMain", "CmdConfigure");
    hands_.Click("FrmMainConfigure", "cmdGuide");
    auto& progress = OnForm("frmGuide").The<QProgressBar>("ProgressFind");
    ASSERT_TRUE(Eventually([&] { return progress.value() == 100; }, std::chrono::seconds(120)))
        << OnForm("frmGuide").Text("LabelFound");
  }
  void GoTo(const char* step) { hands_.ClickLine("frmGuide", "ListSteps", step); }
  // What the user sees move.
  QString FaceOnTheDesk(const CalibrationTarget& needle) {
    return ToText(box_.hardware.PlateOf(NeedlePlate(box_.hardware, needle))->Name);
  }
  // The needle that the guide asks about.
  CalibrationTarget Asked() {
    auto& list = OnForm("frmGuide").The<QListWidget>("ListNeedles");
    return list.currentRow() < 0 ? CalibrationTarget{}
                                 : CalibrationTargets(Model())[static_cast<std::size_t>(list.currentRow())];
  }
  void SaveAndFly() {
    for (const char* button : {"cmdSaveStart", "CmdClose"}) hands_.Click("frmGuide", button);
    hands_.Click("FrmMainConfigure", "CmdClose");
    EXPECT_TRUE(boxes_.asked.empty() && boxes_.shown.empty());
    ASSERT_TRUE(Eventually([] { return FormShown("FrmMainConfigure") == nullptr; }));
    hands_.Click("frmMain", "butOK");
    hands_.Click("frmStatus", "cmdRun");
    ASSERT_TRUE(Eventually([this] { return program_->Run().Running(); }, std::chrono::seconds(60)));
  }
  // The needle of a gauge stands where the hardware's own face has the simulator's value.
  void ExpectAirspeed() {
    const vc::NeedleDevice& gauge = box_.Needle(10);
    const PlateRecord& plate = box_.hardware.Plates[box_.hardware.Gauges[10].GaugeSetting3];
    EXPECT_TRUE(Eventually([&] {
      return gauge.First() &&
             std::abs(*gauge.First() - PlatePositionOf(plate, box_.cockpit->Sim().State().airspeed)) < 6;
    }));
  }

  // The airspeed's face is mounted a little turned, so that its needle has to be put right.
  BoxOfInstruments box_{[](ConfigModel& hardware) {
                          PlateRecord& airspeed = hardware.Plates[hardware.Gauges[10].GaugeSetting3];
                          for (std::size_t entry = 2; entry <= 21; ++entry) airspeed.Position[entry] += 12;
                        },
                        WithBeacon()};
  std::uint16_t beaconPort_ = static_cast<std::uint16_t>(FreePort());
  QtMulticastListener beacons_{"127.0.0.1", beaconPort_};
  FakeMessageBoxes boxes_;
  FakeKeyInjector keys_;
  std::unique_ptr<Program> program_;
  CountedHands hands_;
};

TEST_F(GuideRig, TheFirstNeedleFliesAfterAtMostTenActions) {
  FindEverything();
  GoTo("3");
  ASSERT_EQ(Asked().gaugeID, 10);
  hands_.ClickLine("frmGuide", "ListFaces", FaceOnTheDesk(Asked()));
  hands_.Click("frmGuide", "cmdAsItIs");
  SaveAndFly();
  std::cout << "actions to the first needle: " << hands_.actions << '\n';
  EXPECT_LE(hands_.actions, 10);
  const vc::NeedleDevice& gauge = box_.Needle(10);
  EXPECT_TRUE(Eventually([&] { return gauge.First() && *gauge.First() > 200; })) << "it shows the flight";
}

// Every needle is put right at three points, radios are told apart, switches get a use.
TEST_F(GuideRig, ThirtyOneInstrumentsFlyAfterAtMost120Actions) {
  FindEverything();
  ASSERT_FALSE(HasFailure());
  EXPECT_EQ(Model().General.RemotePort, std::to_string(box_.cockpit->Simulation().Port())) << "by its beacon";
  const GeneralRecord& general = Model().General;
  EXPECT_TRUE(general.ComPortGS > 0 && general.ComPortEC > 0 && general.ComPortIOM1 > 0);
  GoTo("2");
  for (const auto& [id, role] : std::map<int, const char*>{{32, "cmdRole2"}, {33, "cmdRole0"}}) {
    auto& radio = dynamic_cast<vc::RadioDevice&>(*box_.cockpit->Gauges().Find(id));
    const std::string name = "0" + std::to_string(id);
    // Not before its report at rest is known.
    QTimer turning;
    QObject::connect(&turning, &QTimer::timeout, [&radio] { radio.TurnCoarse(1); });
    turning.start(1000);
    ASSERT_TRUE(Eventually([&] { return OnForm("frmGuide").Text("LabelTouched").starts_with(name); }))
        << name;
    hands_.Click("frmGuide", role);
  }
  GoTo("3");
  int needles = 0;
  while (Asked().IsGauge() || Asked().IsEngineCluster()) {
    const CalibrationTarget needle = Asked();
    ASSERT_LT(++needles, 30);
    hands_.ClickLine("frmGuide", "ListFaces", FaceOnTheDesk(needle));
    ASSERT_TRUE(boxes_.shown.empty()) << boxes_.shown[0];
    const std::vector<const char*> turned{"cmdMore10", "cmdMore1", "cmdMore1", "cmdYes", "cmdYes", "cmdYes"};
    const std::vector<const char*> straight{"cmdYes", "cmdYes", "cmdYes"}, channel{"cmdAsItIs"};
    for (const char* button : needle.gaugeID == 10 ? turned : needle.IsEngineCluster() ? channel : straight)
      hands_.Click("frmGuide", button);
  }
  EXPECT_EQ(needles, 13 + 8) << OnForm("frmGuide").Text("LabelQuestion");
  GoTo("4");
  vc::IOModuleUnit& module = box_.cockpit->IOModuleOf(1);
  const auto move = [&](const char* words, auto&& hand) {
    QTimer moving;
    bool on = false;
    QObject::connect(&moving, &QTimer::timeout, [&] { hand(on = !on); });
    moving.start(400);
    EXPECT_TRUE(Eventually([&] { return OnForm("frmGuide").Text("LabelMoved").starts_with(words); }))
        << words;
  };
  move("Switch A3", [&](bool on) { module.SetSwitch(2, on); });
  hands_.ClickLine("frmGuide", "ListUses", "Landing lights");
  move("An encoder on two switches from B1", [&](bool on) { module.Click(8, on); });
  hands_.ClickLine("frmGuide", "ListUses", "Heading bug");
  ASSERT_EQ(Model().IOMCount(), 3) << "a switch and both halves of an encoder";
  GoTo("5");
  hands_.Click("frmGuide", "cmdFly");
  ASSERT_TRUE(
      Eventually([] { return OnForm("frmGuide").Text("LabelFlight") == "31 of 31 instruments answered."; },
                 std::chrono::seconds(90)))
      << OnForm("frmGuide").Text("LabelFlight");
  SaveAndFly();
  std::cout << "actions for everything: " << hands_.actions << '\n';
  EXPECT_LE(hands_.actions, 120);
  for (std::size_t id = 0; id < box_.hardware.Gauges.size(); ++id) {
    GaugeRecord wanted = box_.hardware.Gauges[id], found = Model().Gauges[id];
    if (id == 42) wanted.GaugeFunction2 = 0;  // its number may be any one: nobody can know it
    if (wanted.GaugeFunction1 == 0 && wanted.GaugeFunction2 == 0)
      wanted.GaugeInstance1 = found.GaugeInstance1 = 0;  // of no Function
    wanted.GaugeInstance2 = found.GaugeInstance2 = 0;
    for (const bool second : {false, true}) {
      const PlateRecord* own = box_.hardware.PlateOf(second ? wanted.GaugeSetting4 : wanted.GaugeSetting3);
      const PlateRecord* given = Model().PlateOf(second ? found.GaugeSetting4 : found.GaugeSetting3);
      const bool needle = (second ? wanted.GaugeFunction2 : wanted.GaugeFunction1) != 0;
      if (wanted.GaugeType == 0 || wanted.GaugeType > 6 || !needle) continue;
      EXPECT_TRUE(own->Value == given->Value && own->Position == given->Position) << id;
    }
    wanted.GaugeSetting3 = found.GaugeSetting3;
    wanted.GaugeSetting4 = found.GaugeSetting4;
    wanted.GaugeSetting6 = found.GaugeSetting6;
    EXPECT_EQ(found, wanted) << "GaugeID " << id;
  }
  ExpectAirspeed();
}

}  // namespace
}  // namespace tvx::e2e
