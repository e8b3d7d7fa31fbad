#include <QClipboard>
#include <QTreeView>

#include "tests/forms/FormsRig.h"

namespace tvx {
namespace {

using StatusFormTest = FormsTest;

TEST_F(StatusFormTest, RunAndStopFollowTheButtons) {
  BeginHalted();
  for (const bool running : {true, false}) {
    auto* pressed = Control<QPushButton>(Status(), running ? "cmdRun" : "cmdStop");
    auto* other = Control<QPushButton>(Status(), running ? "cmdStop" : "cmdRun");
    EXPECT_FALSE(other->isEnabled());
    pressed->click();
    EXPECT_EQ(LabelText(Status(), "BoxRun"), running ? "Running" : "Halted");
    EXPECT_EQ(program_->Timers().ProcessTimer.Enabled(), running);
    EXPECT_FALSE(pressed->isEnabled());
    EXPECT_EQ(Status()->focusWidget(), other);
  }
}

TEST_F(StatusFormTest, ShowsWhatTheCycleShowsWhenAskedTo) {
  BeginHalted();
  program_->Model().General.ComPortGS = 0;
  program_->Run().cmdRun_Click();
  program_->Run().ProcessTimer_Tick();
  program_->Run().ProcessTimer_Tick();
  Status()->ShowFlightValues();
  const FlightBoxes& boxes = program_->Run().Cycle().Boxes();
  ASSERT_FALSE(boxes.BoxIAS.View().empty());
  EXPECT_EQ(LabelText(Status(), "BoxIAS"), boxes.BoxIAS.View());
  EXPECT_EQ(LabelText(Status(), "BoxAirPressmBar"), boxes.BoxAirPressmBar.View());
  program_->Run().Timer1_Tick();
  EXPECT_NE(LabelText(Status(), "frmXferCount"), "0");
}

// A configured interval that the slider cannot stand at is shown and kept.
TEST_F(StatusFormTest, TheSliderSetsTheIntervalByKeyboard) {
  Configured([](ConfigModel& model) { model.General.TransferInterval = 2500; });
  BeginHalted();
  const std::int16_t& interval = program_->Model().General.TransferInterval;
  EXPECT_EQ(std::tuple(LabelText(Status(), "BoxXferProcessTimer"), interval), std::tuple("2500", 2500));
  auto* slider = Control<QSlider>(Status(), "SliderXferTimer");
  Press(slider, Qt::Key_Home);
  Press(slider, Qt::Key_Right);
  EXPECT_EQ(interval, 20);
}

TEST_F(StatusFormTest, AnotherTitleHidesThePacketRate) {
  Begin();
  program_->Model().ProgramTitle = "Another title";
  boxes_.otherwise = kAnswerYes;  // the file is of the standard title
  program_->Start().butOK_Click();
  Settle();
  ASSERT_NE(Status(), nullptr);
  for (const char* name : {"boxUDPrate", "Label3", "Label4"})
    EXPECT_FALSE(Control<QWidget>(Status(), name)->isVisible()) << name;
  EXPECT_TRUE(Control<QWidget>(Status(), "frmXferCount")->isVisible());
}

TEST_F(StatusFormTest, TheGaugeBusInTroubleIsSaidAndLit) {
  Configured([](ConfigModel& model) { model.General.ComPortGS = 200; });
  BeginHalted();
  EXPECT_EQ(LabelText(Status(), "LabelGaugeBus"), program_->Run().View().GaugeBus.Text);
  EXPECT_EQ(Control<StateLamp>(Status(), "LampGaugeBus")->Shown(), StateLamp::State::Trouble);
}

TEST_F(StatusFormTest, ShowPortsIsALiveTableToSearchSortAndCopy) {
  BeginHalted();
  Click(Status(), "cmdShowPorts");
  PortsForm* ports = program_->Watch().Ports();
  ASSERT_NE(ports, nullptr);
  auto* list = Control<QTreeView>(ports, "OffsetsList");
  const QAbstractItemModel& lines = *list->model();
  const auto cell = [&lines](int line, int column) { return lines.index(line, column).data().toString(); };
  ASSERT_EQ(lines.rowCount(), program_->Sim().PortCount());
  const std::string hint = LabelText(ports, "LabelDetails");
  const int last = lines.rowCount() - 1;
  list->setCurrentIndex(lines.index(last, 0));
  EXPECT_NE(LabelText(ports, "LabelDetails"), hint);
  const QString chosen = cell(last, 0);
  list->sortByColumn(0, Qt::DescendingOrder);
  EXPECT_EQ(list->currentIndex().row(), 0) << "what is chosen moves along";
  EXPECT_EQ(cell(0, 0), chosen);
  Control<QLineEdit>(ports, "SearchPorts")->setText("airspeed intrn");
  ASSERT_EQ(lines.rowCount(), 1);
  EXPECT_EQ(LabelText(ports, "LabelCount"), "1 of " + std::to_string(last + 1) + " ports");
  Click(ports, "cmdCopyPorts");
  EXPECT_TRUE(QApplication::clipboard()->text().contains("\n000\tINTRN\t001\t"));
  program_->Sim().CloseAllPorts();
  ports->Refresh();
  EXPECT_EQ(lines.rowCount(), 0);
}

TEST_F(StatusFormTest, TheCloseButtonEndsTheProgramWithEverythingClosedAndAStrayEscapeDoesNot) {
  BeginHalted();
  program_->Run().cmdRun_Click();
  Press(Status(), Qt::Key_Escape);
  EXPECT_FALSE(program_->Ended());
  EXPECT_TRUE(Status()->isVisible());
  Click(Status(), "cmdShowPorts");
  Status()->close();
  EXPECT_TRUE(program_->Ended());
  EXPECT_EQ(Status(), nullptr);
  EXPECT_EQ(program_->Watch().Ports(), nullptr);
  EXPECT_FALSE(program_->Sim().UdpOpen());
  EXPECT_EQ(program_->Sim().PortCount(), 0);
  EXPECT_FALSE(program_->Timers().ProcessTimer.Enabled());
}

TEST_F(StatusFormTest, KeysTipsAndTexts) {
  BeginHalted();
  ExpectKeysAndTips(Status());
  program_->Run().cmdRun_Click();
  ExpectWholeAtAnySize(Status());
}

}  // namespace
}  // namespace tvx
