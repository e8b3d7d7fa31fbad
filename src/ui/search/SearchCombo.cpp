#include "ui/search/SearchCombo.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTimer>
#include <QWheelEvent>

#include "ui/Look.h"

namespace tvx {

SearchCombo::SearchCombo(const char* name, const QString& toolTip) {
  setObjectName(QString::fromLatin1(name));
  setToolTip(toolTip);
  setEditable(true);
  setInsertPolicy(QComboBox::NoInsert);
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(26);
  setMaxVisibleItems(20);
  completer()->setCompletionMode(QCompleter::PopupCompletion);
  completer()->setFilterMode(Qt::MatchContains);
  completer()->setCaseSensitivity(Qt::CaseInsensitive);
  look::SetRole(completer()->popup(), "popup");
  connect(this, &QComboBox::activated, this, &SearchCombo::Pick);
  // Enter takes the first that fits; leaving the box only what can mean one thing.
  connect(lineEdit(), &QLineEdit::returnPressed, this, [this] {
    const QString typed = currentText().trimmed();
    const auto found = model()->match(model()->index(0, 0), Qt::DisplayRole, typed, 1, Qt::MatchContains);
    bool number = false;
    typed.toInt(&number);
    if (!number && !typed.isEmpty() && !found.isEmpty()) Pick(found.front().row());
    TakeTyped();
  });
}

void SearchCombo::Pick(int index) {
  const int picked = itemData(index).toInt();
  if (index < 0 || picked == value_) return;
  value_ = picked;
  if (picked_) picked_(picked);
}

// The number, or a text that only one item holds; whatever else is typed is no choice.
void SearchCombo::TakeTyped() {
  const QString typed = currentText().trimmed();
  bool number = false;
  int index = findData(typed.toInt(&number));
  if (!number) {
    const auto found = model()->match(model()->index(0, 0), Qt::DisplayRole, typed, 2, Qt::MatchContains);
    index = !typed.isEmpty() && found.size() == 1 ? found.front().row() : -1;
  }
  if (index >= 0) Pick(index);
  SetValue(value_);
}

void SearchCombo::SetItems(const std::vector<std::pair<int, std::string>>& items) {
  const QSignalBlocker quiet(this);
  clear();
  for (const auto& [number, text] : items) addItem(QString::fromStdString(text), number);
  SetValue(value_);
}

void SearchCombo::SetValue(int value) {
  const QSignalBlocker quiet(this);
  value_ = value;
  const int index = findData(value);
  setCurrentIndex(index);
  if (index < 0) setEditText(QString::number(value));
  lineEdit()->setCursorPosition(0);  // of a long name the beginning is to be seen
}

// What is typed next replaces what stands there, also after a click.
void SearchCombo::focusInEvent(QFocusEvent* event) {
  QComboBox::focusInEvent(event);
  if (event->reason() != Qt::PopupFocusReason) QTimer::singleShot(0, lineEdit(), &QLineEdit::selectAll);
}

void SearchCombo::focusOutEvent(QFocusEvent* event) {
  QComboBox::focusOutEvent(event);
  if (event->reason() != Qt::PopupFocusReason && !completer()->popup()->isVisible()) TakeTyped();
}

// A wheel that passes by must not change a setting.
void SearchCombo::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace tvx
