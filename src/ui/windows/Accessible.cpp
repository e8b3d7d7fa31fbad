#include "ui/windows/Accessible.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace tvx {
namespace {

QString Plain(QString text) {
  return text.remove('&').simplified();
}

// The label directly before a widget in its row; null where there is none.
const QLabel* LabelBefore(const QWidget* widget, QLayout* layout) {
  const int at = layout->indexOf(widget);
  if (at >= 0) {
    if (auto* grid = qobject_cast<QGridLayout*>(layout)) {
      int row = 0, column = 0, rows = 0, columns = 0;
      grid->getItemPosition(at, &row, &column, &rows, &columns);
      while (column > 0) {
        const QLayoutItem* before = grid->itemAtPosition(row, --column);
        if (before == nullptr || before->widget() == nullptr) continue;
        if (const auto* label = qobject_cast<const QLabel*>(before->widget())) return label;
      }
      return nullptr;
    }
    return at == 0 ? nullptr : qobject_cast<const QLabel*>(layout->itemAt(at - 1)->widget());
  }
  for (int i = 0; i < layout->count(); ++i) {
    if (QLayout* inner = layout->itemAt(i)->layout()) {
      if (const QLabel* label = LabelBefore(widget, inner)) return label;
    }
  }
  return nullptr;
}

QString NameFor(const QWidget* widget) {
  const QWidget* parent = widget->parentWidget();
  const QLabel* label =
      parent == nullptr || parent->layout() == nullptr ? nullptr : LabelBefore(widget, parent->layout());
  if (label != nullptr && !Plain(label->text()).isEmpty()) return Plain(label->text());
  const QString tip = widget->toolTip();
  return Plain(tip.left(tip.indexOf('\n')));
}

bool HasName(QWidget* widget) {
  if (!widget->accessibleName().isEmpty()) return true;
  const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(widget);
  return seen != nullptr && !seen->text(QAccessible::Name).isEmpty();
}

}  // namespace

void NameControls(QWidget* form) {
  for (QWidget* widget : form->findChildren<QWidget*>()) {
    const QString object = widget->objectName();
    const bool control =
        widget->focusPolicy() != Qt::NoFocus && !object.isEmpty() && !object.startsWith("qt_");
    if (control && widget->window() == form && !HasName(widget)) widget->setAccessibleName(NameFor(widget));
  }
}

}  // namespace tvx
