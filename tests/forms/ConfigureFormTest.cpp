#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QRadioButton>
#include <QSpinBox>
#include <QTreeWidget>
#include <functional>

#include "tests/forms/FormsRig.h"

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
  static void ClickIn(QWidget* form, const char* name) { Control<QPushButton>(form, name)->click(); }
  // Another form of the configuration, where it is shown.
  QWidget* Other(const char* name) {
    auto* form = Configuration()->findChild<QWidget*>(name);
    return form != nullptr && form->isVisible() ? form : nullptr;
  }
  GeneralRecord& General() { return program_->Model().General; }
};

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
  EXPECT_FALSE(program_->Timers().WaitForAutostart.Enabled()) << "nothing starts behind it";
  EXPECT_FALSE(program_->Timers().TimerWaitForFS.Enabled());
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

TEST_F(ConfigureFormTest, ASimulatorOfTheNetworkIsTakenAtOnceAndFollowedOnRequest) {
  Open();
  auto* follow = Control<QCheckBox>(Configuration(), "CheckFollow");
  auto* localPort = Control<QLineEdit>(Configuration(), "boxLocalPort");
  EXPECT_FALSE(follow->isEnabled()) << "no simulator is known by its name";
  EXPECT_FALSE(LabelText(Configuration(), "LabelFound").empty());
  beacons_.Deliver(BeaconBytes("SIM-PC", 1, 49100), "10.0.0.7");
  beacons_.Deliver(BeaconBytes("VISUAL", 2), "10.0.0.9");
  localPort->setText("50999");
  ClickIn(Configuration(), "FoundTake0");
  EXPECT_EQ(General().RemoteIP, "10.0.0.7");
  EXPECT_EQ(General().RemotePort, "49100");
  EXPECT_EQ(General().LocalPort, "50992") << "typed, and not set yet";
  EXPECT_EQ(localPort->text(), "50999");
  EXPECT_TRUE(Control<QLabel>(Configuration(), "FoundTaken0")->isVisible());
  ASSERT_TRUE(follow->isEnabled());
  follow->setChecked(true);
  Control<QCheckBox>(Configuration(), "CheckHearAll")->setChecked(true);
  EXPECT_EQ(General().GeneralText6, "");
  Click("cmdSetUDP");
  EXPECT_EQ(General().Setting(kHearAllSetting), "yes");
  EXPECT_EQ(General().Setting(kFollowSetting), "SIM-PC");
  auto* address = Control<QLineEdit>(Configuration(), "boxRemoteIP");
  address->setText("10.0.0.99");
  EXPECT_FALSE(follow->isEnabled()) << "who is there is not known";
  EXPECT_FALSE(follow->isChecked());
  address->setText("10.0.0.7");
  EXPECT_TRUE(follow->isChecked());
  EXPECT_FALSE(Control<QPushButton>(Configuration(), "cmdSetUDP")->isEnabled()) << "as it is set";
  ClickIn(Configuration(), "FoundTake1");
  EXPECT_EQ(General().Setting(kFollowSetting), "") << "another one is in use now";
  EXPECT_FALSE(follow->isEnabled()) << "it flies nothing itself";
  beacons_.Deliver(BeaconBytes("A-VERY-LONG-NAME-OF-A-COMPUTER", 2, 49100), "192.168.100.100");
  ExpectKeysAndTips(Configuration());
  ExpectNothingClipped(Configuration());
  for (const char* line : {"FoundLine0", "FoundLine1", "FoundLine2"}) {
    const auto* label = Control<QLabel>(Configuration(), line);
    EXPECT_GE(label->height(), label->heightForWidth(label->width())) << line;
  }
}

TEST_F(ConfigureFormTest, AComputersNameIsTakenAsItIsTyped) {
  Open();
  const std::pair<const char*, bool> rows[] = {{"simpc", true},          {"sim-pc.local", true},
                                               {"192.168.1.300", false}, {"192.168.1", false},
                                               {"-sim", false},          {"", false}};
  for (const auto& [text, right] : rows) {
    Control<QLineEdit>(Configuration(), "boxRemoteIP")->setText(text);
    EXPECT_EQ(Control<QPushButton>(Configuration(), "cmdSetUDP")->isEnabled(), right) << text;
    if (!right) continue;
    Click("cmdSetUDP");
    EXPECT_EQ(General().RemoteIP, text);
  }
}

