#include "platform/qt/QtHost.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <algorithm>
#include <utility>

namespace tvx {

namespace {
constexpr int kLongestSleepMs = 3;
}

QtEventLoop::QtEventLoop() {
  wake_.setSingleShot(true);
  wake_.setTimerType(Qt::PreciseTimer);
  QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &context_,
                   [this] { ending_ = true; });
}

void QtEventLoop::Yield() {
  // Waiting spares the processor while a loop looks for an answer; the timer bounds it.
  wake_.start(kLongestSleepMs);
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void QtEventLoop::End() {
  ending_ = true;
  QCoreApplication::quit();
}

QtTimer::QtTimer(const QString& name) {
  timer_.setObjectName(name);
  timer_.setTimerType(Qt::PreciseTimer);
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

void QtTimer::OnTick(std::function<void()> tick) {
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [tick = std::move(tick)] {
    if (tick) tick();
  });
}

}  // namespace tvx
