// The windows of the yokes in the whole program, without hardware.
#include <QMouseEvent>

#include "ffb/YokeSettings.h"
#include "tests/forms/FormsRig.h"

namespace tvx {
namespace {

struct YokeFormsTest : FormsTest {
  YokeFormsTest() {
    ConfigModel model = SmallModel();
    model.General.ComPortYoke1 = 91;  // nothing is there
    model.General.ComPortYoke2 = 92;
    model.Yoke1.OptionBits = yokeoption::kStandard;
    model.Yoke2.Address = 2;  // something is set
    WriteConfig("Default.cfg", model);
    BeginHalted();
    program_->Yokes().ShowConfiguration(1);
    program_->Yokes().ShowConfiguration(2);
    Settle();
  }
  YokeConfigForm* Yoke1() { return program_->Yokes().ConfigurationForm(1); }
  YokeConfigForm* Yoke2() { return program_->Yokes().ConfigurationForm(2); }
  ConfigModel& Model() { return program_->Model(); }
};

TEST_F(YokeFormsTest, SayWhatIsWrongAndHideOnClosing) {
  FfbStatusForm* form = program_->Yokes().Form();
  ASSERT_NE(form, nullptr);
  program_->Run().cmdRun_Click();
  program_->Yokes().Pair().ProcessTimer_Tick();
  form->Refresh();
  EXPECT_EQ(LabelText(form, "LabelRole2"), "Slave, Servo Mode");
  EXPECT_EQ(LabelText(form, "LabelState2"),
            "No force: Not calibrated: set centre and limits in its configuration");
  form->close();
  program_->Run().ShowPeripheral(PeripheralKind::Yokes);
  EXPECT_TRUE(form->isVisible());
  Click(form, "cmdStop");
  EXPECT_FALSE(program_->Yokes().Pair().Running());
}

TEST_F(YokeFormsTest, ModeOptionsChooseTheMode) {
  const std::pair<const char*, YokeMode> rows[] = {{"OptionFFB", YokeMode::Ffb},
                                                   {"OptionFollowAPMode", YokeMode::FollowAP},
                                                   {"OptionServoMode", YokeMode::Servo},
                                                   {"OptionOFF", YokeMode::Off},
                                                   {"OptionCentre", YokeMode::Centre}};
  for (const auto& [name, mode] : rows) {
    Click(Yoke1(), name);
    EXPECT_EQ(program_->Yokes().Pair().Of(1).Mode(), mode) << name;
  }
}

TEST_F(YokeFormsTest, SettingsGoToTheirOwnYokeAndMarkTheChange) {
  EXPECT_FALSE(Model().ConfigChanged) << "showing changes nothing";
  Control<QTabWidget>(Yoke2(), "TabsYoke")->setCurrentIndex(5);
  Click(Yoke2(), "CheckSendPositions");
  EXPECT_EQ(Model().Yoke2.OptionBits, yokeoption::kSendPositions);
  EXPECT_EQ(Model().Yoke1.OptionBits, yokeoption::kStandard);
  EXPECT_TRUE(Model().ConfigChanged);
  Control<QComboBox>(Yoke2(), "ComboButton4")->setCurrentIndex(8);
  QLineEdit* text = Control<QLineEdit>(Yoke2(), "BoxButton4");
  text->setText("sim/lights/\"beacon\"");
  emit text->editingFinished();
  EXPECT_EQ(Model().Yoke2.Buttons[3].Action, 8);
  EXPECT_EQ(Model().Yoke2.Buttons[3].Text, "sim/lights/beacon") << "a quote would end the file's text";
  // The forces are shared, and so are the aircraft's values, which are kept in yoke 1's record: it alone
  // reads back. The first change writes the standard values beside it, and is flown at once.
  Set(Yoke1(), "boxMaximumForce", "55");
  Play(Yoke2(), {{"boxNeverExceedSpeed", "200"}, {"boxLevel1", "33"}});  // stall buffet, pitch
  const auto& [yoke1, yoke2, shared] = std::tie(Model().Yoke1, Model().Yoke2, Model().GeneralFFB);
  EXPECT_EQ(std::tuple(shared.MaximumForce, shared.PitchTrimRange), std::tuple(55, 40));
  EXPECT_EQ(std::tuple(yoke1.NeverExceedSpeed, yoke1.Effects[1].Level, yoke1.Effects[3].Level),
            std::tuple(200, 33, 20));
  EXPECT_TRUE(EffectsAreBlank(yoke2) && yoke2.NeverExceedSpeed == 0);
  const auto& forces = program_->Yokes().Pair().Settings().forces;
  EXPECT_EQ(std::tuple(forces.maximum, forces.neverExceedSpeed), std::tuple(0.55, 200.0));
}

TEST_F(YokeFormsTest, CurveIsDraggedAndMovedByKey) {
  Control<QTabWidget>(Yoke1(), "TabsYoke")->setCurrentIndex(2);
  Settle();
  Click(Yoke1(), "OptionCurvePitch");
  auto* curve = dynamic_cast<ForceCurveWidget*>(Control<QWidget>(Yoke1(), "ForceCurvePicture"));
  ASSERT_NE(curve, nullptr);
  const GeneralFFBRecord::ForcePoint point = StandardGeneralFFB().ForceTable[6];
  const auto mouse = [&](QEvent::Type type, QPointF at) {
    QMouseEvent event(type, at, curve->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(curve, &event);
  };
  mouse(QEvent::MouseButtonPress, curve->PlaceOf({point.PitchAirspeed, point.PitchForce}));
  mouse(QEvent::MouseMove, curve->PlaceOf({130, 70}));
  mouse(QEvent::MouseButtonRelease, curve->PlaceOf({130, 70}));
  EXPECT_NEAR(Model().GeneralFFB.ForceTable[6].PitchAirspeed, 130, 1);
  EXPECT_NEAR(Model().GeneralFFB.ForceTable[6].PitchForce, 70, 1);
  EXPECT_EQ(Model().GeneralFFB.ForceTable[6].RollForce, point.RollForce);
  const float before = Model().GeneralFFB.ForceTable[6].PitchForce;
  Press(curve, Qt::Key_Down);
  EXPECT_EQ(Model().GeneralFFB.ForceTable[6].PitchForce, before - 1);
  Click(Yoke1(), "cmdStandardForces");
  EXPECT_EQ(Model().GeneralFFB.ForceTable[6].PitchForce, point.PitchForce);
}

TEST_F(YokeFormsTest, CalibrationAndJoystickSayWhatTheyMiss) {
  for (const auto& [button, words] : {std::pair{"cmdSetRollCentre", "The yoke does not answer."},
                                      {"cmdSetRudderLeft", "No Rudder axe defined"},
                                      {"cmdSetLeftBrakePressed", "No Brake axe defined"},
                                      {"cmdCheckJoystick", "Joystick settings incorrect or incomplete."}}) {
    boxes_.shown.clear();
    Click(Yoke1(), button);
    EXPECT_EQ(boxes_.shown.back(), words);
  }
  EXPECT_EQ(boxes_.shown.size(), 6u) << "all that is missing";
}

TEST_F(YokeFormsTest, NothingIsClippedAndLeavingTakesThemAway) {
  ExpectWholeAtAnySize(program_->Yokes().Form());
  for (int page = 0; page < 7; ++page) {
    Control<QTabWidget>(Yoke1(), "TabsYoke")->setCurrentIndex(page);
    ExpectWholeAtAnySize(Yoke1());
  }
  program_->Run().CmdConfig_Click();
  Settle();
  EXPECT_EQ(program_->Yokes().Form(), nullptr);
  EXPECT_EQ(Yoke1(), nullptr);
}

}  // namespace
}  // namespace tvx
