// Events of the system's watched by Qt's event loop.
#pragma once

#include "platform/windows/HandleWatcher.h"

class QWinEventNotifier;

namespace tvx {

class QtHandleWatcher final : public HandleWatcher {
 public:
  ~QtHandleWatcher() override;
  void SetCallback(std::function<void()> signalled) override { signalled_ = std::move(signalled); }
  void Attach(void* event) override;
  void Release() override;

 private:
  std::function<void()> signalled_;
  QWinEventNotifier* notifier_ = nullptr;
};

}  // namespace tvx
