// One program to a folder.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/FdWatcher.h"

namespace tvx {

// The claim on a folder is a name that the kernel gives to one process only, and takes back when that ends,
// however it does; no file is left behind. Under the same name a later start reaches the first one.
class FolderClaim {
 public:
  FolderClaim() = default;
  ~FolderClaim();
  FolderClaim(const FolderClaim&) = delete;
  FolderClaim& operator=(const FolderClaim&) = delete;

  // Claims the folder; of several starts at once exactly one gets it. False where another program has it.
  bool Take(const std::string& folder);
  enum class Start { First, Shown, NoAnswer };
  // Claims the folder, or asks whoever has it to show itself. Waits up to `milliseconds` for a first one that
  // is still starting, or about to end, or does not answer.
  Start TakeOrAsk(const std::string& folder, int milliseconds);
  // Calls `asked` from the event loop whenever a later start asks the first one to show itself. Only after
  // Take.
  void Listen(std::unique_ptr<FdWatcher> watcher, std::function<void()> asked);
  // Asks whoever has the folder to show itself. False where it has not said within `milliseconds` that it
  // does.
  static bool AskToShow(const std::string& folder, int milliseconds);

 private:
  void OnAsked();

  int socket_ = -1;
  std::unique_ptr<FdWatcher> watcher_;
  std::function<void()> asked_;
};

}  // namespace tvx
