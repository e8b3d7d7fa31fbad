#include "platform/windows/machine/QtHandleWatcher.h"

#include <QWinEventNotifier>

namespace tvx {

QtHandleWatcher::~QtHandleWatcher() {
  Release();
}

void QtHandleWatcher::Attach(void* event) {
  Release();
  notifier_ = new QWinEventNotifier(event);
  QObject::connect(notifier_, &QWinEventNotifier::activated, notifier_, [this] { signalled_(); });
}

// A notifier must not be deleted in its own slot, and the program may well be in it.
void QtHandleWatcher::Release() {
  if (notifier_ == nullptr) return;
  notifier_->setEnabled(false);
  notifier_->disconnect();
  notifier_->deleteLater();
  notifier_ = nullptr;
}

}  // namespace tvx
