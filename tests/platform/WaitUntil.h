// Runs the event loop until something is so.
#pragma once

#include <QCoreApplication>
#include <QTimer>
#include <chrono>

namespace tvx {

// False when it was not so within the deadline.
template <typename Condition>
bool WaitUntil(Condition&& condition, std::chrono::seconds deadline = std::chrono::seconds(2)) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  QTimer look;  // at least so often
  look.start(5);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    // Not the form with a time to wait, which does not wait at all.
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }
  return true;
}

}  // namespace tvx
