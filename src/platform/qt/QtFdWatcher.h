// File descriptors watched by Qt's event loop.
#pragma once

#include "platform/FdWatcher.h"

class QSocketNotifier;

namespace tvx {

class QtFdWatcher final : public FdWatcher {
 public:
  ~QtFdWatcher() override;
  void SetCallbacks(Callback readable, Callback writable) override;
  void Attach(int fd) override;
  void Release() override;
  void WatchRead(bool enabled) override;
  void WatchWrite(bool enabled) override;

 private:
  Callback readable_;
  Callback writable_;
  QSocketNotifier* read_ = nullptr;
  QSocketNotifier* write_ = nullptr;
};

}  // namespace tvx
