// A user's hands and eyes: works on the forms that are shown, by the names of their controls.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <QWidget>
#include <stdexcept>
#include <string>

namespace tvx::e2e {

// The form with this name that is to be seen; nullptr where none is.
inline QWidget* FormShown(const char* name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->objectName() == name) return window;
  }
  return nullptr;
}

// One form. Whatever is not there, not shown or not to be used ends the test with a word on it.
class OnForm {
 public:
  explicit OnForm(const char* name) : name_(name) {
    if (FormShown(name) == nullptr) throw std::runtime_error("no form " + name_);
  }
  QWidget* Window() const { return FormShown(name_.c_str()); }

  template <typename Control>
  Control& The(const char* name) const {
    QWidget* window = Window();
    auto* control = window == nullptr ? nullptr : window->findChild<Control*>(name);
    if (control == nullptr || !control->isVisible() || !control->isEnabled())
      throw std::runtime_error(name_ + " offers no " + name);
    return *control;
  }
  // Where that keeps the form from being worked on for a while, until it is over.
  void Press(const char* button) const {
    The<QAbstractButton>(button).click();
    const QDeadlineTimer end(10000);
    while (!end.hasExpired() && Window() != nullptr && !Window()->isEnabled())
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  // Replaces what stands in the field, key by key.
  void Type(const char* field, const QString& text) const {
    auto& edit = The<QLineEdit>(field);
    edit.setFocus();
    edit.selectAll();
    Key(edit, Qt::Key_Delete);
    for (const QChar letter : text) Key(edit, Qt::Key_A, letter);
    if (edit.text() != text)
      throw std::runtime_error(std::string(field) + " does not take " + text.toStdString());
  }
  // Chooses the item with the text, or the one that stands for the number.
  void Pick(const char* list, const QString& item) const {
    auto& box = The<QComboBox>(list);
    const int index = box.findText(item) >= 0 ? box.findText(item) : box.findData(item.toInt());
    if (index < 0) throw std::runtime_error(std::string(list) + " has no " + item.toStdString());
    box.setCurrentIndex(index);
    emit box.activated(index);
  }
  // Types, picks or presses, by what each control is.
  struct Move {
    const char* control;
    QString value = {};
  };
  void Do(std::initializer_list<Move> moves) const {
    for (const auto& [control, value] : moves) {
      auto* widget = &The<QWidget>(control);
      if (qobject_cast<QLineEdit*>(widget) != nullptr) {
        Type(control, value);
      } else if (qobject_cast<QComboBox*>(widget) != nullptr) {
        Pick(control, value);
      } else {
        Press(control);
      }
    }
  }
  // The words that a label shows.
  std::string Text(const char* label) const { return The<QLabel>(label).text().toStdString(); }

  static void Key(QWidget& widget, int key, const QString& text = {},
                  Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&widget, &down);
    QKeyEvent up(QEvent::KeyRelease, key, modifiers, text);
    QApplication::sendEvent(&widget, &up);
  }

 private:
  std::string name_;
};

}  // namespace tvx::e2e
