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
  timer_.setInterval(std::max(milliseconds, 1));
}

}  // namespace tvx
