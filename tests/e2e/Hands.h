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
    if (control == nullptr || !control->isVisible() || !control->isEnabled()) {
      throw std::runtime_error(name_ + " offers no " + name);
    }
    return *control;
  }
  void Press(const char* button) const { The<QAbstractButton>(button).click(); }
  // Presses what keeps the form from being worked on for a while, and waits until that is over.
  void PressAndWait(const char* button) const {
    Press(button);
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
  // Chooses the item that stands for the number.
  void Pick(const char* list, int number) const {
    auto& box = The<QComboBox>(list);
    Choose(box, box.findData(number));
  }
  void Pick(const char* list, const QString& text) const {
    auto& box = The<QComboBox>(list);
    Choose(box, box.findText(text));
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
  static void Choose(QComboBox& box, int index) {
    if (index < 0) throw std::runtime_error(box.objectName().toStdString() + " has no such item");
    box.setCurrentIndex(index);
    emit box.activated(index);
  }

  std::string name_;
};

}  // namespace tvx::e2e
