#include "platform/qt/QtFdWatcher.h"

#include <QSocketNotifier>
#include <utility>

namespace tvx {

namespace {

// A notifier must not be deleted in its own slot, and the program may well be in it.
void Retire(QSocketNotifier*& notifier) {
  if (notifier == nullptr) return;
  notifier->setEnabled(false);
  notifier->disconnect();
  notifier->deleteLater();
  notifier = nullptr;
}

}  // namespace

QtFdWatcher::~QtFdWatcher() {
  Release();
}

void QtFdWatcher::SetCallbacks(Callback readable, Callback writable) {
  readable_ = std::move(readable);
  writable_ = std::move(writable);
}

void QtFdWatcher::Attach(int fd) {
  Release();
  write_ = new QSocketNotifier(fd, QSocketNotifier::Write);
  write_->setEnabled(false);
  QObject::connect(write_, &QSocketNotifier::activated, write_, [this] {
    if (writable_) writable_();
  });
  read_ = new QSocketNotifier(fd, QSocketNotifier::Read);
  QObject::connect(read_, &QSocketNotifier::activated, read_, [this] {
    if (readable_) readable_();
  });
}

void QtFdWatcher::Release() {
  Retire(read_);
  Retire(write_);
}

void QtFdWatcher::WatchRead(bool enabled) {
  if (read_ != nullptr) read_->setEnabled(enabled);
}

void QtFdWatcher::WatchWrite(bool enabled) {
  if (write_ != nullptr) write_->setEnabled(enabled);
}

}  // namespace tvx
