// The whole program in a folder of its own, its message boxes in memory; and hands for its forms.
#pragma once

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QListWidget>
#include <QRadioButton>
#include <QSpinBox>
#include <QTreeWidget>

#include "app/Program.h"
#include "config/StartFile.h"
#include "tests/Test.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeKeyInjector.h"
#include "tests/fakes/FakeMulticastListener.h"
#include "tests/fakes/ScratchFolder.h"
#include "tests/fakes/Whole.h"
#include "ui/Look.h"

namespace tvx {

// Forms are looked at as the program shows them.
struct TheLook : testing::Environment {
  void SetUp() override { look::Apply(*qApp, look::Theme::Dark); }
};
inline testing::Environment* const theLook = testing::AddGlobalTestEnvironment(new TheLook);

// Handles what is queued now. Nothing here waits for time to pass.
inline void Settle() {
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

template <typename T>
T* Control(QWidget* form, const char* name) {
  T* control = form == nullptr ? nullptr : form->findChild<T*>(name);
  if (control == nullptr) ADD_FAILURE() << "no control " << name;
  return control;
}

inline std::string LabelText(QWidget* form, const char* name) {
  const auto* label = Control<QLabel>(form, name);
  return label == nullptr ? std::string() : label->text().toStdString();
}

// Presses a button; what that queued is handled.
inline void Click(QWidget* form, const char* name) {
  if (auto* button = Control<QAbstractButton>(form, name)) button->click();
  Settle();
}

// What a control shows: a text, a choice, a number; "on" or "off" where it has a tick; whether it is greyed
// out, marked as wrong, or "hidden". A button that is only pressed shows no text.
inline std::string StateOf(QWidget* form, const char* name) {
  const auto* control = Control<QWidget>(form, name);
  if (control == nullptr || !control->isVisible()) return "hidden";
  QString state;
  if (const auto* button = qobject_cast<const QAbstractButton*>(control)) {
    state = !button->isCheckable() ? "button" : button->isChecked() ? "on" : "off";
  } else {
    for (const char* property : {"currentText", "text", "value"}) {
      if (state.isEmpty()) state = control->property(property).toString();
    }
  }
  if (!control->isEnabled()) state += ", grey";
  if (control->property("wrong").toBool()) state += ", wrong";
  return state.toStdString();
}

// Gives a control a value, as StateOf has it; of a choice the text, or the number that it stands for. A
// button that is only pressed is pressed.
inline void Set(QWidget* form, const char* name, const QString& value = {}) {
  auto* control = Control<QWidget>(form, name);
  EXPECT_TRUE(control == nullptr || control->isEnabled()) << name << " is greyed out";
  if (auto* button = qobject_cast<QAbstractButton*>(control)) {
    if (value.isEmpty() || button->isChecked() != (value == "on")) button->click();
  } else if (auto* edit = qobject_cast<QLineEdit*>(control)) {
    edit->setText(value);
    emit edit->textEdited(value);
  } else if (auto* choice = qobject_cast<QComboBox*>(control)) {
    const int place = choice->findText(value);
    choice->setCurrentIndex(place >= 0 ? place : choice->findData(value.toInt()));
  } else if (control != nullptr) {
    EXPECT_TRUE(control->setProperty("value", value.toInt())) << name;
  }
  Settle();
}

// One thing that a user does to a form, and what a control shows then; an empty name stands for neither.
struct Move {
  const char *control, *value = "", *seen = "";
  std::string state = {};
};
inline void Play(QWidget* form, const std::vector<Move>& moves) {
  for (const Move& move : moves) {
    if (*move.control != 0) Set(form, move.control, move.value);
    if (*move.seen == 0) continue;
    EXPECT_EQ(StateOf(form, move.seen), move.state)
        << move.seen << " after " << move.control << ' ' << move.value;
  }
}

inline void Press(QWidget* widget, int key, const QString& text = {}) {
  QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
  QApplication::sendEvent(widget, &down);
  QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
  QApplication::sendEvent(widget, &up);
}

// The names of everything that Tab leads to, once round.
inline std::set<std::string> TabRound(QWidget* form) {
  std::set<std::string> names;
  for (int i = 0; i < 200 && form->focusWidget() != nullptr; ++i) {
    if (!names.insert(form->focusWidget()->objectName().toStdString()).second) break;
    Press(form->focusWidget(), Qt::Key_Tab);
  }
  return names;
}

// What a user can press, type into or choose from: each has a tip, a key of its own where it has one, and the
// round of Tab leads to it.
inline void ExpectKeysAndTips(QWidget* form) {
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
    if (!control->isVisible() || control->window() != form || name.startsWith("qt_")) continue;
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

inline ConfigModel SmallModel() {
  ConfigModel model;
  model.General.ConfigHeader = BuildConfigHeader("X-Plane", "11.55.01", "now");
  model.General.RemotePort = "50991";
  model.General.LocalPort = "50992";
  model.Plates.emplace_back();  // a file without Plates does not load wholly
  model.Functions[1] = {.ShortName = "Airspeed indicated", .FullName = {}, .FunctionNr = 1};
  model.Gauges[7] = {.GaugeType = 1, .GaugeFunction1 = 1};
  return model;
}

struct FormsTest : testing::Test {
  FormsTest() {
    WriteConfig("Default.cfg", SmallModel());
    ConfigModel start;
    start.StartDelay = 12;
    EXPECT_TRUE(WriteStartFile(start, "Default.cfg"));
  }
  static void WriteConfig(const char* name, const ConfigModel& model) {
    ScratchFolder::Put(name, WriteConfigText(model));
  }
  // The small configuration with something else in it.
  static void Configured(void (*change)(ConfigModel&), const char* name = "Default.cfg") {
    ConfigModel model = SmallModel();
    change(model);
    WriteConfig(name, model);
  }

  Program& Begin() {
    program_ = std::make_unique<Program>(&boxes_, &keys_, devices_, nullptr, &beacons_);
    program_->Begin();
    Settle();
    return *program_;
  }
  Program& BeginHalted() {
    Begin();
    program_->Start().butOK_Click();
    Settle();
    return *program_;
  }
  StartForm* Start() { return program_->StartWindow(); }
  // The main configuration form, from the start form.
  MainConfigureForm* Configure() {
    Begin();
    Click(Start(), "CmdConfigure");
    EXPECT_NE(Configuration(), nullptr);
    return Configuration();
  }
  StatusForm* Status() { return program_->StatusWindow(); }
  MainConfigureForm* Configuration() { return program_->ConfigurationWindow(); }

  const ScratchFolder folder_;
  FakeMessageBoxes boxes_;
  FakeMulticastListener beacons_;
  FakeKeyInjector keys_;
  SerialDevices* devices_ = nullptr;  // null: this computer's
  std::unique_ptr<Program> program_;
};

}  // namespace tvx
