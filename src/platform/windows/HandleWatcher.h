// Tells when an event of the system's is signalled, from whatever event loop the program runs.
#pragma once

#include <functional>
#include <memory>

namespace tvx {

// Watches one event at a time. Every operation may be called from inside the callback.
class HandleWatcher {
 public:
  virtual ~HandleWatcher() = default;
  virtual void SetCallback(std::function<void()> signalled) = 0;
  // Watches the event (a HANDLE) from now on; what was watched before is released.
  virtual void Attach(void* event) = 0;
  // Stops watching; to be called before the event is closed. No callback comes afterwards.
  virtual void Release() = 0;
};
using MakeHandleWatcher = std::function<std::unique_ptr<HandleWatcher>()>;

}  // namespace tvx
