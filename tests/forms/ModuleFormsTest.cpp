// The windows of IO modules and engine cluster, with a module at the far end of a pseudo-terminal.
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>

#include "tests/fakes/FakeKeyInjector.h"
#include "tests/fakes/SentCommands.h"
#include "tests/forms/FormsRig.h"
#include "tests/platform/Pty.h"
#include "tests/platform/WaitUntil.h"
#include "ui/search/SearchCombo.h"

namespace tvx {
namespace {

struct ModuleFormsTest : FormsTest {
  ModuleFormsTest() {
    ConfigModel model = SmallModel();
    model.General.ComPortIOM1 = 6;
    model.General.ComPortIOM2 = 8;
    model.General.ComPortEC = 7;
    model.EngineCluster[0] = {1, 1, 0};
    WriteConfig("Default.cfg", model);
    QDir().mkdir("comports");
    ScratchFolder::Link(6, line.Device());
    ScratchFolder::Link(8, other.Device());
    ScratchFolder::Link(7, cluster.Device());
  }
  Program& BeginHaltedWith(KeyInjector& injector) {
    program_ = std::make_unique<Program>(&boxes_, &injector, nullptr, nullptr, &beacons_);
    program_->Begin();
    Settle();
    program_->Start().butOK_Click();
    Settle();
    EXPECT_TRUE(LinesOpen());
    return *program_;
  }
  // What arrives before they are open is discarded.
  bool LinesOpen() {
    HardwarePorts& ports = program_->HardwareBus().Ports();
    return WaitUntil([&] {
      return ports.PortOf(HardwareGroup::IOModule1).IsOpen() &&
             ports.PortOf(HardwareGroup::IOModule2).IsOpen() &&
             ports.PortOf(HardwareGroup::EngineCluster).IsOpen();
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
  FakeKeyInjector keys;
};

TEST_F(ModuleFormsTest, AreShownWithTheStatusFormAndSayWhereKeysCannotBeTyped) {
  keys.trouble = "Keystrokes cannot be sent";
  Program& program = BeginHaltedWith(keys);
  for (QWidget* form :
       {static_cast<QWidget*>(program.IOModule1().Form()), static_cast<QWidget*>(program.IOModule2().Form()),
        static_cast<QWidget*>(program.Cluster().Form())}) {
    ASSERT_NE(form, nullptr);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(LabelText(form, "LabelStatus"), "Halted");
    ExpectNothingClipped(form);
  }
  EXPECT_EQ(LabelText(Status(), "LabelNotice"), "Keystrokes cannot be sent");
  Control<QPushButton>(Status(), "CmdConfig")->click();
  Settle();
  EXPECT_EQ(program.IOModule1().Form(), nullptr);
  EXPECT_EQ(program.Cluster().Form(), nullptr);
}

TEST_F(ModuleFormsTest, IndicatorsAreRedAndGreen) {
  IOModulePeripheral& module = BeginHaltedWith(keys).IOModule1();
  EXPECT_EQ(Control<Indicator>(module.Form(), "Switch0")->Colour(), -1);
  program_->Run().cmdRun_Click();
  ASSERT_TRUE(LinesOpen());
  Report(0x80);
  ASSERT_TRUE(WaitUntil([&] { return module.Module().SwitchesKnown(); }));
  module.Form()->ShowState();
  EXPECT_EQ(Control<Indicator>(module.Form(), "Switch0")->Colour(), 255);
  EXPECT_EQ(Control<Indicator>(module.Form(), "Switch47")->Colour(), 65280);
}

TEST_F(ModuleFormsTest, WhatIsTouchedIsSelectedAndCheckedWhenStored) {
  Program& program = BeginHaltedWith(keys);
  program.IOModule1().ShowConfiguration(nullptr);
  ConfigIOMForm* form = program.IOModule1().ConfigurationForm();
  ASSERT_NE(form, nullptr);
  ExpectNothingClipped(form);
  Report(0x00);
  Report(0x04);
  ASSERT_TRUE(WaitUntil([&] { return form->Selected() == IOModuleInput{1, IOModuleKind::Switch, 5}; }));
  Report(0x04, 3000);
  ASSERT_TRUE(WaitUntil([&] { return form->Selected() == IOModuleInput{1, IOModuleKind::Analogue, 0}; }));
  Report(0x00, 3000);
  ASSERT_TRUE(WaitUntil([&] { return form->Selected() == IOModuleInput{1, IOModuleKind::Switch, 5}; }));

  Control<QPushButton>(form, "cmdEdit")->click();
  InputForm* editor = form->Editor();
  ASSERT_NE(editor, nullptr);
  auto* store = Control<QPushButton>(editor, "cmdStore");
  boxes_.shown.clear();
  auto* functions = Control<QComboBox>(editor, "ComboFunction");
  ASSERT_GT(functions->count(), 1);
  Byte& type = program.Model().Functions[static_cast<std::size_t>(functions->itemData(1).toInt())].ComboDT;
  const Byte before = type;
  for (const auto& [number, text] :
       {std::pair{DataType::ByteType, "Data Byte"}, std::pair{DataType::Integer, "Data Integer"},
        std::pair{DataType::UnsignedInt, "Data Uns.Int."}, std::pair{DataType::Long, "Data Long"},
        std::pair{DataType::BcdCode, "Data BCD"}, std::pair{DataType::Float, "Data Float"}}) {
    type = static_cast<Byte>(number);
    functions->setCurrentIndex(0);
    functions->setCurrentIndex(1);
    EXPECT_EQ(Control<QComboBox>(editor, "ComboAction")->itemText(1).toStdString(), text);
  }
  type = before;
  Control<QLineEdit>(editor, "boxDebounceTime")->setText("3");
  Control<QLineEdit>(editor, "BoxOffOnValue")->setText("much");
  store->click();
  EXPECT_EQ(boxes_.shown, std::vector<std::string>{"One of the definitions is incorrect or out of limits"});
  EXPECT_EQ(program.Model().IOMCount(), 0);
  Control<QLineEdit>(editor, "BoxOffOnValue")->setText("50,5");
  store->click();
  ASSERT_EQ(program.Model().IOMCount(), 1);
  EXPECT_EQ(program.Model().IOModuleInputs[0].Input, 1005);
  EXPECT_EQ(program.Model().IOModuleInputs[0].OffOnValue, 50.5f);
  // The module is told its debounce time: command 11, 256 x 5 + 3.
  const std::vector<Byte> frame{0x00, 10, 0xB9, 0x03, 0x07, 0xFF};
  EXPECT_TRUE(WaitUntil([&] {
    const auto& got = line.Collect();
    return std::search(got.begin(), got.end(), frame.begin(), frame.end()) != got.end();
  }));
}

// The set-up, opened from the configuration, goes with it; the module that runs then has nobody to tell.
TEST_F(ModuleFormsTest, ASetUpGoesWithTheConfigurationAndHearsNoMore) {
  Program& program = BeginHaltedWith(keys);
  Control<QPushButton>(Status(), "CmdConfig")->click();
  Settle();
  Control<QPushButton>(Configuration(), "cmdGotoIOM")->click();
  Control<QPushButton>(program.IOModule1().Form(), "cmdConfigIOM")->click();
  ASSERT_NE(program.IOModule1().ConfigurationForm(), nullptr);
  Control<QPushButton>(program.IOModule1().ConfigurationForm(), "cmdEdit")->click();
  Control<QPushButton>(Configuration(), "CmdClose")->click();
  Settle();
  EXPECT_EQ(program.IOModule1().ConfigurationForm(), nullptr);
  program.Start().butOK_Click();
  program.Run().cmdRun_Click();
  ASSERT_TRUE(LinesOpen());
  Report(0x80);
  EXPECT_TRUE(WaitUntil([&] { return program.IOModule1().Module().SwitchesKnown(); }));
}

// Commands wait in a queue, not in the buttons' slots: also where the line's timer stands still.
TEST_F(ModuleFormsTest, NoButtonOfTheSetUpWaitsForTheLine) {
  Program& program = BeginHaltedWith(keys);
  IOModulePeripheral& module = program.IOModule1();
  module.ShowConfiguration(nullptr);
  ConfigIOMForm* form = module.ConfigurationForm();
  ASSERT_NE(form, nullptr);
  module.StopTimers();
  for (const char* button :
       {"cmdDebounceAll", "cmdLampTest", "cmdDebounceAll", "cmdLampTest", "cmdSetAddress"})
    Control<QPushButton>(form, button)->click();
  module.Module().WriteCmdDuringConfig_Tick();
  module.Module().WriteCmdDuringConfig_Tick();
  EXPECT_TRUE(module.Module().TransmitPending());
  // In their order: command 11, and the test of the lamps, 12.
  ASSERT_TRUE(WaitUntil([&] { return line.Collect().size() >= 12; }));
  EXPECT_EQ(CommandsOf(ByteView(line.Got).first(12)),
            (std::vector<SentCommand>{{10, 11, 256 * 255 + kIOModuleUsualDebounce}, {10, 12, 255}}));
  module.Unload();
  EXPECT_EQ(module.ConfigurationForm(), nullptr);
}

TEST_F(ModuleFormsTest, AnEngineClusterIsSetUpFromNothing) {
  Program& program = BeginHaltedWith(keys);
  program.Model().EngineCluster[1] = {};
  EngineClusterPeripheral& peripheral = program.Cluster();
  Control<QPushButton>(peripheral.Form(), "cmdConfigEC")->click();
  Control<QPushButton>(peripheral.Form(), "cmdTestEC")->click();
  ConfigEngineClusterForm* form = peripheral.ConfigurationForm();
  ASSERT_NE(form, nullptr);
  ExpectNothingClipped(form);
  ExpectNothingClipped(peripheral.TestForm());
  Control<QSlider>(peripheral.TestForm(), "SliderNeedle3")->setValue(300);
  ASSERT_TRUE(WaitUntil([&] { return cluster.Collect().size() >= 40; }));
  EXPECT_EQ(cluster.Got[21] * 256 + cluster.Got[22], 300) << "at once";
  cluster.Got.clear();
  const auto pick = [form](const char* name, int value) {
    auto* combo = Control<SearchCombo>(form, name);
    emit combo->activated(combo->findData(value));
  };
  pick("ComboFunction1", 1);
  EXPECT_EQ(LabelText(peripheral.Form(), "Caption1"), "Airspeed indicated");
  pick("ComboPlate1", 0);
  Control<QRadioButton>(form, "OptionDualEngine")->click();
  EXPECT_TRUE(Control<QRadioButton>(peripheral.TestForm(), "OptionDualEngine")->isChecked()) << "one fact";
  const EngineClusterRecord& channel = program.Model().EngineCluster[1];
  EXPECT_EQ((std::array{channel.Value1, channel.Value2, channel.Value3}),
            (std::array<std::int16_t, 3>{1, 1, 0}));
  pick("ComboPlate1", -1);
  Control<QPushButton>(form, "cmdTryHigh1")->click();
  ASSERT_TRUE(WaitUntil([&] { return cluster.Collect().size() >= 40; }));
  EXPECT_EQ(cluster.Got[3] * 256 + cluster.Got[4], 1079);
  EXPECT_EQ(LabelText(form, "LabelReading1"), "1079.00 at 1079");

  Control<QPushButton>(form, "cmdCalibrate1")->click();
  auto* plates = Control<QWidget>(form, "frmCalibrate");
  EXPECT_EQ(Control<SearchCombo>(plates, "ComboTarget")->currentText(), "Engine cluster, channel 2");
  cluster.Got.clear();
  Control<QSlider>(plates, "SliderMoveNeedle")->setValue(300);
  ASSERT_TRUE(WaitUntil([&] { return cluster.Collect().size() >= 40; }));
  EXPECT_EQ(cluster.Got[3] * 256 + cluster.Got[4], 300);
  Control<QPushButton>(plates, "CmdClose")->click();

  auto* bits = Control<QLineEdit>(form, "boxExtraBits");
  const auto type = [bits](const QString& text) {
    bits->selectAll();
    bits->insert(text);
  };
  type("256");
  Press(bits, Qt::Key_Return);
  EXPECT_EQ(LabelText(form, "LabelExtraBits"), "A whole number from 0 to 255, please");
  Press(form, Qt::Key_Escape);
  EXPECT_EQ(boxes_.asked, (std::vector<std::string>{"Updates are not saved; Continue anyway?"}));
  EXPECT_TRUE(form->isVisible());
  type("64");
  Press(bits, Qt::Key_Return);
  EXPECT_EQ(program.Model().EngineCluster[8].Value3, 64);
  program.Run().cmdRun_Click();
  form->ShowLive();
  EXPECT_FALSE(Control<QPushButton>(form, "cmdTryHigh1")->isEnabled());
  Control<QPushButton>(form, "cmdClose")->click();
  EXPECT_EQ(boxes_.asked.size(), 1u) << "nothing is lost";
  EXPECT_FALSE(form->isVisible());
}

}  // namespace
}  // namespace tvx
