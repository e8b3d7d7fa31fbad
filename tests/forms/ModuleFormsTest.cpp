// The windows of IO modules and engine cluster, with a module at the far end of a pseudo-terminal.
#include "tests/fakes/SentCommands.h"
#include "tests/forms/FormsRig.h"
#include "tests/platform/Pty.h"
#include "tests/platform/WaitUntil.h"
#include "ui/search/SearchCombo.h"

namespace tvx {
namespace {

struct ModuleFormsTest : FormsTest {
  ModuleFormsTest() {
    Configured([](ConfigModel& model) {
      model.General.ComPortIOM1 = 6;
      model.General.ComPortIOM2 = 8;
      model.General.ComPortEC = 7;
      model.EngineCluster[0] = {1, 1, 0};
    });
    ScratchFolder::Link(6, line.Device());
    ScratchFolder::Link(8, other.Device());
    ScratchFolder::Link(7, cluster.Device());
    keys_.trouble = "Keystrokes cannot be sent";
    BeginHalted();
    EXPECT_TRUE(LinesOpen());
  }
  IOModulePeripheral& Module() { return program_->IOModule1(); }
  EngineClusterPeripheral& Cluster() { return program_->Cluster(); }
  // What arrives before they are open is discarded.
  bool LinesOpen() {
    using enum HardwareGroup;
    return WaitUntil([this] {
      return std::ranges::all_of(
          std::array{IOModule1, IOModule2, EngineCluster},
          [this](HardwareGroup group) { return program_->HardwareBus().Ports().PortOf(group).IsOpen(); });
    });
  }
  void Report(Byte groupA, int axis = 0) {
    std::array<Byte, 25> report{};
    report[5] = groupA;
    report[12] = static_cast<Byte>(axis >> 8 << 4);
    report[16] = static_cast<Byte>(axis & 0xFF);
    report[24] = 0xFF;
    line.Send(report);
  }
  Pty line, other, cluster;
};

TEST_F(ModuleFormsTest, AreShownWithTheStatusFormAndSayWhereKeysCannotBeTyped) {
  for (QWidget* form :
       std::initializer_list<QWidget*>{Module().Form(), program_->IOModule2().Form(), Cluster().Form()}) {
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(StateOf(form, "LabelStatus"), "Halted");
    ExpectWholeAtAnySize(form);
  }
  EXPECT_EQ(LabelText(Status(), "LabelNotice"), "Keystrokes cannot be sent");
  Click(Status(), "CmdConfig");
  EXPECT_EQ(Module().Form(), nullptr);
  EXPECT_EQ(Cluster().Form(), nullptr);
}

TEST_F(ModuleFormsTest, IndicatorsAreRedAndGreen) {
  EXPECT_EQ(Control<Indicator>(Module().Form(), "Switch0")->Colour(), -1);
  program_->Run().cmdRun_Click();
  ASSERT_TRUE(LinesOpen());
  Report(0x80);
  ASSERT_TRUE(WaitUntil([&] { return Module().Module().SwitchesKnown(); }));
  Module().Form()->ShowState();
  EXPECT_EQ(Control<Indicator>(Module().Form(), "Switch0")->Colour(), 255);
  EXPECT_EQ(Control<Indicator>(Module().Form(), "Switch47")->Colour(), 65280);
}

TEST_F(ModuleFormsTest, WhatIsTouchedIsSelectedAndCheckedWhenStored) {
  Module().ShowConfiguration(nullptr);
  ConfigIOMForm* form = Module().ConfigurationForm();
  ASSERT_NE(form, nullptr);
  ExpectWholeAtAnySize(form);
  Report(0x00);
  const struct {
    Byte groupA;
    int axis;
    IOModuleInput selected;
  } touches[] = {{0x04, 0, {1, IOModuleKind::Switch, 5}},
                 {0x04, 3000, {1, IOModuleKind::Analogue, 0}},
                 {0x00, 3000, {1, IOModuleKind::Switch, 5}}};
  for (const auto& touch : touches) {
    Report(touch.groupA, touch.axis);
    ASSERT_TRUE(WaitUntil([&] { return form->Selected() == touch.selected; })) << touch.axis;
  }
  Click(form, "cmdEdit");
  InputForm* editor = form->Editor();
  ASSERT_NE(editor, nullptr);
  boxes_.shown.clear();
  ConfigModel& model = program_->Model();
  auto* functions = Control<QComboBox>(editor, "ComboFunction");
  Byte& type = model.Functions[static_cast<std::size_t>(functions->itemData(1).toInt())].ComboDT;
  const Byte before = type;
  using enum DataType;
  const std::pair<DataType, const char*> texts[] = {
      {ByteType, "Data Byte"}, {Integer, "Data Integer"}, {UnsignedInt, "Data Uns.Int."},
      {Long, "Data Long"},     {BcdCode, "Data BCD"},     {DataType::Float, "Data Float"}};
  for (const auto& [number, text] : texts) {
    type = static_cast<Byte>(number);
    functions->setCurrentIndex(0);
    functions->setCurrentIndex(1);
    EXPECT_EQ(Control<QComboBox>(editor, "ComboAction")->itemText(1), text);
  }
  type = before;
  Play(editor, {{"boxDebounceTime", "3"}, {"BoxOffOnValue", "much"}, {"cmdStore"}});
  EXPECT_EQ(boxes_.shown, Texts{"One of the definitions is incorrect or out of limits"});
  EXPECT_EQ(model.IOMCount(), 0);
  Play(editor, {{"BoxOffOnValue", "50,5"}, {"cmdStore"}});
  ASSERT_EQ(model.IOMCount(), 1);
  EXPECT_EQ(model.IOModuleInputs[0].Input, 1005);
  EXPECT_EQ(model.IOModuleInputs[0].OffOnValue, 50.5f);
  EXPECT_EQ(Module().Module().SwitchDefinitionNr(5), 1) << "it acts at once";
  // The module is told its debounce time: command 11, 256 x 5 + 3.
  const Bytes frame{0x00, 10, 0xB9, 0x03, 0x07, 0xFF};
  EXPECT_TRUE(WaitUntil([&] { return !std::ranges::search(line.Collect(), frame).empty(); }));
}

// The set-up, opened from the configuration, goes with it; the module that runs then has nobody to tell.
TEST_F(ModuleFormsTest, ASetUpGoesWithTheConfigurationAndHearsNoMore) {
  Click(Status(), "CmdConfig");
  Click(Configuration(), "cmdGotoIOM");
  Click(Module().Form(), "cmdConfigIOM");
  Click(Module().ConfigurationForm(), "cmdEdit");
  Click(Configuration(), "CmdClose");
  EXPECT_EQ(Module().ConfigurationForm(), nullptr);
  program_->Start().butOK_Click();
  program_->Run().cmdRun_Click();
  ASSERT_TRUE(LinesOpen());
  Report(0x80);
  EXPECT_TRUE(WaitUntil([&] { return Module().Module().SwitchesKnown(); }));
}

// Commands wait in a queue, not in the buttons' slots: also where the line's timer stands still.
TEST_F(ModuleFormsTest, NoButtonOfTheSetUpWaitsForTheLine) {
  Module().ShowConfiguration(nullptr);
  Module().StopTimers();
  Play(Module().ConfigurationForm(),
       {{"cmdDebounceAll"}, {"cmdLampTest"}, {"cmdDebounceAll"}, {"cmdLampTest"}, {"cmdSetAddress"}});
  IOModule& module = Module().Module();
  module.WriteCmdDuringConfig_Tick();
  module.WriteCmdDuringConfig_Tick();
  EXPECT_TRUE(module.TransmitPending());
  // In their order: command 11, and the test of the lamps, 12.
  ASSERT_TRUE(WaitUntil([&] { return line.Collect().size() >= 12; }));
  EXPECT_EQ(CommandsOf(ByteView(line.Got).first(12)),
            (Commands{{10, 11, 256 * 255 + kIOModuleUsualDebounce}, {10, 12, 255}}));
  Module().Unload();
  EXPECT_EQ(Module().ConfigurationForm(), nullptr);
}

TEST_F(ModuleFormsTest, AnEngineClusterIsSetUpFromNothing) {
  ConfigModel& model = program_->Model();
  model.EngineCluster[1] = {};
  Play(Cluster().Form(), {{"cmdConfigEC"}, {"cmdTestEC"}});
  ConfigEngineClusterForm* form = Cluster().ConfigurationForm();
  QWidget* test = Cluster().TestForm();
  ASSERT_NE(form, nullptr);
  ExpectWholeAtAnySize(form);
  ExpectWholeAtAnySize(test);
  // The next frame has this position at this byte, counted from 0.
  const auto expectSent = [this](std::size_t at, int position) {
    ASSERT_TRUE(WaitUntil([&] { return cluster.Collect().size() >= 40; }));
    EXPECT_EQ(cluster.Got[at] * 256 + cluster.Got[at + 1], position);
    cluster.Got.clear();
  };
  Set(test, "SliderNeedle3", "300");
  expectSent(21, 300);
  const auto pick = [form](const char* name, int value) {
    auto* combo = Control<SearchCombo>(form, name);
    emit combo->activated(combo->findData(value));
  };
  pick("ComboFunction1", 1);
  EXPECT_EQ(LabelText(Cluster().Form(), "Caption1"), "Airspeed indicated");
  pick("ComboPlate1", 0);
  Set(form, "OptionDualEngine", "on");
  EXPECT_EQ(StateOf(test, "OptionDualEngine"), "on") << "one fact";
  const EngineClusterRecord& channel = model.EngineCluster[1];
  EXPECT_EQ((std::array{channel.Value1, channel.Value2, channel.Value3}),
            (std::array<std::int16_t, 3>{1, 1, 0}));
  pick("ComboPlate1", -1);
  Click(form, "cmdTryHigh1");
  expectSent(3, 1079);
  EXPECT_EQ(LabelText(form, "LabelReading1"), "1079.00 at 1079");

  Click(form, "cmdCalibrate1");
  auto* plates = Control<QWidget>(form, "frmCalibrate");
  EXPECT_EQ(StateOf(plates, "ComboTarget"), "Engine cluster, channel 2");
  cluster.Got.clear();
  Set(plates, "SliderMoveNeedle", "300");
  expectSent(3, 300);
  Click(plates, "CmdClose");

  auto* bits = Control<QLineEdit>(form, "boxExtraBits");
  const auto type = [bits](const QString& text) {
    bits->selectAll();
    bits->insert(text);
    Press(bits, Qt::Key_Return);
  };
  type("256");
  EXPECT_EQ(LabelText(form, "LabelExtraBits"), "A whole number from 0 to 255, please");
  Press(form, Qt::Key_Escape);
  EXPECT_EQ(boxes_.asked, Texts{"Updates are not saved; Continue anyway?"});
  EXPECT_TRUE(form->isVisible());
  type("64");
  EXPECT_EQ(model.EngineCluster[8].Value3, 64);
  program_->Run().cmdRun_Click();
  form->ShowLive();
  EXPECT_EQ(StateOf(form, "cmdTryHigh1"), "button, grey");
  Click(form, "cmdClose");
  EXPECT_EQ(boxes_.asked.size(), 1u) << "nothing is lost";
  EXPECT_EQ(Cluster().ConfigurationForm(), nullptr);
}

}  // namespace
}  // namespace tvx