TEST_F(ConfigureFormTest, TheUdpSettingsAreTakenTogether) {
  Open();
  auto* set = Control<QPushButton>(Configuration(), "cmdSetUDP");
  EXPECT_FALSE(set->isEnabled()) << "nothing to set yet";
  auto* address = Control<QLineEdit>(Configuration(), "boxRemoteIP");
  address->setText("192.168.1.");
  EXPECT_FALSE(set->isEnabled());
  EXPECT_TRUE(Control<QLabel>(Configuration(), "LabelUdpFault")->isVisible());
  address->setText("192.168.1.20");
  EXPECT_FALSE(Control<QLabel>(Configuration(), "LabelUdpFault")->isVisible());
  Control<QRadioButton>(Configuration(), "OptionByteOrderReverse")->setChecked(true);
  Control<QCheckBox>(Configuration(), "CheckBlockUsel")->setChecked(true);
  EXPECT_EQ(General().RemoteIP, "127.0.0.1");
  set->click();
  EXPECT_EQ(General().RemoteIP, "192.168.1.20");
  EXPECT_EQ(General().ByteOrderReverse, -1);
  EXPECT_EQ(General().BlockUSEL, 1);
  Press(Control<QComboBox>(Configuration(), "ComboLights"), Qt::Key_Down);
  EXPECT_EQ(General().LightsSetting1, 0);
  EXPECT_EQ(General().LightsSetting2, 1);
}

// A file that is loaded names its own ports; the lines that were open must not go on as if nothing were.
TEST_F(ConfigureFormTest, TheSaveFormLoadsWithOtherPortsAndImports) {
  ConfigModel other = SmallModel();
  other.General.ComPortGS = 9;
  other.General.TransferInterval = 250;
  WriteConfig("Other.cfg", other);
  Open();
  const SerialPort& bus = program_->HardwareBus().Line();
  EXPECT_EQ(bus.State(), SerialState::Closed);
  Click("cmdSaveConfig");
  QWidget* save = Other("SaveConfig");
  ASSERT_NE(save, nullptr);
  EXPECT_EQ(Control<QLineEdit>(save, "FileName")->text(), "Default.cfg");
  EXPECT_EQ(Control<QListWidget>(save, "FileList")->count(), 2);
  Control<QLineEdit>(save, "FileName")->setText("Other.cfg");
  boxes_.answers = {kAnswerYes, kAnswerYes};
  ClickIn(save, "cmdLoad");
  EXPECT_EQ(bus.State(), SerialState::NotFound) << "nobody tried to open it";
  EXPECT_EQ(LabelText(Configuration(), "BoxCurrentComGS"), "COM 9");
  EXPECT_EQ(Control<QSlider>(Configuration(), "SliderXferTtimerProcess")->value(), 250);
  EXPECT_FALSE(program_->Model().ConfigChanged);
  General().TransferInterval = 100;
  Control<QCheckBox>(save, "ChkImportPartial0")->setChecked(true);
  ClickIn(save, "cmdImportPartial");
  EXPECT_EQ(General().TransferInterval, 250);
  ClickIn(save, "cmdSave");
  EXPECT_EQ(QDir().entryList({"Other.cfg.*.bak"}).size(), 1);
  Press(save, Qt::Key_Escape);
  Settle();
  EXPECT_EQ(Other("SaveConfig"), nullptr);
}

// What was changed, and what was chosen or typed but never set.
TEST_F(ConfigureFormTest, ClosingAsksAboutUnsavedChanges) {
  const std::function<void()> edits[] = {
      [this] { Click("CmdSet250"); },
      [this] { Control<QLineEdit>(Configuration(), "boxRemoteIP")->setText("192.168.1.2"); },
      [this] { Control<QRadioButton>(Configuration(), "OptionByteOrderReverse")->setChecked(true); },
      [this] { Control<QCheckBox>(Configuration(), "CheckBlockUsel")->setChecked(true); },
      [this] { Control<QComboBox>(Configuration(), "ComboComYoke2")->setCurrentIndex(4); }};
  for (const auto& edit : edits) {
    program_.reset();
    boxes_.asked.clear();
    Open();
    edit();
    // Another form shows the model anew: what was typed stays.
    program_->Configuration().Refresh();
    boxes_.answers = {kAnswerNo, kAnswerYes};
    Configuration()->close();
    ASSERT_NE(Configuration(), nullptr);
    EXPECT_TRUE(Configuration()->isVisible());
    Press(Configuration(), Qt::Key_Escape);
    EXPECT_EQ(Configuration(), nullptr);
    EXPECT_EQ(boxes_.asked, std::vector<std::string>(2, "Updates are not saved; Continue anyway?"));
    EXPECT_TRUE(Start()->isVisible());
  }
  // Typed and never set, it is gone; set and never saved, it is asked about again.
  Control<QPushButton>(Start(), "CmdConfigure")->click();
  EXPECT_EQ(Control<QComboBox>(Configuration(), "ComboComYoke2")->currentIndex(), 0);
  Configuration()->close();
  EXPECT_EQ(boxes_.asked.size(), 2u);
  for (const std::size_t asked : {3u, 4u}) {
    Control<QPushButton>(Start(), "CmdConfigure")->click();
    if (asked == 3) Click("CmdSet250");
    boxes_.answers = {kAnswerYes};
    Configuration()->close();
    EXPECT_EQ(boxes_.asked.size(), asked);
  }
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
  program_->Start().butOK_Click();
  ASSERT_NE(Status(), nullptr);
  EXPECT_FALSE(program_->Run().Running()) << "a new run is halted";
}

