// SIGTERM and SIGINT, brought into the event loop.
#pragma once

#include <functional>
#include <memory>

#include "platform/FdWatcher.h"
#include "platform/machine/Machine.h"

namespace tvx {

// While it lives, both signals call `ended` from the event loop, once for each signal; a second signal while
// the first is still being handled has no effect. One object at a time.
class TerminationSignals final : public EndWatch {
 public:
  TerminationSignals(std::unique_ptr<FdWatcher> watcher, std::function<void()> ended);
  ~TerminationSignals() override;
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 private:
  std::unique_ptr<FdWatcher> watcher_;
};

}  // namespace tvx
