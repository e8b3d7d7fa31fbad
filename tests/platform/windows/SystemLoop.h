// An event loop over the system's own events and messages, for what the tests try without Qt.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

#include "platform/windows/HandleWatcher.h"
#include "platform/windows/calls/WinApi.h"

namespace tvx::test {

class LoopWatcher final : public HandleWatcher {
 public:
  LoopWatcher() { All().push_back(this); }
  ~LoopWatcher() override { std::erase(All(), this); }
  void SetCallback(std::function<void()> signalled) override { signalled_ = std::move(signalled); }
  void Attach(void* event) override { event_ = event; }
  void Release() override { event_ = nullptr; }

  // Waits for what happens next, at most 10 ms, and tells it.
  static void Turn() {
    std::vector<LoopWatcher*> watchers;
    std::vector<HANDLE> events;
    for (LoopWatcher* watcher : All()) {
      if (watcher->event_ == nullptr) continue;
      watchers.push_back(watcher);
      events.push_back(watcher->event_);
    }
    const auto count = static_cast<DWORD>(events.size());
    const DWORD which = MsgWaitForMultipleObjects(count, events.data(), FALSE, 10, QS_ALLINPUT);
    if (which < count) watchers[which]->signalled_();
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }

 private:
  static std::vector<LoopWatcher*>& All() {
    static std::vector<LoopWatcher*> all;
    return all;
  }
  std::function<void()> signalled_;
  void* event_ = nullptr;
};

inline std::unique_ptr<HandleWatcher> NewLoopWatcher() {
  return std::make_unique<LoopWatcher>();
}

// Turns the loop until the condition holds; false after some seconds.
bool Eventually(auto&& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    LoopWatcher::Turn();
  }
  return true;
}

}  // namespace tvx::test
