// The Function editor, the list and the test of Functions, and the test console, by their controls' names.
#include <QListView>
#include <QStackedWidget>
#include <QTimerEvent>

#include "config/NameTables.h"
#include "simlink/console/forms/TestXplaneInterfaceForm.h"
#include "simlink/functions/forms/FunctionEditorForm.h"
#include "tests/fakes/FakeUdpSocket.h"
#include "tests/fakes/SimData.h"
#include "tests/forms/FormsRig.h"

namespace tvx {
namespace {

struct FunctionFormsTest : testing::Test {
  FunctionFormsTest() {
    FillNameTables(model);
    FunctionRecord& flaps = model.Functions[60];
    flaps = {.ShortName = "Flaps", .FullName = "#1:sim/flaps\r\n", .FunctionNr = 60};
    flaps.ComboDT = static_cast<Byte>(DataType::XplaneDataref);
    flaps.Multiplier = flaps.Devider = 1;
    flaps.XPVal1 = 10;
    model.Functions[61] = flaps;
    model.Functions[61].ShortName = "Gear";
    model.Functions[61].ComboDT = static_cast<Byte>(DataType::Float);
    model.General.LocalPort = "50992";
    ScratchFolder::Put("x/DataRefs.txt", Thousands());
    ScratchFolder::Put("x/Commands.txt", "sim/none/none   Nothing\nsim/gear/up   Up\n");
  }
  ~FunctionFormsTest() override { Settle(); }
  static std::string Thousands() {
    std::string text("2 1210 today\n\n");
    for (int i = 0; i < 6000; ++i) text += "sim/group/value_" + std::to_string(i) + "\tfloat[8]\ty\tkts\tx\n";
    return text + "sim/weapons/airspeed_last\tfloat\tn\tkts\tx\n";
  }
  FunctionEditorForm& Editor(int function) {
    editor_ = std::make_unique<FunctionEditorForm>(model, sim, boxes, nullptr,
                                                   [](QWidget*) { return QString("x"); });
    editor_->show();
    editor_->Choose(function);
    return *editor_;
  }
  TestXplaneInterfaceForm& Console() {
    console_ = std::make_unique<TestXplaneInterfaceForm>(
        model, sim, boxes, clock, nullptr,
        TestXplaneInterfaceForm::Choosers{[](QWidget*) { return QString("log.txt"); },
                                          [](QWidget*) { return QString("x"); }});
    console_->show();
    return *console_;
  }
  static void Fire(QWidget& form, const char* timer) {
    auto* found = form.findChild<QTimer*>(timer);
    ASSERT_NE(found, nullptr);
    ASSERT_TRUE(found->isActive()) << timer;
    QTimerEvent event(found->timerId());
    QCoreApplication::sendEvent(found, &event);
  }
  static QAbstractItemModel& Lines(QWidget& form, const char* list) {
    return *Control<QAbstractItemView>(&form, list)->model();
  }
  static std::string Row(QWidget& form, const char* list, int row) {
    return Lines(form, list).index(row, 0).data().toString().toStdString();
  }
  // A number as the datagrams have it.
  static std::string Bytes(int number) { return static_cast<char>(number) + std::string(3, '\0'); }

