// Runs the event loop until something is so.
#pragma once

#include <QCoreApplication>
#include <chrono>

namespace tvx {

// False when it was not so within two seconds.
template <typename Condition>
bool WaitUntil(Condition&& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(2);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  return true;
}

}  // namespace tvx
