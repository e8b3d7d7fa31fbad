// Tells when a file descriptor can be read or written, from whatever event loop the program runs.
#pragma once

#include <functional>

namespace tvx {

// Watches one descriptor at a time. Level-triggered: a callback is called again while there is still
// something to do. Every operation may be called from inside a callback.
class FdWatcher {
 public:
  using Callback = std::function<void()>;

  virtual ~FdWatcher() = default;
  virtual void SetCallbacks(Callback readable, Callback writable) = 0;
  // Watches `fd` from now on: for reading, not for writing. What was watched before is released.
  virtual void Attach(int fd) = 0;
  // Stops watching; to be called before the descriptor is closed. No callback comes afterwards.
  virtual void Release() = 0;
  virtual void WatchRead(bool enabled) = 0;
  virtual void WatchWrite(bool enabled) = 0;
};

}  // namespace tvx