TEST_F(ConfigureFormTest, AClickOnAGaugeOpensItsDialog) {
  Open();
  auto* list = Control<QTreeWidget>(Configuration(), "Configlist");
  Click("cmdClearConfig");
  ASSERT_EQ(list->topLevelItemCount(), 1) << "it asked, and the answer was No";
  list->setCurrentItem(list->topLevelItem(0));
  Press(list, Qt::Key_Return);
  QWidget* dialog = Other("frmInstrument");
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(LabelText(dialog, "LabelGauge"), "007  Small gauge; Single Needle");
  // Typed, not chosen from the list.
  auto* function = Control<QComboBox>(dialog, "ComboFunction1");
  function->setEditText("(none)");
  Press(function->lineEdit(), Qt::Key_Return);
  EXPECT_EQ(program_->Model().Gauges[7].GaugeFunction1, 0);
  EXPECT_EQ(list->topLevelItem(0)->text(2), "Not Assigned");
  Control<QSpinBox>(dialog, "boxInstance1")->setValue(3);
  EXPECT_EQ(list->topLevelItem(0)->text(4), "3 #");
  Control<QCheckBox>(dialog, "Option128")->click();
  EXPECT_EQ(program_->Model().Gauges[7].GaugeSetting5, 0x80);

  boxes_.answers = {kAnswerYes, kAnswerYes};
  program_->Model().Gauges[9].GaugeType = 1;
  ClickIn(dialog, "cmdDelete");
  Settle();
  EXPECT_EQ(list->topLevelItemCount(), 1);
  EXPECT_EQ(Other("frmInstrument"), nullptr);
  Click("cmdClearConfig");
  EXPECT_EQ(list->topLevelItemCount(), 0);
}

TEST_F(ConfigureFormTest, APlateThatIsTypedIsCheckedAndAskedAbout) {
  Open();
  Click("cmdPlates");
  QWidget* form = Other("frmCalibrate");
  ASSERT_NE(form, nullptr);
  ClickIn(form, "CmdCreateNewPlate");
  const auto type = [&](const char* name, const char* text) {
    auto* edit = Control<QLineEdit>(form, name);
    edit->clear();
    for (const char* c = text; *c != 0; ++c) Press(edit, 0, QString(QChar(*c)));
  };
  type("CalMinimumValue", "0");
  type("boxNeedle0", "20");
  type("boxValue1", "50");
  EXPECT_EQ(LabelText(form, "LabelCheck"), "At valuebox 1: Needle position is empty; Please correct.");
  type("boxNeedle1", "129");
  EXPECT_EQ(LabelText(form, "LabelCheck"), "");
  type("boxValue3", "99,5");
  type("boxNeedle3", "1079");
  EXPECT_EQ(LabelText(form, "LabelCheck"), "");
  EXPECT_EQ(Control<QLineEdit>(form, "boxValue2")->placeholderText(), "74.75") << "seen before it is stored";
  type("boxNeedle3", "1080");
  EXPECT_TRUE(Control<QLineEdit>(form, "boxNeedle3")->property("wrong").toBool());
  EXPECT_EQ(LabelText(form, "LabelCheck"),
            "At valuebox 3: Needle position must be 0 to 1079; Please correct.");
  boxes_.answers = {kAnswerNo, kAnswerYes};
  form->close();
  ASSERT_NE(Other("frmCalibrate"), nullptr);
  form->close();
  EXPECT_EQ(boxes_.asked, std::vector<std::string>(2, "Updates are not saved; Continue anyway?"));
  EXPECT_EQ(program_->Model().PlateCount(), 1);
}

TEST_F(ConfigureFormTest, TheTestConsoleSendsAndAdds) {
  Open();
  Click("cmdTestGauges");
  QWidget* form = Other("frmTestGauges");
  ASSERT_NE(form, nullptr);
  ClickIn(form, "CmdPlusTen");
  ClickIn(form, "cmdplusone");
  EXPECT_EQ(Control<QLineEdit>(form, "ManualGaugeID")->text(), "11");
  ClickIn(form, "cmdPollGauge");
  EXPECT_EQ(LabelText(form, "Text7"), "-- No reply --");
  auto* kinds = Control<QComboBox>(form, "ComboGaugeType");
  kinds->setCurrentIndex(kinds->findData(101));
  boxes_.answers = {kAnswerYes};
  ClickIn(form, "cmdAddToConfig");
  EXPECT_EQ(program_->Model().Gauges[11].GaugeType, 101);
  EXPECT_EQ(Control<QTreeWidget>(Configuration(), "Configlist")->topLevelItemCount(), 2);
}

