// Event loop and timers of Qt.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

#include "platform/Host.h"

namespace tvx {

class QtEventLoop final : public EventLoop {
 public:
  QtEventLoop();
  void Yield() override;
  bool Ending() const override { return ending_; }
  // The program is to end: every loop that yields stops, then Qt's own.
  void End();

 private:
  QObject context_;
  QTimer wake_;
  bool ending_ = false;
};

class QtTimer final : public Timer {
 public:
  // Disabled at first. `name` becomes the timer's objectName.
  explicit QtTimer(const QString& name = {});

  void SetEnabled(bool enabled) override;
  bool Enabled() const override;
  // Milliseconds; less than 1 counts as 1. A timer that runs starts its interval anew.
  void SetInterval(int milliseconds) override;
  // What each tick calls, beside what was given before.
  void OnTick(std::function<void()> tick);

 private:
  QTimer timer_;
};

}  // namespace tvx
