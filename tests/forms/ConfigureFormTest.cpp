#include "tests/forms/FormsRig.h"
#include "tests/platform/PluggedIn.h"

namespace tvx {
namespace {

const std::string kAskUnsaved = "Updates are not saved; Continue anyway?";

struct ConfigureFormTest : FormsTest {
  void Click(const char* name) { tvx::Click(Configuration(), name); }
  // Another form of the configuration, where it is shown.
  QWidget* Other(const char* name) {
    auto* form = Configuration()->findChild<QWidget*>(name);
    return form != nullptr && form->isVisible() ? form : nullptr;
  }
  // Presses the button that opens it.
  QWidget* Open(const char* button, const char* name) {
    Click(button);
    EXPECT_NE(Other(name), nullptr) << name;
    return Other(name);
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
  Configure();
  EXPECT_FALSE(program_->Timers().WaitForAutostart.Enabled()) << "nothing starts behind it";
  EXPECT_FALSE(program_->Timers().TimerWaitForFS.Enabled());
  int number = 3;
  for (const auto& row : rows) {
    const std::string port = std::to_string(++number);
    Play(Configuration(), {{"", "", row.button, "button, grey"}, {row.choice, port.c_str()}});
    EXPECT_EQ(General().*row.field, 0) << "taken before " << row.button;
    Play(Configuration(), {{row.button, "", row.current, "COM " + port}});
    EXPECT_EQ(General().*row.field, number) << row.button;
  }
  EXPECT_TRUE(program_->Model().ConfigChanged);
}

TEST_F(ConfigureFormTest, ASimulatorOfTheNetworkIsTakenAtOnceAndFollowedOnRequest) {
  QWidget* form = Configure();
  EXPECT_EQ(StateOf(form, "CheckFollow"), "off, grey") << "no simulator is known by its name";
  EXPECT_FALSE(LabelText(form, "LabelFound").empty());
  beacons_.Deliver(BeaconBytes("SIM-PC", 1, 49100), "10.0.0.7");
  beacons_.Deliver(BeaconBytes("VISUAL", 2), "10.0.0.9");
  Play(form, {{"boxLocalPort", "50999"}, {"FoundTake0", "", "boxLocalPort", "50999"}, {"CheckFollow", "on"}});
  EXPECT_EQ((Texts{General().RemoteIP, General().RemotePort, General().LocalPort}),
            (Texts{"10.0.0.7", "49100", "50992"}))
      << "the last is typed, and not set yet";
  EXPECT_TRUE(Control<QLabel>(form, "FoundTaken0")->isVisible());
  Set(form, "CheckHearAll", "on");
  EXPECT_EQ(General().GeneralText6, "");
  Click("cmdSetUDP");
  EXPECT_EQ(General().Setting(kHearAllSetting), "yes");
  EXPECT_EQ(General().Setting(kFollowSetting), "SIM-PC");
  Play(form, {{"boxRemoteIP", "10.0.0.99", "CheckFollow", "off, grey"},  // who is there is not known
              {"boxRemoteIP", "10.0.0.7", "CheckFollow", "on"},
              {"", "", "cmdSetUDP", "button, grey"},             // as it is set
              {"FoundTake1", "", "CheckFollow", "off, grey"}});  // it flies nothing itself
  EXPECT_EQ(General().Setting(kFollowSetting), "") << "another one is in use now";
  beacons_.Deliver(BeaconBytes("A-VERY-LONG-NAME-OF-A-COMPUTER", 2, 49100), "192.168.100.100");
  ExpectKeysAndTips(form);
  ExpectWholeAtAnySize(form);
  for (const char* line : {"FoundLine0", "FoundLine1", "FoundLine2"}) {
    const auto* label = Control<QLabel>(form, line);
    EXPECT_GE(label->height(), label->heightForWidth(label->width())) << line;
  }
}

TEST_F(ConfigureFormTest, TheUdpSettingsAreTakenTogether) {
  QWidget* form = Configure();
  Play(form, {{"", "", "cmdSetUDP", "button, grey"},  // nothing to set yet
              {"boxRemoteIP", "192.168.1.300", "cmdSetUDP", "button, grey"},
              {"boxRemoteIP", "192.168.1.20", "cmdSetUDP", "button"},
              {"boxRemoteIP", "-sim", "cmdSetUDP", "button, grey"},
              {"", "", "LabelUdpFault",
               "The address is four numbers, each 0 to 255, with points between, or a computer's name."},
              {"boxRemoteIP", "sim-pc.local", "LabelUdpFault", "hidden"},
              {"OptionByteOrderReverse", "on"},
              {"CheckBlockUsel", "on"}});
  EXPECT_EQ(General().RemoteIP, "127.0.0.1");
  Click("cmdSetUDP");
  EXPECT_EQ(General().RemoteIP, "sim-pc.local");
  EXPECT_EQ(std::tuple(General().ByteOrderReverse, General().BlockUSEL), std::tuple(-1, 1));
  Press(Control<QComboBox>(form, "ComboLights"), Qt::Key_Down);
  EXPECT_EQ(std::tuple(General().LightsSetting1, General().LightsSetting2), std::tuple(0, 1));
}

// A file that is loaded names its own ports; the lines that were open must not go on as if nothing were.
TEST_F(ConfigureFormTest, TheSaveFormLoadsWithOtherPortsAndImports) {
  ConfigModel other = SmallModel();
  other.General.ComPortGS = 9;
  other.General.TransferInterval = 250;
  WriteConfig("Other.cfg", other);
  Configure();
  const SerialPort& bus = program_->HardwareBus().Line();
  EXPECT_EQ(bus.State(), SerialState::Closed);
  QWidget* save = Open("cmdSaveConfig", "SaveConfig");
  EXPECT_EQ(Control<QListWidget>(save, "FileList")->count(), 2);
  boxes_.answers = {kAnswerYes, kAnswerYes};
  Play(save, {{"", "", "FileName", "Default.cfg"}, {"FileName", "Other.cfg"}, {"cmdLoad"}});
  EXPECT_EQ(bus.State(), SerialState::NotFound) << "nobody tried to open it";
  Play(Configuration(), {{"", "", "BoxCurrentComGS", "COM 9"}, {"", "", "SliderXferTtimerProcess", "250"}});
  EXPECT_FALSE(program_->Model().ConfigChanged);
  General().TransferInterval = 100;
  Play(save, {{"ChkImportPartial0", "on"}, {"cmdImportPartial"}});
  EXPECT_EQ(General().TransferInterval, 250);
  Set(save, "cmdSave");
  EXPECT_EQ(QDir().entryList({"Other.cfg.*.bak"}).size(), 1);
  Press(save, Qt::Key_Escape);
  Settle();
  EXPECT_EQ(Other("SaveConfig"), nullptr);
}

// What was changed, and what was chosen or typed but never set.
TEST_F(ConfigureFormTest, ClosingAsksAboutUnsavedChanges) {
  const Move edits[] = {{"CmdSet250"},
                        {"boxRemoteIP", "192.168.1.2"},
                        {"OptionByteOrderReverse", "on"},
                        {"CheckBlockUsel", "on"},
                        {"ComboComYoke2", "4"}};
  for (const Move& edit : edits) {
    SCOPED_TRACE(edit.control);
    program_.reset();
    boxes_.asked.clear();
    Configure();
    Play(Configuration(), {edit});
    // Another form shows the model anew: what was typed stays.
    program_->Configuration().Refresh();
    boxes_.answers = {kAnswerNo, kAnswerYes};
    Configuration()->close();
    ASSERT_NE(Configuration(), nullptr);
    EXPECT_TRUE(Configuration()->isVisible());
    Press(Configuration(), Qt::Key_Escape);
    EXPECT_EQ(Configuration(), nullptr);
    EXPECT_EQ(boxes_.asked, Texts(2, kAskUnsaved));
    EXPECT_TRUE(Start()->isVisible());
  }
  // Typed and never set, it is gone; set and never saved, it is asked about again.
  for (const std::size_t asked : {2u, 3u, 4u}) {
    tvx::Click(Start(), "CmdConfigure");
    EXPECT_EQ(Control<QComboBox>(Configuration(), "ComboComYoke2")->currentIndex(), 0);
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
  tvx::Click(Status(), "CmdConfig");
  ASSERT_NE(Configuration(), nullptr);
  EXPECT_EQ(Status(), nullptr);
  EXPECT_TRUE(Start()->isVisible());
  EXPECT_EQ(program_->Model().ConfigFileName, "Other.cfg");
  Click("CmdClose");
  EXPECT_EQ(program_->Start().View().FileName, "Default.cfg");
  EXPECT_FALSE(program_->Start().View().CountdownVisible);
  program_->Start().butOK_Click();
  ASSERT_NE(Status(), nullptr);
  EXPECT_FALSE(program_->Run().Running()) << "a new run is halted";
}

TEST_F(ConfigureFormTest, AClickOnAGaugeOpensItsDialog) {
  Configure();
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
  Play(dialog, {{"boxInstance1", "3"}, {"Option128", "on"}});
  const GaugeRecord& gauge = program_->Model().Gauges[7];
  EXPECT_EQ(std::tuple(gauge.GaugeFunction1, gauge.GaugeSetting5), std::tuple(0, 0x80));
  EXPECT_EQ(list->topLevelItem(0)->text(2), "Not Assigned");
  EXPECT_EQ(list->topLevelItem(0)->text(4), "3 #");

  boxes_.answers = {kAnswerYes, kAnswerYes};
  program_->Model().Gauges[9].GaugeType = 1;
  tvx::Click(dialog, "cmdDelete");
  EXPECT_EQ(list->topLevelItemCount(), 1);
  EXPECT_EQ(Other("frmInstrument"), nullptr);
  Click("cmdClearConfig");
  EXPECT_EQ(list->topLevelItemCount(), 0);
}

TEST_F(ConfigureFormTest, APlateThatIsTypedIsCheckedAndAskedAbout) {
  Configure();
  QWidget* form = Open("cmdPlates", "frmCalibrate");
  tvx::Click(form, "CmdCreateNewPlate");
  const struct {
    const char *box, *typed;  // key by key
    std::string check;
  } rows[] = {{"CalMinimumValue", "0", "Minimum and maximum values are equal; Please correct."},
              {"boxNeedle0", "20", "Minimum and maximum values are equal; Please correct."},
              {"boxValue1", "50", "At valuebox 1: Needle position is empty; Please correct."},
              {"boxNeedle1", "129", ""},
              {"boxValue3", "99,5", "At valuebox 3: Needle position is empty; Please correct."},
              {"boxNeedle3", "1079", ""},
              {"boxNeedle3", "1080", "At valuebox 3: Needle position must be 0 to 1079; Please correct."}};
  for (const auto& row : rows) {
    auto* edit = Control<QLineEdit>(form, row.box);
    edit->clear();
    for (const char* key = row.typed; *key != 0; ++key) Press(edit, 0, QString(QChar(*key)));
    EXPECT_EQ(LabelText(form, "LabelCheck"), row.check) << row.box << ' ' << row.typed;
  }
  EXPECT_EQ(Control<QLineEdit>(form, "boxValue2")->placeholderText(), "74.75") << "seen before it is stored";
  EXPECT_EQ(StateOf(form, "boxNeedle3"), "1080, wrong");
  boxes_.answers = {kAnswerNo, kAnswerYes};
  form->close();
  ASSERT_NE(Other("frmCalibrate"), nullptr);
  form->close();
  EXPECT_EQ(boxes_.asked, Texts(2, kAskUnsaved));
  EXPECT_EQ(program_->Model().PlateCount(), 1);
}

TEST_F(ConfigureFormTest, TheTestConsoleSendsAndAdds) {
  Configure();
  boxes_.answers = {kAnswerYes};
  Play(Open("cmdTestGauges", "frmTestGauges"), {{"CmdPlusTen"},
                                                {"cmdplusone", "", "ManualGaugeID", "11"},
                                                {"cmdPollGauge", "", "Text7", "-- No reply --"},
                                                {"ComboGaugeType", "101"},
                                                {"cmdAddToConfig"}});
  EXPECT_EQ(program_->Model().Gauges[11].GaugeType, 101);
  EXPECT_EQ(Control<QTreeWidget>(Configuration(), "Configlist")->topLevelItemCount(), 2);
}

// The adapters with what one has to know of them, where none can be opened.
TEST_F(ConfigureFormTest, AdaptersAreOfferedWithTheirState) {
  PluggedIn plugged;
  plugged.Add("/dev/ttyUSB0", "FT232R USB UART", "A50285BI").users = {"minicom (4711)"};
  SerialDevice& closed = plugged.Add("/dev/ttyUSB7", "Torvex interface");
  closed.mayOpen = false;
  closed.group = "dialout";
  devices_ = &plugged;
  Configure();
  auto* ports = Control<QComboBox>(Configuration(), "ComboComGS");
  EXPECT_EQ(ports->itemText(ports->findData(5)),
            "COM 5  (FT232R USB UART, serial A50285BI, /dev/ttyUSB0, in use by minicom (4711))");
  QWidget* form = Open("cmdAdapters", "frmAdapters");
  auto* list = Control<QTreeWidget>(form, "ListAdapters");
  ASSERT_EQ(list->topLevelItemCount(), 2);
  list->setCurrentItem(list->topLevelItem(1));
  EXPECT_EQ(LabelText(form, "LabelAdvice"),
            "Torvex interface, /dev/ttyUSB7: no permission; install the rule 70-torvex-cockpit.rules, or "
            "type: sudo adduser $USER dialout, and log in again");
  EXPECT_EQ(StateOf(form, "ComboAssign"), "COM 12") << "where it is already";
  ExpectWholeAtAnySize(form);
  plugged.devices.clear();
  Play(form, {{"cmdRefresh", "", "LabelAdvice", "No serial adapter is plugged in."},
              {"", "", "cmdAssignAdapter", "button, grey"}});
}

TEST_F(ConfigureFormTest, OnePortForTwoGroupsIsSaid) {
  Configure();
  Play(Configuration(), {{"ComboComGS", "9"}, {"cmdSetCommport"}, {"ComboComEC", "9"}, {"cmdSetCommportEC"}});
  for (const char* words : {"Gauge bus: COM 9 not found",
                            "Engine cluster: COM 9 is given to: Gauge bus as well; only one can have it"})
    EXPECT_TRUE(Holds(LabelText(Configuration(), "LabelComAdvice"), words));
}

// Every form can be worked by keyboard, says what each control does, and shows it whole.
TEST_F(ConfigureFormTest, KeysTipsAndTexts) {
  Configure();
  Control<QComboBox>(Configuration(), "ComboLights")->setFocus();
  ExpectKeysAndTips(Configuration());
  ExpectWholeAtAnySize(Configuration());
  const auto look = [this](const char* name, bool keys) {
    ASSERT_NE(Other(name), nullptr) << name;
    if (keys) ExpectKeysAndTips(Other(name));
    ExpectWholeAtAnySize(Other(name));
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
