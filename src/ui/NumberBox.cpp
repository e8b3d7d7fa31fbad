#include "ui/NumberBox.h"

#include <QSignalBlocker>
#include <QStyle>
#include <QToolTip>
#include <QWheelEvent>
#include <utility>

namespace tvx {
namespace {

QString WholeWords(int lowest, int highest) {
  return QObject::tr("A whole number from %1 to %2").arg(lowest).arg(highest);
}

void SayBelow(QWidget* box, const QString& words) {
  if (words.isEmpty()) {
    if (QToolTip::isVisible()) QToolTip::hideText();
  } else if (box->hasFocus()) {
    QToolTip::showText(box->mapToGlobal(QPoint(0, box->height())), words, box);
  }
}

}  // namespace

void MarkWrong(QLineEdit* edit, bool wrong) {
  if (edit->property("wrong").toBool() == wrong) return;
  edit->setProperty("wrong", wrong);
  edit->style()->unpolish(edit);
  edit->style()->polish(edit);
}

void MarkAsTyped(QLineEdit* edit, std::function<QString(const QString&)> fault) {
  QObject::connect(edit, &QLineEdit::textChanged, edit,
                   [edit, fault = std::move(fault)](const QString& text) {
                     const QString words = text.isEmpty() ? QString() : fault(text);
                     MarkWrong(edit, !words.isEmpty());
                     SayBelow(edit, words);
                   });
}

void WantWhole(QLineEdit* edit, int lowest, int highest) {
  MarkAsTyped(edit, [lowest, highest](const QString& text) {
    return TypedWhole(text.toStdString(), lowest, highest) ? QString() : WholeWords(lowest, highest);
  });
}

void WantReal(QLineEdit* edit) {
  MarkAsTyped(edit, [](const QString& text) {
    return TypedReal<float>(text.toStdString()) ? QString() : QObject::tr("A number, such as 0.5 or -12");
  });
}

NumberSpin::NumberSpin() {
  connect(lineEdit(), &QLineEdit::textEdited, this, &NumberSpin::CheckTyped);
  connect(this, &QSpinBox::editingFinished, this, &NumberSpin::Settle);
}

// The number in the box's whole text, with or without its prefix and suffix.
std::optional<int> NumberSpin::NumberIn(QString text) const {
  if (!specialValueText().isEmpty() && text == specialValueText()) return minimum();
  text = text.trimmed();
  const QString before = prefix().trimmed(), behind = suffix().trimmed();
  if (!before.isEmpty() && text.startsWith(before)) text.remove(0, before.size());
  // Twice where it was typed as well.
  while (!behind.isEmpty() && text.endsWith(behind)) text = text.chopped(behind.size()).trimmed();
  return TypedWhole(text.toStdString(), minimum(), maximum());
}

// No text is kept from being typed: what is wrong with it is shown instead.
QValidator::State NumberSpin::validate(QString& text, int&) const {
  return NumberIn(text) ? QValidator::Acceptable : QValidator::Intermediate;
}

int NumberSpin::valueFromText(const QString& text) const {
  return NumberIn(text).value_or(before_);
}

QString NumberSpin::textFromValue(int value) const {
  return QString::number(value);
}

// On its way to "7,5" the text was "7", which counted.
void NumberSpin::CheckTyped(const QString& text) {
  const bool good = NumberIn(text).has_value();
  if (!good && value() != before_) {
    const int cursor = lineEdit()->cursorPosition();
    setValue(before_);
    const QSignalBlocker quiet(lineEdit());
    lineEdit()->setText(text);
    lineEdit()->setCursorPosition(cursor);
  }
  MarkWrong(lineEdit(), !good);
  SayBelow(this, good ? QString() : WholeWords(minimum(), maximum()));
}

// What stands in the box now is what a text that cannot be taken goes back to.
void NumberSpin::Settle() {
  before_ = value();
  MarkWrong(lineEdit(), false);
}

void NumberSpin::focusInEvent(QFocusEvent* event) {
  Settle();
  QSpinBox::focusInEvent(event);
}

void NumberSpin::stepBy(int steps) {
  QSpinBox::stepBy(steps);
  Settle();
}

// A wheel that passes by must not change a number.
void NumberSpin::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace tvx
