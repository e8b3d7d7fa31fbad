// One program to a folder.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/machine/Machine.h"
#include "platform/windows/HandleWatcher.h"

namespace tvx {

// The claim is a name that the system knows for as long as a program has it, and forgets when that ends,
// however it does; no file is left behind. It holds among the programs of one log-in.
class FolderLock {
 public:
  FolderLock();
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  // Claims the folder. False where another program has it; true where no claim can be had at all.
  bool Take(const std::string& folder);
  // As Machine::ClaimFolder.
  FolderStart TakeOrAsk(const std::string& folder, int milliseconds);
  // As Machine::ListenForStarts. Only after Take.
  void Listen(std::unique_ptr<HandleWatcher> watcher, std::function<void()> asked);
  // Asks whoever has the folder to show itself. False where it has not said within `milliseconds` that it
  // does.
  static bool AskToShow(const std::string& folder, int milliseconds);

 private:
  struct Names;
  std::unique_ptr<Names> names_;
  std::unique_ptr<HandleWatcher> watcher_;
};

}  // namespace tvx
