// The whole program in a folder of its own, its message boxes in memory; and hands for its forms.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <map>
#include <set>
#include <string>

#include "app/Program.h"
#include "config/StartFile.h"
#include "tests/fakes/FakeHost.h"
#include "tests/fakes/FakeMulticastListener.h"
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
  model.Functions[1].ShortName = "Airspeed indicated";
  model.Functions[1].FunctionNr = 1;
  model.Gauges[7].GaugeType = 1;
  model.Gauges[7].GaugeFunction1 = 1;
  return model;
}

class FormsTest : public testing::Test {
 protected:
  FormsTest() : before_(QDir::currentPath()) {
    QDir::setCurrent(folder_.path());
    WriteConfig("Default.cfg", SmallModel());
    WriteStart("Default.cfg");
  }
  ~FormsTest() override {
    program_.reset();
    QDir::setCurrent(before_);
  }

  static void WriteConfig(const QString& name, const ConfigModel& model) {
    QFile file(name);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(QByteArray::fromStdString(WriteConfigText(model)));
  }
  static void WriteStart(const char* configuration) {
    ConfigModel model;
    model.StartDelay = 12;
    ASSERT_TRUE(WriteStartFile(model, configuration));
  }

  Program& Begin() {
    program_ = std::make_unique<Program>(&boxes_, nullptr, devices_, nullptr, &beacons_);
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
  StatusForm* Status() { return program_->StatusWindow(); }
  MainConfigureForm* Configuration() { return program_->ConfigurationWindow(); }

  QTemporaryDir folder_;
  QString before_;
  FakeMessageBoxes boxes_;
  FakeMulticastListener beacons_;
  SerialDevices* devices_ = nullptr;  // null: this computer's
  std::unique_ptr<Program> program_;
};

// Every label that does not wrap, and every button, must show its whole text at the form's smallest size.
inline void ExpectNothingClipped(QWidget* form) {
  form->resize(1, 1);
  Settle();
  for (const QLabel* label : form->findChildren<QLabel*>()) {
    if (!label->isVisible() || label->wordWrap() || label->text().isEmpty()) continue;
    if (label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) continue;
    EXPECT_GE(label->width(), label->sizeHint().width()) << label->objectName().toStdString();
    EXPECT_GE(label->height(), label->fontMetrics().height()) << label->objectName().toStdString();
  }
  for (const QAbstractButton* button : form->findChildren<QAbstractButton*>()) {
    if (!button->isVisible()) continue;
    EXPECT_GE(button->width(), button->sizeHint().width()) << button->objectName().toStdString();
    EXPECT_GE(button->height(), button->sizeHint().height()) << button->objectName().toStdString();
  }
}

}  // namespace tvx
