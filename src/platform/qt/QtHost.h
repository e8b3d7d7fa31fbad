// Timers of Qt.
#pragma once

#include <QTimer>
#include <functional>

#include "base/Registration.h"
#include "platform/Host.h"

namespace tvx {

class QtTimer final : public Timer {
 public:
  // Disabled at first. `name` becomes the timer's objectName.
  explicit QtTimer(const QString& name = {});

  void SetEnabled(bool enabled) override;
  bool Enabled() const override;
  // Milliseconds; less than 1 counts as 1. A timer that runs starts its interval anew.
  void SetInterval(int milliseconds) override;
  // What each tick calls, until the Registration ends or another one is given.
  Registration OnTick(std::function<void()> tick) { return tick_.Give(std::move(tick)); }

 private:
  QTimer timer_;
  Callback<> tick_;
};

}  // namespace tvx
