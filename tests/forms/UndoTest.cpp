// Undo, redo and Save at the foot of the forms, by real keys.
#include <QListWidget>
#include <QTest>

#include "tests/forms/FormsRig.h"

namespace tvx {
namespace {

class UndoTest : public FormsTest {
 protected:
  // As the window system delivers a key: to shortcuts first.
  static void Key(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(widget, static_cast<Qt::Key>(key), modifiers);
  }
  void Click(QWidget* form, const char* name) {
    Control<QPushButton>(form, name)->click();
    Settle();
  }
  int Interval() { return program_->Model().General.TransferInterval; }
  QWidget* InFront(QWidget* form) {
    QApplication::setActiveWindow(form);
    Settle();
    return form;
  }
};

TEST_F(UndoTest, KeysUndoTheConfigurationUnlessATextIsBeingEdited) {
  Begin();
  program_->Start().CmdConfigure_Click();
  Settle();
  QWidget* form = InFront(Configuration());
  const int before = Interval();
  Click(form, "CmdSet250");
  auto* port = Control<QLineEdit>(form, "boxRemotePort");
  port->setFocus();
  const QString stored = port->text();
  QTest::keyClicks(port, "1");
  ASSERT_EQ(port->text(), stored + "1");
  Key(port, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(port->text(), stored);
  EXPECT_EQ(Interval(), 250) << "the keys were the text's own";
  Key(port, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Interval(), before);
  EXPECT_EQ(Control<QSlider>(form, "SliderXferTtimerProcess")->value(), before);
  EXPECT_FALSE(program_->Model().ConfigChanged);
  EXPECT_EQ(LabelText(form, "LabelSteps"), "Redo: transfer interval    ");
  Key(form, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Interval(), 250);
  EXPECT_EQ(LabelText(form, "LabelSaved"), "Default.cfg: not saved");
}

// What was undone in one form is so in all of them.
TEST_F(UndoTest, OpenFormsFollow) {
  Begin();
  program_->Start().CmdConfigure_Click();
  Settle();
  program_->Configuration().OpenGauge(7);
  Settle();
  QWidget* instrument = QApplication::activeModalWidget();
  ASSERT_NE(instrument, nullptr);
  program_->Model().Gauges[7].GaugeFunction1 = 0;
  Key(InFront(instrument), Qt::Key_Z, Qt::ControlModifier);  // looks first
  EXPECT_EQ(program_->Model().Gauges[7].GaugeFunction1, 1);
  program_->Model().Gauges[7] = {};
  Key(instrument, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(instrument->isVisible());
  Key(instrument, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  Settle();
  EXPECT_EQ(program_->Model().Gauges[7].GaugeType, 0);
  EXPECT_NE(QApplication::activeModalWidget(), instrument) << "its gauge has gone";
}

// A face that the guide gave is one step; while its points are asked about, its end is the question's too.
TEST_F(UndoTest, WhatTheGuideGaveIsTakenBack) {
  Begin();
  program_->Start().CmdConfigure_Click();
  Settle();
  Click(Configuration(), "cmdGuide");
  QWidget* guide = InFront(QApplication::activeModalWidget());
  ASSERT_EQ(guide->objectName(), "frmGuide");
  Control<QListWidget>(guide, "ListSteps")->setCurrentRow(2);
  Control<QListWidget>(guide, "ListNeedles")->setCurrentRow(0);
  Settle();
  const ConfigModel& model = program_->Model();
  const GaugeRecord before = model.Gauges[7];
  const std::vector<PlateRecord> plates = model.Plates;
  auto* faces = Control<QListWidget>(guide, "ListFaces");
  emit faces->itemActivated(faces->item(2));
  Settle();
  const GaugeRecord given = model.Gauges[7];
  EXPECT_NE(given, before);
  EXPECT_TRUE(LabelText(guide, "LabelQuestion").starts_with("Does it stand at"));
  Key(guide, Qt::Key_Z, Qt::ControlModifier);
  Settle();
  EXPECT_EQ(model.Gauges[7], before);
  EXPECT_EQ(model.Plates, plates);
  EXPECT_EQ(LabelText(guide, "LabelQuestion"), "Which face moved?");
  Key(guide, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(model.Gauges[7], given);
}

// Their changes are saved where they are made, and said so before.
TEST_F(UndoTest, HardwareFormsSaveByThemselves) {
  ConfigModel model = SmallModel();
  model.General.ComPortEC = 7;
  model.General.ComPortIOM1 = 6;
  model.General.ComPortYoke1 = 9;
  WriteConfig("Default.cfg", model);
  const struct {
    const char *from, *button, *form;
  } rows[] = {{"cmdShowECStatus", "cmdConfigEC", "frmConfigEC"},
              {"cmdShowIOM", "cmdConfigIOM", "ConfigIOM"},
              {"cmdShowYokes", "cmdConfigY1", "frmConfigY1"}};
  BeginHalted();
  std::int16_t number = 100;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.form);
    Click(Status(), row.from);
    for (const char* wanted : {row.button, static_cast<const char*>(nullptr)}) {
      for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* button =
            wanted == nullptr || !window->isVisible() ? nullptr : window->findChild<QPushButton*>(wanted);
        if (button != nullptr) button->click();
      }
      Settle();
    }
    QWidget* form = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->isVisible() && window->objectName() == row.form) form = window;
    }
    ASSERT_NE(form, nullptr);
    auto* save = Control<QPushButton>(form, "cmdSaveNow");
    program_->Model().General.TransferInterval = ++number;
    program_->Model().ConfigChanged = true;
    Key(InFront(form), Qt::Key_Z, Qt::ControlModifier);
    Key(form, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_TRUE(save->isEnabled());
    EXPECT_TRUE(save->toolTip().startsWith("Save replaces Default.cfg, whose old content is kept as "));
    save->click();
    EXPECT_FALSE(program_->Model().ConfigChanged);
    EXPECT_FALSE(save->isEnabled());
    ConfigModel read;
    read.ConfigFileName = "Default.cfg";
    ConfigFile(read, boxes_).LoadConfigFile();
    EXPECT_EQ(read.General.TransferInterval, number);
  }
}

}  // namespace
}  // namespace tvx
