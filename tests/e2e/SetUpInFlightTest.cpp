// Forms at work while both programs run, and hands that are faster than the simulator's answers.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "tests/e2e/Flight.h"

namespace tvx::e2e {
namespace {

// Of the demonstration: switch A1 is the parking brake, which lamp 1 shows; B1/B2 the heading bug's encoder.
// C5 is free.
constexpr int kParkingBrakeSwitch = 0, kHeadingEncoder = 8, kFreeSwitch = 20;
const char* const kBrakeDataref = "sim/flightmodel/controls/parkbrake";
const char* const kHeadingDataref = "sim/cockpit2/autopilot/heading_dial_deg_mag_pilot";

QWidget* Window(const char* name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == name) return window;
  }
  throw std::runtime_error(std::string("no window ") + name);
}

template <typename T>
T& Control(QWidget* form, const char* name) {
  T* control = form == nullptr ? nullptr : form->findChild<T*>(name);
  if (control == nullptr) throw std::runtime_error(std::string("no control ") + name);
  return *control;
}

struct SetUpInFlight : testing::Test {
  double Dataref(const char* name) { return flight.Sim().Datarefs().ValueOf(name).value_or(-1); }
  vc::IOModuleUnit& Hardware() { return flight.TheCockpit().IOModuleOf(1); }
  IOModule& Module() { return flight.TheProgram().IOModule1().Module(); }
  // Flies with the heading bug at 90, and the parking brake set.
  int BeginWithHeading() {
    flight.Run();
    auto& datarefs = flight.Sim().Datarefs();
    datarefs.Write(datarefs.Find(kHeadingDataref), 90);
    EXPECT_TRUE(Eventually([&] { return Module().SwitchesKnown(); }));
    Hardware().SetSwitch(kParkingBrakeSwitch, true);
    const int definition = Module().SwitchDefinitionNr(kHeadingEncoder + 1);
    EXPECT_TRUE(Eventually([&] { return Hardware().Lamp(0) && Module().CurrentValue(definition) == 90; }));
    return definition;
  }

  // Without the gauges, whose knobs write some of the same values.
  Flight flight{[](ConfigModel& model) { model.Gauges.fill({}); }};
};

TEST_F(SetUpInFlight, ADefinitionThatIsStoredActsAtOnceAndInterruptsNothing) {
  const int heading = BeginWithHeading();
  IOModulePeripheral& module = flight.TheProgram().IOModule1();
  Control<QPushButton>(module.Form(), "cmdConfigIOM").click();
  ConfigIOMForm* setUp = module.ConfigurationForm();
  ASSERT_NE(setUp, nullptr);
  bool dark = false;
  const auto eventually = [&](auto&& condition) {
    return Eventually([&] {
      dark = dark || !Hardware().Lamp(0);
      return condition();
    });
  };
  Hardware().SetSwitch(kFreeSwitch, true);
  ASSERT_TRUE(eventually([&] {
    return setUp->Selected() == IOModuleInput{1, IOModuleKind::Switch, kFreeSwitch};
  }));
  Control<QPushButton>(setUp, "cmdEdit").click();
  auto& functions = Control<QComboBox>(setUp->Editor(), "ComboFunction");
  functions.setCurrentIndex(functions.findData(
      flight.TheProgram().Model().IOModuleInputs[static_cast<std::size_t>(heading - 1)].FunctionNr));
  Control<QLineEdit>(setUp->Editor(), "BoxOffOnValue").setText("50");
  Control<QPushButton>(setUp->Editor(), "cmdStore").click();
  ASSERT_TRUE(flight.boxes.shown.empty()) << flight.boxes.shown[0];
  Hardware().SetSwitch(kFreeSwitch, false);
  ASSERT_TRUE(eventually([&] { return !Module().SwitchState()[kFreeSwitch]; }));
  Hardware().SetSwitch(kFreeSwitch, true);
  EXPECT_TRUE(eventually([&] { return Dataref(kHeadingDataref) == 180; }))
      << "the new one acts: " << Dataref(kHeadingDataref);
  ASSERT_TRUE(eventually([&] { return Module().CurrentValue(heading) == 180; })) << "the simulator says so";
  Hardware().Click(kHeadingEncoder, false);
  EXPECT_TRUE(eventually([&] { return Dataref(kHeadingDataref) == 179; })) << "the old ones go on";
  EXPECT_FALSE(dark) << "the lamp was lit all the time";
  EXPECT_EQ(Module().StatusText(), "Running");
  Hardware().SetSwitch(kParkingBrakeSwitch, false);
  EXPECT_TRUE(Eventually([&] { return Dataref(kBrakeDataref) == 0 && !Hardware().Lamp(0); }));
}

TEST_F(SetUpInFlight, TenClicksOfAFastHandAreTenSteps) {
  BeginWithHeading();
  int clicks = 0;
  QTimer hand;
  QObject::connect(&hand, &QTimer::timeout, [&] {
    Hardware().Click(kHeadingEncoder, true);
    if (++clicks == 10) hand.stop();
  });
  hand.start(10);
  EXPECT_TRUE(Eventually([&] { return clicks == 10 && Dataref(kHeadingDataref) == 100; }))
      << Dataref(kHeadingDataref);
}

TEST(SetUpHalted, TheConsoleShowsTheAnswerToAQuestionByHand) {
  Flight flight;
  flight.Start();
  Control<QPushButton>(Window("frmStatus"), "CmdConfig").click();
  ASSERT_TRUE(Eventually([&] { return flight.TheProgram().ConfigurationWindow() != nullptr; }));
  Control<QPushButton>(flight.TheProgram().ConfigurationWindow(), "cmdTestGauges").click();
  QWidget* console = Window("frmTestGauges");
  constexpr int gaugeID = 20;
  Control<QLineEdit>(console, "ManualGaugeID").setText(QString::number(gaugeID));
  Control<QLineEdit>(console, "CommandNumber").setText("7");
  Control<QLineEdit>(console, "CommandValue").setText("1");
  Control<QPushButton>(console, "SendGaugeCommand").click();
  auto& answer = Control<QLabel>(console, "Text7");
  EXPECT_TRUE(Eventually([&] { return answer.text().startsWith(QString("0.%1.").arg(gaugeID)); }))
      << answer.text().toStdString();
}

}  // namespace
}  // namespace tvx::e2e
