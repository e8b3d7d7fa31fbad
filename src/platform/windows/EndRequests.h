// Windows' requests to end the program, brought into the event loop.
#pragma once

#include <functional>
#include <memory>

#include "platform/machine/Machine.h"

namespace tvx {

// As Machine::WatchForEnd: log-off and shut-down, a program that asks this one to end, and the events of a
// console (Ctrl+C, its closing). Needs an event loop that handles the messages of this thread's windows. One
// object at a time.
class EndRequests final : public EndWatch {
 public:
  // How long Windows is kept from ending the program by force.
  static constexpr int kLongestMs = 4000;

  EndRequests(std::function<void()> ended, std::function<bool()> gone);
  ~EndRequests() override;
  EndRequests(const EndRequests&) = delete;
  EndRequests& operator=(const EndRequests&) = delete;

  // The hidden window that the requests come to (an HWND).
  void* Window() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace tvx
