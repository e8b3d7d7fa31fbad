#include "ui/Form.h"

#include <QCloseEvent>
#include <QKeyEvent>

namespace tvx {

Form::Form(const char* name, QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName(QString::fromLatin1(name));
}

void Form::Unload() {
  if (unloading_) return;
  unloading_ = true;
  hide();
  deleteLater();
  emit Ended();
}

void Form::BringToFront() {
  show();
  raise();
  activateWindow();
}

void Form::closeEvent(QCloseEvent* event) {
  if (unloading_) {
    event->accept();
    return;
  }
  event->ignore();
  CloseAsked();
}

void Form::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    EscapePressed();
    return;
  }
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
    QWidget::keyPressEvent(event);
    return;
  }
  auto* button = qobject_cast<QPushButton*>(focusWidget());
  if (button == nullptr) button = defaultButton_;
  if (button != nullptr && button->isVisible()) button->click();
}

}  // namespace tvx
