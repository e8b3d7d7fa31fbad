#include "platform/qt/QtHost.h"

#include <algorithm>

namespace tvx {

QtTimer::QtTimer(const QString& name) {
  timer_.setObjectName(name);
  timer_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { tick_(); });
}

void QtTimer::SetEnabled(bool enabled) {
  if (enabled == timer_.isActive()) return;
  if (enabled) {
    timer_.start();
  } else {
    timer_.stop();
  }
}

bool QtTimer::Enabled() const {
  return timer_.isActive();
}

void QtTimer::SetInterval(int milliseconds) {
  const int interval = std::max(milliseconds, 1);
  if (interval != timer_.interval()) timer_.setInterval(interval);  // which would begin it anew
}

}  // namespace tvx
