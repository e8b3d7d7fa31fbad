// Runs the event loop until something is so.
#pragma once

#include <QCoreApplication>
#include <chrono>

#include "platform/qt/QtHost.h"

namespace tvx {

// False when it was not so within two seconds.
template <typename Condition>
bool WaitUntil(Condition&& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(2);
  QtEventLoop loop;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    loop.Yield();
  }
  return true;
}

}  // namespace tvx
