#include <QComboBox>
#include <QTreeWidget>

#include "forms/FormsRig.h"

namespace tvx {
namespace {

class ConfigureFormTest : public FormsTest {
 protected:
  void Open() {
    Begin();
    Control<QPushButton>(Start(), "CmdConfigure")->click();
    Settle();
    ASSERT_NE(Configuration(), nullptr);
  }
  void Click(const char* name) { Control<QPushButton>(Configuration(), name)->click(); }
  GeneralRecord& General() { return program_->Model().General; }
};

TEST_F(ConfigureFormTest, OpeningItStopsTheCountdown) {
  Open();
  EXPECT_EQ(Configuration()->objectName(), "FrmMainConfigure");
  EXPECT_FALSE(program_->Timers().WaitForAutostart.Enabled());
  EXPECT_FALSE(program_->Timers().TimerWaitForFS.Enabled());
  EXPECT_NE(LabelText(Configuration(), "CurrentConfigFile").find("Default.cfg"), std::string::npos);
}

TEST_F(ConfigureFormTest, EachGroupGetsItsPort) {
  const struct {
    const char *choice, *button, *current;
    std::int16_t GeneralRecord::*field;
  } rows[] = {
      {"ComboComGS", "cmdSetCommport", "BoxCurrentComGS", &GeneralRecord::ComPortGS},
      {"ComboComEC", "cmdSetCommportEC", "BoxCurrentComEC", &GeneralRecord::ComPortEC},
      {"ComboCOMIOM", "cmdSetCommportIOM", "BoxCurrentComIOM", &GeneralRecord::ComPortIOM1},
      {"ComboComiOM2", "cmdSetCommportIOM2", "BoxCurrentComIOM2", &GeneralRecord::ComPortIOM2},
      {"ComboComYoke1", "cmdSetCommportYoke1", "boxCurrentComYoke1", &GeneralRecord::ComPortYoke1},
      {"ComboComYoke2", "cmdSetCommportYoke2", "boxCurrentComYoke2", &GeneralRecord::ComPortYoke2},
  };
  Open();
  int number = 3;
  for (const auto& row : rows) {
    auto* choice = Control<QComboBox>(Configuration(), row.choice);
    EXPECT_FALSE(Control<QPushButton>(Configuration(), row.button)->isEnabled()) << row.button;
    choice->setCurrentIndex(choice->findData(++number));
    EXPECT_EQ(General().*row.field, 0) << "taken before " << row.button;
    Click(row.button);
    EXPECT_EQ(General().*row.field, number) << row.button;
    EXPECT_EQ(LabelText(Configuration(), row.current), "COM " + std::to_string(number));
  }
  EXPECT_TRUE(program_->Model().ConfigChanged);
}

TEST_F(ConfigureFormTest, TheUdpSettingsAreTakenTogether) {
  Open();
  Control<QLineEdit>(Configuration(), "boxRemoteIP")->setText("192.168.1.20");
  Control<QLineEdit>(Configuration(), "boxRemotePort")->setText("49010");
  Control<QLineEdit>(Configuration(), "boxLocalPort")->setText("49011");
  Control<QRadioButton>(Configuration(), "OptionByteOrderReverse")->setChecked(true);
  Control<QCheckBox>(Configuration(), "CheckBlockUsel")->setChecked(true);
  EXPECT_EQ(General().RemoteIP, "127.0.0.1");
  Click("cmdSetUDP");
  EXPECT_EQ(General().RemoteIP, "192.168.1.20");
  EXPECT_EQ(General().RemotePort, "49010");
  EXPECT_EQ(General().LocalPort, "49011");
  EXPECT_EQ(General().ByteOrderReverse, -1);
  EXPECT_EQ(General().BlockUSEL, 1);
}

TEST_F(ConfigureFormTest, IntervalAndLightsAreSetAtOnce) {
  Open();
  Click("CmdSet250");
  EXPECT_EQ(General().TransferInterval, 250);
  EXPECT_EQ(LabelText(Configuration(), "BoxXferTimerProcess"), "250");
  auto* lights = Control<QComboBox>(Configuration(), "ComboLights");
  EXPECT_EQ(lights->currentIndex(), 0);
  Press(lights, Qt::Key_Down);
  EXPECT_EQ(General().LightsSetting1, 0);
  EXPECT_EQ(General().LightsSetting2, 1);
}

TEST_F(ConfigureFormTest, SavingWritesTheFileAndSaysSo) {
  Open();
  Click("CmdSet250");
  Click("cmdSaveConfig");
  EXPECT_EQ(boxes_.shown, std::vector<std::string>{"File saved as: Default.cfg"});
  ConfigModel read;
  read.ConfigFileName = "Default.cfg";
  FakeMessageBoxes quiet;
  ConfigFile(read, quiet).LoadConfigFile();
  EXPECT_FALSE(read.ConfigLoadFailed);
  EXPECT_EQ(read.General.TransferInterval, 250);
  EXPECT_TRUE(quiet.asked.empty()) << quiet.asked.front();
  Click("CmdClose");
  EXPECT_TRUE(boxes_.asked.empty());
  EXPECT_EQ(Configuration(), nullptr);
}

TEST_F(ConfigureFormTest, AFileThatCannotBeWrittenIsReported) {
  Open();
  program_->Model().ConfigFileName = "missing/folder/Default.cfg";
  Click("cmdSaveConfig");
  EXPECT_EQ(boxes_.shown, std::vector<std::string>{"file cannot be overwritten"});
}

TEST_F(ConfigureFormTest, ClosingAsksAboutUnsavedChanges) {
  Open();
  Click("CmdSet250");
  boxes_.answers = {kAnswerNo, kAnswerYes};
  Configuration()->close();
  ASSERT_NE(Configuration(), nullptr);
  EXPECT_TRUE(Configuration()->isVisible());
  Press(Configuration(), Qt::Key_Escape);
  EXPECT_EQ(Configuration(), nullptr);
  EXPECT_EQ(boxes_.asked, std::vector<std::string>(2, "Updates are not saved; Continue anyway?"));
  EXPECT_TRUE(Start()->isVisible());
}

// While a configuration is edited, saving must not go to the file that the start-up file names.
TEST_F(ConfigureFormTest, FromTheStatusFormTheFileInUseIsTheOneEdited) {
  WriteConfig("Other.cfg", SmallModel());
  Begin();
  program_->Start().FileBox_Click("Other.cfg");
  program_->Start().butOK_Click();
  Settle();
  Control<QPushButton>(Status(), "CmdConfig")->click();
  Settle();
  ASSERT_NE(Configuration(), nullptr);
  EXPECT_EQ(Status(), nullptr);
  EXPECT_TRUE(Start()->isVisible());
  EXPECT_EQ(program_->Model().ConfigFileName, "Other.cfg");
  Click("CmdClose");
  Settle();
  EXPECT_EQ(program_->Start().View().FileName, "Default.cfg");
  EXPECT_FALSE(program_->Start().View().CountdownVisible);
}

TEST_F(ConfigureFormTest, ClearAllAsksFirst) {
  Open();
  auto* list = Control<QTreeWidget>(Configuration(), "Configlist");
  ASSERT_EQ(list->topLevelItemCount(), 1);
  EXPECT_EQ(list->topLevelItem(0)->text(0), "007");
  boxes_.answers = {kAnswerNo, kAnswerYes};
  Click("cmdClearConfig");
  EXPECT_EQ(list->topLevelItemCount(), 1);
  Click("cmdClearConfig");
  EXPECT_EQ(list->topLevelItemCount(), 0);
  EXPECT_EQ(boxes_.asked.front(), "This will clear all gauge assignments and settings!\r\nContinue anyway?");
}

TEST_F(ConfigureFormTest, NothingIsClipped) {
  Open();
  ExpectNothingClipped(Configuration());
}

}  // namespace
}  // namespace tvx
