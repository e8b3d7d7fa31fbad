// Undo, redo and Save at the foot of the forms, by real keys.
#include <QTest>

#include "tests/forms/FormsRig.h"

namespace tvx {
namespace {

struct UndoTest : FormsTest {
  // As the window system delivers a key: to shortcuts first.
  static void Undo(QWidget* widget, Qt::KeyboardModifiers more = Qt::NoModifier) {
    QTest::keyClick(widget, Qt::Key_Z, Qt::ControlModifier | more);
    Settle();
  }
  static void Redo(QWidget* widget) { Undo(widget, Qt::ShiftModifier); }
  int Interval() { return program_->Model().General.TransferInterval; }
  QWidget* InFront(QWidget* form) {
    QApplication::setActiveWindow(form);
    Settle();
    return form;
  }
};

TEST_F(UndoTest, KeysUndoTheConfigurationUnlessATextIsBeingEdited) {
  Configure();
  QWidget* form = InFront(Configuration());
  const int before = Interval();
  Click(form, "CmdSet250");
  auto* port = Control<QLineEdit>(form, "boxRemotePort");
  port->setFocus();
  const QString stored = port->text();
  QTest::keyClicks(port, "1");
  ASSERT_EQ(port->text(), stored + "1");
  Undo(port);
  EXPECT_EQ(port->text(), stored);
  EXPECT_EQ(Interval(), 250) << "the keys were the text's own";
  Undo(port);
  EXPECT_EQ(Interval(), before);
  EXPECT_FALSE(program_->Model().ConfigChanged);
  Play(form, {{"", "", "SliderXferTtimerProcess", std::to_string(before)},
              {"", "", "LabelSteps", "Redo: transfer interval    "}});
  Redo(form);
  EXPECT_EQ(Interval(), 250);
  EXPECT_EQ(LabelText(form, "LabelSaved"), "Default.cfg: not saved");
}

// What was undone in one form is so in all of them.
TEST_F(UndoTest, OpenFormsFollow) {
  Configure();
  program_->Configuration().OpenGauge(7);
  Settle();
  QWidget* instrument = QApplication::activeModalWidget();
  ASSERT_NE(instrument, nullptr);
  program_->Model().Gauges[7].GaugeFunction1 = 0;
  Undo(InFront(instrument));  // looks first
  EXPECT_EQ(program_->Model().Gauges[7].GaugeFunction1, 1);
  program_->Model().Gauges[7] = {};
  Undo(instrument);
  EXPECT_TRUE(instrument->isVisible());
  Redo(instrument);
  EXPECT_EQ(program_->Model().Gauges[7].GaugeType, 0);
  EXPECT_NE(QApplication::activeModalWidget(), instrument) << "its gauge has gone";
}

// A face that the guide gave is one step; while its points are asked about, its end is the question's too.
TEST_F(UndoTest, WhatTheGuideGaveIsTakenBack) {
  Configure();
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
  EXPECT_TRUE(Begins(LabelText(guide, "LabelQuestion"), "Does it stand at"));
  Undo(guide);
  EXPECT_EQ(model.Gauges[7], before);
  EXPECT_EQ(model.Plates, plates);
  EXPECT_EQ(LabelText(guide, "LabelQuestion"), "Which face moved?");
  Redo(guide);
  EXPECT_EQ(model.Gauges[7], given);
}

// Their changes are saved where they are made, and said so before.
TEST_F(UndoTest, HardwareFormsSaveByThemselves) {
  Configured([](ConfigModel& model) {
    model.General.ComPortEC = 7;
    model.General.ComPortIOM1 = 6;
    model.General.ComPortYoke1 = 9;
  });
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
    for (QWidget* window : QApplication::topLevelWidgets()) {
      auto* button = window->isVisible() ? window->findChild<QPushButton*>(row.button) : nullptr;
      if (button != nullptr) button->click();
    }
    Settle();
    QWidget* form = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->isVisible() && window->objectName() == row.form) form = window;
    }
    ASSERT_NE(form, nullptr);
    auto* save = Control<QPushButton>(form, "cmdSaveNow");
    program_->Model().General.TransferInterval = ++number;
    program_->Model().ConfigChanged = true;
    Undo(InFront(form));
    Redo(form);
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