  const ScratchFolder folder_;
  ConfigModel model;
  FakeUdpSocket socket;
  FakeMessageBoxes boxes;
  FakeClock clock;
  SimCom sim{model, socket, boxes, clock};
  std::unique_ptr<FunctionEditorForm> editor_;
  std::unique_ptr<TestXplaneInterfaceForm> console_;
};

TEST_F(FunctionFormsTest, AnImportedListIsSearchedAndCopied) {
  FunctionEditorForm& form = Editor(60);
  EXPECT_EQ(Row(form, "ListXplaneReferences", 0), kReferencesFile.missing);
  Play(&form, {{"cmdCopyEntry"}, {"cmdImportLists"}});
  EXPECT_EQ(boxes.shown, (Texts{"Incorrect X-Plane command; Cannot be copied",
                                "6001 data references were imported.\r\n2 commands were imported."}));
  auto* lines = Control<QPlainTextEdit>(&form, "FullName");
  lines->setPlainText("#1:sim/group/value_7[5]");
  EXPECT_EQ(LabelText(&form, "LabelHint"), "Not saved yet.");
  lines->setPlainText("#1:sim/flaps");
  EXPECT_TRUE(Begins(LabelText(&form, "LabelHint"), "X-Plane's list does not have sim/flaps"));
  Set(&form, "SearchText", "VALUE 599");
  EXPECT_EQ(Lines(form, "ListXplaneReferences").rowCount(), 16);
  Press(Control<QLineEdit>(&form, "SearchText"), Qt::Key_Return);
  Play(&form, {{"boxElement", "3"}, {"cmdCopyEntry"}});
  EXPECT_EQ(lines->toPlainText(), "#1:sim/flaps\n#2:sim/group/value_599[3]\n");
  Set(&form, "ComboFilter", "sim/weapons");
  EXPECT_EQ(Row(form, "ListXplaneReferences", 0), "===== Not Found =====");
  Set(&form, "cmdAbortSearch");
  EXPECT_EQ(Row(form, "ListXplaneReferences", 0), "6000 sim/weapons/airspeed_last");
  Set(&form, "cmdResetSearch");
  EXPECT_EQ(Lines(form, "ListXplaneReferences").rowCount(), 6001);
  Set(&form, "CmdSave");
  EXPECT_EQ(model.Functions[60].FullName, "#1:sim/flaps\r\n#2:sim/group/value_599[3]\r\n");
}

TEST_F(FunctionFormsTest, TheDataTypeChoosesTheListAndItsBoxes) {
  FunctionEditorForm& form = Editor(61);
  const struct {
    const char* type;
    int page;
    bool index, value;
  } rows[] = {{"Float", 0, true, true}, {"Xplane CMND", 1, false, false}, {"Xplane Dataref", 1, false, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.type);
    Set(&form, "ComboDT", row.type);
    EXPECT_EQ(Control<QStackedWidget>(&form, "ListOrWords")->currentIndex(), row.page);
    EXPECT_EQ(Control<QLineEdit>(&form, "XPindex1")->isVisible(), row.index);
    EXPECT_EQ(Control<QLineEdit>(&form, "XPVal1")->isVisible(), row.value);
    EXPECT_TRUE(row.value || Row(form, "ListXplaneReferences", 0) == kCommandsFile.missing);
  }
}

TEST_F(FunctionFormsTest, WhatIsWrongIsSaidWhereItIsTyped) {
  FunctionEditorForm& form = Editor(61);
  Play(&form, {{"", "", "CmdSave", "button, grey"},
               {"XPVal1", "8", "LabelHint", "#1, value: a whole number from 0 to 7"},
               {"CmdSave", "", "XPVal1", "8, wrong"}});
  EXPECT_EQ(boxes.shown, Texts{"Incorrect data"});
  EXPECT_EQ(form.focusWidget()->objectName(), "XPVal1");
}

TEST_F(FunctionFormsTest, LeavingAsksAboutUnsavedChanges) {
  FunctionEditorForm& form = Editor(60);
  Set(&form, "ShortName", "Other");
  auto* list = Control<QListView>(&form, "ListFunctions");
  boxes.answers = {kAnswerNo, kAnswerNo, kAnswerYes};
  list->setCurrentIndex(list->model()->index(60, 0));
  EXPECT_EQ(LabelText(&form, "LabelNumber"), "Function 60");
  EXPECT_EQ(Row(form, "ListFunctions", list->currentIndex().row()), "060  00  Flaps");
  Press(&form, Qt::Key_Escape);
  EXPECT_TRUE(form.isVisible());
  form.close();
  EXPECT_FALSE(form.isVisible());
  EXPECT_EQ(boxes.asked, Texts(3, "Updates are not saved yet; Continue?"));
  editor_.release();  // it deletes itself
}

TEST_F(FunctionFormsTest, StandardFunctionsAreOnlyShown) {
  model.Functions[1].ShortName = "Airspeed";
  FunctionEditorForm& form = Editor(1);
  EXPECT_TRUE(Control<QLineEdit>(&form, "ShortName")->isReadOnly());
  EXPECT_FALSE(Control<QComboBox>(&form, "ComboDT")->isEnabled());
  EXPECT_FALSE(Control<QPushButton>(&form, "CmdSave")->isEnabled());
}

TEST_F(FunctionFormsTest, TheListEditsAndOpensTheEditor) {
  FunctionEditorForm& form = Editor(60);
  Set(&form, "cmdListFunctions");
  QWidget* list = form.ListWindow();
  auto* tree = Control<QTreeWidget>(list, "ListFunctions");
  ASSERT_EQ(tree->topLevelItemCount(), 4);
  Play(list, {{"ComboFilterType", "Macro"}, {"CmdFilterTypeOn"}});
  EXPECT_EQ(tree->topLevelItemCount(), 2);
  Set(list, "CmdFilterTypeOff");
  tree->setCurrentItem(tree->topLevelItem(3));
  Press(tree, Qt::Key_Return);
  EXPECT_EQ(LabelText(&form, "LabelNumber"), "Function 61");
  Set(list, "ShortName", "Wheels");
  EXPECT_EQ(tree->topLevelItem(3)->text(1), "Wheels");
  Set(list, "CmdSave");
  EXPECT_EQ(model.Functions[61].ShortName, "Wheels");
  EXPECT_EQ(StateOf(&form, "ShortName"), "Wheels");
}

TEST_F(FunctionFormsTest, TheTestReadsAndWritesOnItsTimers) {
  FunctionEditorForm& form = Editor(61);
  Set(&form, "cmdTestFunction");
  QWidget& test = *form.TestWindow();
  Set(&test, "CmdRead");
  socket.Deliver("DATA*" + std::string(4, '\0') + std::string(32, '\0'));
  Fire(test, "ReadTimer");
  Play(&test, {{"", "", "BoxRawValue", "0.0000"},
               {"CmdStopRead"},
               {"BoxWriteLowerLimit", "1"},
               {"BoxWriteUpperLimit", "2"},
               {"boxIncrDecr", "1"},
               {"CmdWriteInterval"}});
  Fire(test, "IntervalTimer");
  EXPECT_EQ(LabelText(&test, "LabelWritten"), "Written: 2.0000, sent raw as 2.0000");
  Set(&test, "BoxSeqNr", "2");
  EXPECT_FALSE(test.findChild<QTimer*>("IntervalTimer")->isActive());
  form.close();
  EXPECT_EQ(sim.PortCount(), 0);
  EXPECT_FALSE(sim.UdpOpen());
  editor_.release();
}

TEST_F(FunctionFormsTest, TheConsoleShowsLogsAndGivesTheLinkBack) {
  TestXplaneInterfaceForm& form = Console();
  EXPECT_EQ(Row(form, "ListXplaneReferences", 0), kConsoleReferencesMissing);
  Play(&form, {{"cmdStartUDP", "", "LabelStatus", "Running"}, {"cmdSingleLog"}});
  EXPECT_EQ(Control<QPushButton>(&form, "cmdStopLog")->text(), "Stop Logging");
  Set(&form, "OptionByteOrderReverse", "on");
  socket.Deliver("RREF," + std::string("\x07\0\0\0\x3F\xC0\0\0", 8));
  Fire(form, "DisplayTimer");
  EXPECT_EQ(Row(form, "ListUDPProcessed", 4), "--Identifier: 7, Data Value: 1.5");
  Play(&form, {{"cmdSaveLog"}, {"cmdClearConverted"}});
  EXPECT_TRUE(QFile::exists("log.txt"));
  EXPECT_EQ(Lines(form, "ListUDPProcessed").rowCount(), 0);
  Press(&form, Qt::Key_Escape);
  EXPECT_FALSE(sim.UdpMonitorMode() || sim.UdpOpen());
  console_.release();
}

TEST_F(FunctionFormsTest, EachButtonOfTheConsoleSendsItsDatagram) {
  TestXplaneInterfaceForm& form = Console();
  Set(&form, "cmdImportLists");
  auto* list = Control<QListView>(&form, "ListXplaneReferences");
  list->setCurrentIndex(list->model()->index(2, 0));
  Play(&form, {{"boxIndex", "5", "SelectedReference", "sim/group/value_2[0]"},
               {"boxReferenceIndex", "1"},
               {"boxValue", "2"},
               {"boxCharacter", "k"},
               {"boxDREFValue", "3"},
               {"boxRREFIdentifier", "9"},
               {"boxRREFFrequency", "4"},
               {"boxFunctionNr", "70"}});
  const std::string none = FloatBytes(-999);
  const struct {
    const char* button;
    std::size_t count;
    std::string last;  // how the last of its datagrams begins
  } rows[] = {{"cmdDSEL", 1, "DSEL0" + Bytes(5)},
              {"cmdUSEL", 1, "USEL0" + Bytes(5)},
              {"cmdUSELall", 136, "USEL0" + Bytes(135)},
              {"cmdStopAll", 136, "USEL0" + Bytes(135)},
              {"cmdDataUdp", 1, "DATA0" + Bytes(5) + none + FloatBytes(2) + none},
              {"cmdSendDataInteger", 1, "DATA0" + Bytes(5) + std::string("\xFF\xFF\xFC\x19\0\0\0\2", 8)},
              {"cmdSendCharacter", 1, "CHAR0k127.0.0.1"},
              {"cmdSendDREF", 1, "DREF0" + FloatBytes(3) + "sim/group/value_2[0]"},
              {"cmdSelectRREF", 1, std::string("RREF") + '\0' + Bytes(4) + Bytes(9) + "sim/group/value_2[0]"},
              {"cmdDeleteRREF", 1, std::string("RREF") + '\0' + Bytes(0) + Bytes(9)},
              {"cmdSelectRREF", 1, "RREF"},
              {"CmdClearAllRREFs", 1, std::string("RREF") + '\0' + Bytes(0) + Bytes(9)}};
  for (const auto& row : rows) {
    Set(&form, row.button);
    for (int i = 0; i < 2; ++i) clock.Advance(101), sim.Tick();
    const Texts sent = socket.TakeSent();
    ASSERT_EQ(sent.size(), row.count) << row.button;
    EXPECT_EQ(sent.back().substr(0, row.last.size()), row.last) << row.button;
  }
  Play(&form, {{"cmdSelectRREF"}, {"cmdShowRREF"}});
  EXPECT_EQ(Row(form, "ListRREF", 0),
            "Ident: 009, Freq: 4 p/s ,Value= 00000.0  --->Dataref: sim/group/value_2[0]");
  Set(&form, "cmdCopyToFunction");
  EXPECT_EQ(model.Functions[70].FullName, "#1:sim/group/value_2[0]\r\n");
}

TEST_F(FunctionFormsTest, KeysAndToolTips) {
  FunctionEditorForm& editor = Editor(60);
  Play(&editor, {{"cmdListFunctions"}, {"cmdTestFunction"}});
  for (QWidget* form :
       std::initializer_list<QWidget*>{&editor, editor.ListWindow(), editor.TestWindow(), &Console()}) {
    SCOPED_TRACE(form->objectName().toStdString());
    ExpectKeysAndTips(form);
    ExpectWholeAtAnySize(form);
  }
}

}  // namespace
}  // namespace tvx
