// The keepers of a program's serial lines, and the order among those of one device.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/FdWatcher.h"
#include "platform/linux/serial/LineServer.h"

namespace tvx {

// A line that was let go is still held by its keeper for a moment, or for long where the adapter is stuck.
// Whoever wants the same device again has to wait for that; a line that is opened at once would be found
// busy.
class LineKeepers {
 public:
  using MakeWatcher = std::function<std::unique_ptr<FdWatcher>()>;
  // Takes the socket to the new keeper, which it has to close; -1 where none can be had.
  using Started = std::function<void(int socket)>;

  // `server` must outlive this object.
  LineKeepers(LineServer& server, MakeWatcher makeWatcher);
  ~LineKeepers();
  LineKeepers(const LineKeepers&) = delete;
  LineKeepers& operator=(const LineKeepers&) = delete;

  std::unique_ptr<FdWatcher> MakeFdWatcher() const { return makeWatcher_(); }
  // Starts a keeper for the device `path`, at once or as soon as its last line has been let go. `owner` is
  // only a name for Cancel.
  void Start(const void* owner, const std::string& path, SerialReset reset, Started started);
  // Takes back a Start that has not been answered.
  void Cancel(const void* owner);
  // Lets go of the line of the keeper behind `socket`, which is closed here.
  void LetGo(const std::string& path, int socket);

 private:
  struct Leaving {
    std::string path;
    int socket = -1;  // -1: free for the next one
    std::unique_ptr<FdWatcher> watcher;
  };
  struct Waiting {
    const void* owner;
    std::string path;
    SerialReset reset;
    Started started;
  };
  bool IsLeaving(const std::string& path) const;
  void OnGone(Leaving& line);
  void StartWaiting(const std::string& path);

  LineServer& server_;
  MakeWatcher makeWatcher_;
  std::vector<std::unique_ptr<Leaving>> leaving_;
  std::vector<Waiting> waiting_;
};

}  // namespace tvx
