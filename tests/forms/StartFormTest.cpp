#include <QUdpSocket>

#include "tests/forms/FormsRig.h"

namespace tvx {
namespace {

struct StartFormTest : FormsTest {
  QLineEdit* FileName() { return Control<QLineEdit>(Start(), "FileName"); }
};

TEST_F(StartFormTest, ShowsTheCountdown) {
  Begin();
  Play(Start(), {{"", "", "TextAutostart", "Program will autostart with Selected Config in: "},
                 {"", "", "BoxAutoStartTime", "12"},
                 {"", "", "FileName", "Default.cfg"}});
  EXPECT_TRUE(Control<QLabel>(Start(), "Textseconds")->isVisible());
  EXPECT_TRUE(program_->Timers().WaitForAutostart.Enabled());
  for (int tick = 0; tick < 20; ++tick) program_->Start().WaitForAutostart_Tick();
  EXPECT_EQ(LabelText(Start(), "BoxAutoStartTime"), "11");
}

TEST_F(StartFormTest, ListsConfigurationsWhateverTheCaseOfTheirExtension) {
  for (const char* name : {"b737.CFG", "Airbus.cfg", "cessna.Cfg", "notes.txt", "cfg"})
    WriteConfig(name, SmallModel());
  EXPECT_EQ(ConfigurationFiles(), QStringList({"Airbus.cfg", "b737.CFG", "cessna.Cfg", "Default.cfg"}));
}

TEST_F(StartFormTest, SaysWhenThereIsNoConfiguration) {
  QFile::remove("Default.cfg");
  Begin();
  EXPECT_TRUE(Control<QLabel>(Start(), "LabelNoFiles")->isVisible());
  EXPECT_FALSE(Control<QListWidget>(Start(), "FileBox")->isVisible());
}

TEST_F(StartFormTest, CursorKeysPickAFileAndHideTheCountdown) {
  WriteConfig("Evening.cfg", SmallModel());
  Begin();
  auto* list = Control<QListWidget>(Start(), "FileBox");
  EXPECT_EQ(list->currentItem()->text(), "Default.cfg");
  Press(list, Qt::Key_Down);
  EXPECT_EQ(program_->Model().ConfigFileName, "Evening.cfg");
  Play(Start(), {{"", "", "FileName", "Evening.cfg"},
                 {"", "", "TextAutostart", "hidden"},
                 {"", "", "BoxAutoStartTime", "hidden"}});
  EXPECT_TRUE(program_->Timers().WaitForAutostart.Enabled());
}

TEST_F(StartFormTest, ATypedNameIsTheOneThatIsLoaded) {
  Begin();
  FileName()->clear();
  Press(FileName(), Qt::Key_N, "N");
  Press(FileName(), Qt::Key_Return);
  EXPECT_EQ(program_->Model().ConfigFileName, "N");
  EXPECT_EQ(Status(), nullptr);
}

TEST_F(StartFormTest, EnterPressesTheButtonThatHasTheFocus) {
  Begin();
  auto* configure = Control<QPushButton>(Start(), "CmdConfigure");
  configure->setFocus();
  Press(configure, Qt::Key_Return);
  EXPECT_NE(Configuration(), nullptr);
  EXPECT_EQ(Status(), nullptr);
}

TEST_F(StartFormTest, EscapeAndTheCloseButtonEndTheProgram) {
  for (const bool escape : {true, false}) {
    Begin();
    if (escape) Press(FileName(), Qt::Key_Escape);
    if (!escape) Start()->close();
    EXPECT_TRUE(program_->Ended());
    EXPECT_EQ(Start(), nullptr);
    EXPECT_FALSE(program_->Timers().WaitForAutostart.Enabled());
  }
}

// Changing to another window and back must not stop a countdown.
TEST_F(StartFormTest, GettingTheFocusAgainIsNoActivation) {
  Begin();
  for (const auto type : {QEvent::WindowDeactivate, QEvent::WindowActivate, QEvent::ActivationChange}) {
    QEvent event(type);
    QApplication::sendEvent(Start(), &event);
  }
  Settle();
  EXPECT_TRUE(program_->Start().View().CountdownVisible);
  Start()->hide();
  Start()->show();
  Settle();
  EXPECT_FALSE(program_->Start().View().CountdownVisible);
}

// Listed while the form stands and the simulator has not answered; a click leads there.
TEST_F(StartFormTest, OffersTheSimulatorsOfTheNetwork) {
  Begin();
  EXPECT_FALSE(Control<QWidget>(Start(), "Found")->isVisible());
  beacons_.Deliver(BeaconBytes("SIM-PC", 1, 50991), "10.0.0.7");
  beacons_.Deliver(BeaconBytes("HERE", 1, 50991), "10.0.0.2", true);
  Play(Start(), {{"", "", "FoundLine0", "X-Plane 12.1.1 on host HERE at 127.0.0.1 port 50991"},
                 {"", "", "FoundLine1", "X-Plane 12.1.1 on host SIM-PC at 10.0.0.7 port 50991"},
                 {"", "", "FoundTake0", "hidden"}});
  EXPECT_TRUE(Control<QLabel>(Start(), "FoundTaken0")->isVisible()) << "it is the configured one";
  EXPECT_TRUE(TabRound(Start()).contains("FoundTake1"));
  ExpectWholeAtAnySize(Start());
  Click(Start(), "FoundTake1");
  EXPECT_EQ(program_->Model().General.RemoteIP, "10.0.0.7");
  EXPECT_TRUE(Control<QLabel>(Start(), "FoundTaken1")->isVisible());
  program_->Start().butOK_Click();
  Settle();
  EXPECT_EQ(program_->Model().General.RemoteIP, "10.0.0.7");
  EXPECT_FALSE(beacons_.open) << "nobody looks for one any more";
}

TEST_F(StartFormTest, SaysWhoHasThePort) {
  QUdpSocket other;
  ASSERT_TRUE(other.bind(QHostAddress(QHostAddress::AnyIPv4), 50992, QAbstractSocket::DontShareAddress));
  beacons_.openError = "no network card";
  Begin();
  for (int tick = 0; tick < 20; ++tick) program_->Start().WaitForAutostart_Tick();
  const std::string words = LabelText(Start(), "SimulatorHint");
  EXPECT_TRUE(Begins(words, "X-Plane link closed: local port 50992 is used by another program: "));
  EXPECT_EQ(Control<StateLamp>(Start(), "LampSimulator")->Shown(), StateLamp::State::Trouble);
  EXPECT_EQ(LabelText(Start(), "LabelFound"), "X-Plane cannot be looked for: no network card");
  ExpectWholeAtAnySize(Start());
}

TEST_F(StartFormTest, TabReachesEverythingAndNothingIsClipped) {
  Begin();
  const std::set<std::string> expected{"FileBox",      "FileName", "butOK",        "CmdConfigure",
                                       "ComboAtStart", "Exit",     "LabelWebPage", "cmdTheme"};
  EXPECT_EQ(TabRound(Start()), expected);
  ExpectWholeAtAnySize(Start());
}

}  // namespace
}  // namespace tvx
