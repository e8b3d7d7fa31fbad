#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QRadioButton>
#include <QSpinBox>
#include <QTreeWidget>
#include <functional>
#include <map>

#include "forms/FormsRig.h"
#include "platform/linux/LinuxSerialDevices.h"

namespace tvx {
namespace {

class FakeDevices final : public SerialDevices {
 public:
  std::vector<SerialDevice> devices;
  std::vector<SerialDevice> List() const override { return devices; }
  bool Assign(int comNumber, const SerialDevice& device, std::string& error) override {
    return links_.Assign(comNumber, device, error);
  }

 private:
  LinuxSerialDevices links_;
};

// What a user can press, type into or choose from: each has a tip, a key of its own where it has one, and the
// round of Tab leads to it.
void ExpectKeysAndTips(QWidget* form) {
  std::map<QChar, std::string> keys;
  const auto addKey = [&](const QString& text, const QString& name) {
    const auto at = text.indexOf('&');
    if (at < 0 || at + 1 >= text.size() || text[at + 1] == '&') return;
    const auto [other, fresh] = keys.emplace(text[at + 1].toLower(), name.toStdString());
    EXPECT_TRUE(fresh) << name.toStdString() << " has the key of " << other->second;
  };
  const std::set<std::string> reached = TabRound(form);
  for (QWidget* control : form->findChildren<QWidget*>()) {
    const QString name = control->objectName();
    if (!control->isVisible() || name.startsWith("qt_")) continue;
    if (auto* label = qobject_cast<QLabel*>(control)) {
      if (label->buddy() != nullptr) addKey(label->text(), name);
      continue;
    }
    auto* button = qobject_cast<QAbstractButton*>(control);
    if (button != nullptr) addKey(button->text(), name);
    const bool input = button != nullptr || qobject_cast<QLineEdit*>(control) ||
                       qobject_cast<QComboBox*>(control) || qobject_cast<QAbstractSpinBox*>(control) ||
                       qobject_cast<QSlider*>(control) || qobject_cast<QAbstractItemView*>(control);
    if (!input || !control->isEnabled() || name.isEmpty()) continue;
    EXPECT_FALSE(control->toolTip().isEmpty()) << name.toStdString();
    // Of options that exclude each other Tab leads to the chosen one.
    const bool unchosen = qobject_cast<QRadioButton*>(control) && !button->isChecked();
    EXPECT_TRUE(unchosen || reached.count(name.toStdString()) > 0) << "Tab passes " << name.toStdString();
  }
}

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

TEST_F(ConfigureFormTest, TheSaveFormSavesLoadsAndImports) {
  Open();
  Click("CmdSet250");
  Click("cmdSaveConfig");
  QWidget* save = Other("SaveConfig");
  ASSERT_NE(save, nullptr);
  EXPECT_EQ(Control<QLineEdit>(save, "FileName")->text(), "Default.cfg");
  ClickIn(save, "cmdSave");
  EXPECT_EQ(boxes_.shown, std::vector<std::string>{"File saved as: Default.cfg"});
  EXPECT_TRUE(QFile::exists("Default.cfg.bak"));
  ConfigModel read;
  read.ConfigFileName = "Default.cfg";
  FakeMessageBoxes quiet;
  ConfigFile(read, quiet).LoadConfigFile();
  EXPECT_FALSE(read.ConfigLoadFailed);
  EXPECT_EQ(read.General.TransferInterval, 250);
  EXPECT_TRUE(quiet.asked.empty()) << quiet.asked.front();

  Control<QLineEdit>(save, "FileName")->setText("Second.cfg");
  ClickIn(save, "cmdSave");
  EXPECT_EQ(LabelText(Configuration(), "CurrentConfigFile"), "Configuration file: Second.cfg");
  EXPECT_EQ(Control<QListWidget>(save, "FileList")->count(), 2);
  General().TransferInterval = 100;
  boxes_.answers = {kAnswerYes};
  ClickIn(save, "cmdLoad");
  EXPECT_EQ(Control<QSlider>(Configuration(), "SliderXferTtimerProcess")->value(), 250);

  General().TransferInterval = 100;
  Control<QCheckBox>(save, "ChkImportPartial0")->setChecked(true);
  boxes_.answers = {kAnswerYes};
  ClickIn(save, "cmdImportPartial");
  EXPECT_EQ(General().TransferInterval, 250);
  boxes_.texts = {"33"};
  ClickIn(save, "cmdSetAsStartup");
  EXPECT_EQ(LabelText(save, "LabelStartup"), "Start-up: Second.cfg, 33 s after the simulator answers");
  Press(save, Qt::Key_Escape);
  Settle();
  EXPECT_EQ(Other("SaveConfig"), nullptr);
}

// What was changed, and what was chosen or typed but never set.
TEST_F(ConfigureFormTest, ClosingAsksAboutUnsavedChanges) {
  const std::function<void()> edits[] = {
      [this] { Click("CmdSet250"); },
      [this] { Control<QLineEdit>(Configuration(), "boxRemoteIP")->setText("192.168.1.2"); },
      [this] { Control<QLineEdit>(Configuration(), "boxLocalPort")->clear(); },
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
  for (const char* name : {"CmdConfigure", "CmdConfigure"}) {
    Control<QPushButton>(Start(), name)->click();
    if (General().TransferInterval != 250) Click("CmdSet250");
    boxes_.answers = {kAnswerYes};
    Configuration()->close();
  }
  EXPECT_EQ(boxes_.asked.size(), 4u);
}

TEST_F(ConfigureFormTest, WhatCannotBeIsSaidWhileItIsTyped) {
  Open();
  auto* set = Control<QPushButton>(Configuration(), "cmdSetUDP");
  EXPECT_FALSE(set->isEnabled()) << "nothing to set yet";
  auto* address = Control<QLineEdit>(Configuration(), "boxRemoteIP");
  address->setText("192.168.1.");
  EXPECT_FALSE(set->isEnabled());
  EXPECT_EQ(LabelText(Configuration(), "LabelUdpFault"),
            "The address is four numbers, each 0 to 255, with points between.");
  address->setText("192.168.1.3");
  EXPECT_TRUE(set->isEnabled());
  EXPECT_FALSE(Control<QLabel>(Configuration(), "LabelUdpFault")->isVisible());
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

TEST_F(ConfigureFormTest, AClickOnAGaugeOpensItsDialog) {
  Open();
  auto* list = Control<QTreeWidget>(Configuration(), "Configlist");
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

  ClickIn(dialog, "CmdCalibrate1");
  QWidget* calibrate = dialog->findChild<QWidget*>("frmCalibrate");
  ASSERT_NE(calibrate, nullptr);
  EXPECT_EQ(calibrate->windowTitle(), "Current Plate Calibration Settings");
  EXPECT_EQ(LabelText(calibrate, "LabelFunction"), "Simulator Function Nr: 000");
  Press(calibrate, Qt::Key_Escape);
  Settle();
  boxes_.answers = {kAnswerYes};
  ClickIn(dialog, "cmdDelete");
  Settle();
  EXPECT_EQ(list->topLevelItemCount(), 0);
  EXPECT_EQ(Other("frmInstrument"), nullptr);
}

TEST_F(ConfigureFormTest, APlateIsMadeTakenFromTheNeedleAndSaved) {
  Open();
  Click("cmdPlates");
  QWidget* form = Other("frmCalibrate");
  ASSERT_NE(form, nullptr);
  ClickIn(form, "CmdCreateNewPlate");
  EXPECT_EQ(form->windowTitle(), "Creating New Plate Calibration");
  const auto type = [&](const char* name, const char* text) {
    auto* edit = Control<QLineEdit>(form, name);
    edit->clear();
    for (const char* c = text; *c != 0; ++c) Press(edit, 0, QString(QChar(*c)));
  };
  type("CalMinimumValue", "0");
  type("boxNeedle0", "20");
  type("boxValue1", "50");
  for (const char* jog : {"cmdJogPlus100", "cmdJogPlus10", "cmdJogMinus1"}) ClickIn(form, jog);
  EXPECT_EQ(LabelText(form, "BoxPosition"), "129");
  EXPECT_EQ(LabelText(form, "LabelCheck"), "At valuebox 1: Needle position is empty; Please correct.");
  ClickIn(form, "cmdTakeNeedle");
  EXPECT_EQ(LabelText(form, "LabelCheck"), "");
  boxes_.answers = {kAnswerNo};
  form->close();
  EXPECT_EQ(boxes_.asked.back(), "Updates are not saved; Continue anyway?");
  ASSERT_NE(Other("frmCalibrate"), nullptr);
  type("PlateName", "Fuel");
  ClickIn(form, "CmdSaveNewPlate");
  ASSERT_EQ(program_->Model().PlateCount(), 2);
  EXPECT_EQ(program_->Model().Plates[1].Name, "Fuel");
  EXPECT_EQ(program_->Model().Plates[1].Position[3], 129);
  form->close();
  Settle();
  EXPECT_EQ(Other("frmCalibrate"), nullptr);
}

TEST_F(ConfigureFormTest, TheTestConsoleSendsAndAdds) {
  Open();
  Click("cmdTestGauges");
  QWidget* form = Other("frmTestGauges");
  ASSERT_NE(form, nullptr);
  ClickIn(form, "cmdPollGauge");
  EXPECT_EQ(boxes_.shown.back(), "No new GaugeID");
  ClickIn(form, "CmdPlusTen");
  ClickIn(form, "cmdplusone");
  EXPECT_EQ(Control<QLineEdit>(form, "ManualGaugeID")->text(), "11");
  ClickIn(form, "cmdPollGauge");
  EXPECT_EQ(LabelText(form, "Text7"), "-- No reply --");
  EXPECT_TRUE(form->isVisible());
  auto* kinds = Control<QComboBox>(form, "ComboGaugeType");
  kinds->setCurrentIndex(kinds->findData(101));
  boxes_.answers = {kAnswerYes};
  ClickIn(form, "cmdAddToConfig");
  EXPECT_EQ(program_->Model().Gauges[11].GaugeType, 101);
  EXPECT_EQ(Control<QTreeWidget>(Configuration(), "Configlist")->topLevelItemCount(), 2);
}

TEST_F(ConfigureFormTest, WithoutAnOpenBusTheSearchSaysWhy) {
  Open();
  Click("cmdStartTest");
  EXPECT_EQ(boxes_.shown.back(),
            "The gauge bus cannot be searched. not used: no COM port is chosen in the configuration");
}

// The adapters with what one has to know of them, and the link that makes one a port.
TEST_F(ConfigureFormTest, AdaptersAreOfferedWithTheirStateAndAssigned) {
  FakeDevices plugged;
  plugged.devices = {{.path = "/dev/ttyUSB0",
                      .stableName = {},
                      .adapter = "FT232R USB UART",
                      .serialNumber = "A50285BI",
                      .group = "dialout",
                      .mayOpen = true,
                      .user = "minicom (4711)"},
                     {.path = "/dev/ttyUSB7",
                      .stableName = "/dev/serial/by-id/usb-Torvex-if00",
                      .adapter = "Torvex interface",
                      .serialNumber = {},
                      .group = "dialout",
                      .mayOpen = false,
                      .user = {}}};
  devices_ = &plugged;
  Open();
  const auto offered = [this](int number) {
    auto* ports = Control<QComboBox>(Configuration(), "ComboComGS");
    return ports->itemText(ports->findData(number)).toStdString();
  };
  EXPECT_EQ(offered(5), "COM 5  (FT232R USB UART, serial A50285BI, /dev/ttyUSB0, in use by minicom (4711))");
  EXPECT_EQ(offered(6), "COM 6");
  Click("cmdAdapters");
  QWidget* form = Other("frmAdapters");
  ASSERT_NE(form, nullptr);
  auto* list = Control<QTreeWidget>(form, "ListAdapters");
  ASSERT_EQ(list->topLevelItemCount(), 2);
  list->setCurrentItem(list->topLevelItem(1));
  EXPECT_EQ(
      LabelText(form, "LabelAdvice"),
      "Torvex interface, /dev/ttyUSB7: no permission; type: sudo adduser $USER dialout, and log in again");
  auto* number = Control<QComboBox>(form, "ComboAssign");
  EXPECT_EQ(number->currentText(), "COM 12") << "where it is already";
  number->setCurrentIndex(number->findData(6));
  ExpectNothingClipped(form);
  ClickIn(form, "cmdAssignAdapter");
  EXPECT_EQ(QFile::symLinkTarget("comports/com6"), "/dev/serial/by-id/usb-Torvex-if00");
  EXPECT_EQ(list->topLevelItem(1)->text(3), "COM 6, COM 12");
  EXPECT_EQ(
      offered(6),
      "COM 6  (Torvex interface, /dev/ttyUSB7, no permission; type: sudo adduser $USER dialout, and log "
      "in again)");
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

// A file that is loaded names its own ports; the lines that were open must not go on as if nothing were.
TEST_F(ConfigureFormTest, AFileWithOtherPortsOpensThose) {
  ConfigModel other = SmallModel();
  other.General.ComPortGS = 9;
  WriteConfig("Other.cfg", other);
  Open();
  const SerialPort& bus = program_->HardwareBus().PortOf(HardwareGroup::GaugeBus);
  EXPECT_EQ(bus.State(), SerialState::Closed);
  Click("cmdSaveConfig");
  Control<QLineEdit>(Other("SaveConfig"), "FileName")->setText("Other.cfg");
  boxes_.answers = {kAnswerYes};
  ClickIn(Other("SaveConfig"), "cmdLoad");
  EXPECT_EQ(bus.State(), SerialState::NotFound) << "nobody tried to open it";
  EXPECT_EQ(LabelText(Configuration(), "BoxCurrentComGS"), "COM 9");
  EXPECT_FALSE(program_->Model().ConfigChanged);
}

// Every form can be worked by keyboard, and says what each control does.
TEST_F(ConfigureFormTest, KeysAreUniqueAndEverythingHasATip) {
  Open();
  Control<QComboBox>(Configuration(), "ComboLights")->setFocus();
  ExpectKeysAndTips(Configuration());
  for (const auto& [button, name] : {std::pair{"cmdSaveConfig", "SaveConfig"},
                                     {"cmdPlates", "frmCalibrate"},
                                     {"cmdAdapters", "frmAdapters"}}) {
    Click(button);
    ASSERT_NE(Other(name), nullptr) << name;
    ExpectKeysAndTips(Other(name));
    Press(Other(name), Qt::Key_Escape);
    Settle();
  }
  for (const int code : {3, 101, 110, 120, 125}) {
    program_->Model().Gauges[7].GaugeType = static_cast<Byte>(code);
    program_->Configuration().OpenGauge(7);
    ExpectKeysAndTips(Other("frmInstrument"));
    Press(Other("frmInstrument"), Qt::Key_Escape);
    Settle();
  }
}

TEST_F(ConfigureFormTest, NothingIsClipped) {
  Open();
  ExpectNothingClipped(Configuration());
  const char* const openers[][2] = {{"cmdSaveConfig", "SaveConfig"},
                                    {"cmdPlates", "frmCalibrate"},
                                    {"cmdTestGauges", "frmTestGauges"},
                                    {"cmdAdapters", "frmAdapters"}};
  for (const auto& [button, name] : openers) {
    Click(button);
    ASSERT_NE(Other(name), nullptr) << name;
    ExpectNothingClipped(Other(name));
    Press(Other(name), Qt::Key_Escape);
    Settle();
    EXPECT_EQ(Other(name), nullptr) << name;
  }
}

// Every kind of instrument has a dialog that can be shown.
TEST_F(ConfigureFormTest, EveryInstrumentsDialogShows) {
  Open();
  for (const int code : {1,   2,   3,   8,   10,  101, 103, 104, 105, 106, 108, 109,
                         110, 112, 113, 120, 121, 122, 123, 124, 125, 130, 140, 77}) {
    program_->Model().Gauges[7].GaugeType = static_cast<Byte>(code);
    program_->Configuration().OpenGauge(7);
    ASSERT_NE(Other("frmInstrument"), nullptr) << code;
    ExpectNothingClipped(Other("frmInstrument"));
    Press(Other("frmInstrument"), Qt::Key_Escape);
    Settle();
  }
}

}  // namespace
}  // namespace tvx
