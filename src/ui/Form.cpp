#include "ui/Form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QKeyEvent>
#include <QLayout>
#include <QThread>
#include <QTimer>

namespace tvx {
namespace {

constexpr int kLookAgainMs = 50;

}  // namespace

Form::Form(const char* name, QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName(QString::fromLatin1(name));
}

// Children may still speak while they are deleted, after this form's own part of itself is gone.
Form::~Form() {
  disconnect(qApp, nullptr, this, nullptr);
  for (QObject* child : findChildren<QObject*>()) child->disconnect(this);
}

void Form::Unload() {
  if (unloading_) return;
  unloading_ = true;
  for (Form* form : findChildren<Form*>()) form->Unload();
  for (QDialog* dialog : findChildren<QDialog*>()) dialog->reject();
  for (QTimer* timer : findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly)) timer->stop();
  kept_.clear();
  hide();
  AtEnd();
  emit Ended();
  DeleteWhenIdle();
}

// Deleting waits as long as a question, a file chooser or the like runs an event loop of its own: the slot
// that put it may be this form's.
void Form::DeleteWhenIdle() {
  if (QThread::currentThread()->loopLevel() <= 1) {
    deleteLater();
  } else {
    QTimer::singleShot(kLookAgainMs, this, &Form::DeleteWhenIdle);
  }
}

void Form::BringToFront() {
  show();
  raise();
  activateWindow();
}

void Form::ShowNotice(const QString& text) {
  if (notice_ == nullptr) {
    if (text.isEmpty() || layout() == nullptr) return;
    notice_ = new QLabel(this);
    notice_->setObjectName("LabelFormNotice");
    notice_->setWordWrap(true);
    notice_->setTextInteractionFlags(Qt::TextSelectableByMouse);  // it may hold a command to be copied
    layout()->addWidget(notice_);
  }
  notice_->setText(text);
  notice_->setVisible(!text.isEmpty());
}

void Form::CloseAsked() {
  if (unloading_ || closing_) return;
  closing_ = true;
  const bool end = MayEnd();
  closing_ = false;
  if (!end || unloading_) return;
  Unload();
  emit Closed();
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
