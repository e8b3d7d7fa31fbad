// SIGTERM and SIGINT, brought into the event loop.
#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

namespace tvx {

// While it lives, both signals call `ended` from the event loop, once for each signal; a second signal while
// the first is still being handled has no effect. One object at a time.
class TerminationSignals {
 public:
  explicit TerminationSignals(std::function<void()> ended);
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 private:
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tvx