// The adapters with what one has to know of them, where none can be opened.
TEST_F(ConfigureFormTest, AdaptersAreOfferedWithTheirState) {
  struct Plugged final : SerialDevices {
    std::vector<SerialDevice> devices;
    std::vector<SerialDevice> List() const override { return devices; }
    bool Assign(int, const SerialDevice&, std::string&) override { return false; }
  } plugged;
  SerialDevice busy, closed;
  busy.path = "/dev/ttyUSB0";
  busy.adapter = "FT232R USB UART";
  busy.serialNumber = "A50285BI";
  busy.mayOpen = true;
  busy.users = {"minicom (4711)"};
  closed.path = "/dev/ttyUSB7";
  closed.adapter = "Torvex interface";
  closed.group = "dialout";
  plugged.devices = {busy, closed};
  devices_ = &plugged;
  Open();
  auto* ports = Control<QComboBox>(Configuration(), "ComboComGS");
  EXPECT_EQ(ports->itemText(ports->findData(5)),
            "COM 5  (FT232R USB UART, serial A50285BI, /dev/ttyUSB0, in use by minicom (4711))");
  Click("cmdAdapters");
  QWidget* form = Other("frmAdapters");
  ASSERT_NE(form, nullptr);
  auto* list = Control<QTreeWidget>(form, "ListAdapters");
  ASSERT_EQ(list->topLevelItemCount(), 2);
  list->setCurrentItem(list->topLevelItem(1));
  EXPECT_EQ(LabelText(form, "LabelAdvice"),
            "Torvex interface, /dev/ttyUSB7: no permission; install the rule 70-torvex-cockpit.rules, or "
            "type: sudo adduser $USER dialout, and log in again");
  EXPECT_EQ(Control<QComboBox>(form, "ComboAssign")->currentText(), "COM 12") << "where it is already";
  ExpectNothingClipped(form);
  plugged.devices.clear();
  ClickIn(form, "cmdRefresh");
  EXPECT_EQ(LabelText(form, "LabelAdvice"), "No serial adapter is plugged in.");
  EXPECT_FALSE(Control<QPushButton>(form, "cmdAssignAdapter")->isEnabled());
}

TEST_F(ConfigureFormTest, OnePortForTwoGroupsIsSaid) {
  Open();
  for (const auto& [choice, button] :
       {std::pair{"ComboComGS", "cmdSetCommport"}, {"ComboComEC", "cmdSetCommportEC"}}) {
    auto* ports = Control<QComboBox>(Configuration(), choice);
    ports->setCurrentIndex(ports->findData(9));
    Click(button);
  }
  const std::string advice = LabelText(Configuration(), "LabelComAdvice");
  EXPECT_NE(advice.find("Gauge bus: COM 9 not found"), std::string::npos) << advice;
  EXPECT_NE(advice.find("Engine cluster: COM 9 is given to: Gauge bus as well; only one can have it"),
            std::string::npos)
      << advice;
}

// Every form can be worked by keyboard, says what each control does, and shows it whole.
TEST_F(ConfigureFormTest, KeysTipsAndTexts) {
  Open();
  Control<QComboBox>(Configuration(), "ComboLights")->setFocus();
  ExpectKeysAndTips(Configuration());
  ExpectNothingClipped(Configuration());
  const auto look = [this](const char* name, bool keys) {
    ASSERT_NE(Other(name), nullptr) << name;
    if (keys) ExpectKeysAndTips(Other(name));
    ExpectNothingClipped(Other(name));
    Press(Other(name), Qt::Key_Escape);
    Settle();
    EXPECT_EQ(Other(name), nullptr) << name;
  };
  for (const auto& [button, name] : {std::pair{"cmdSaveConfig", "SaveConfig"},
                                     {"cmdPlates", "frmCalibrate"},
                                     {"cmdTestGauges", "frmTestGauges"},
                                     {"cmdAdapters", "frmAdapters"}}) {
    Click(button);
    look(name, name != std::string("frmTestGauges"));
  }
  const std::set<int> distinct{3, 101, 110, 120, 125};
  for (const int code : {1,   2,   3,   8,   10,  101, 103, 104, 105, 106, 108, 109,
                         110, 112, 113, 120, 121, 122, 123, 124, 125, 130, 140, 77}) {
    program_->Model().Gauges[7].GaugeType = static_cast<Byte>(code);
    program_->Configuration().OpenGauge(7);
    look("frmInstrument", distinct.count(code) > 0);
  }
}

}  // namespace
}  // namespace tvx
