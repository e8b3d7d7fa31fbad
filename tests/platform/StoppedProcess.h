// A process that stands still, as one does whose system call waits for an adapter.
#pragma once

#include <signal.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "platform/linux/serial/LineServer.h"

namespace tvx {

class StoppedProcess {
 public:
  explicit StoppedProcess(pid_t process) : pid(process) {
    if (pid > 0) kill(pid, SIGSTOP);
  }
  ~StoppedProcess() { GoOn(); }
  StoppedProcess(const StoppedProcess&) = delete;
  StoppedProcess& operator=(const StoppedProcess&) = delete;
  void GoOn() const {
    if (pid > 0) kill(pid, SIGCONT);
  }

  // The process that keeps the line of a device; -1 where there is none.
  static pid_t KeeperOf(const std::string& device) {
    std::error_code error;
    for (const auto& process : std::filesystem::directory_iterator("/proc")) {
      std::string name;
      std::getline(std::ifstream(process.path() / "comm"), name);
      if (name != kKeeperName) continue;
      for (const auto& file : std::filesystem::directory_iterator(process.path() / "fd", error)) {
        if (std::filesystem::read_symlink(file.path(), error) == device)
          return std::stoi(process.path().filename());
      }
    }
    return -1;
  }
  // The process that starts such processes, from one of them.
  static pid_t ServerOf(pid_t keeper) {
    std::string word;
    for (std::ifstream status("/proc/" + std::to_string(keeper) + "/status"); status >> word;) {
      if (word == "PPid:" && status >> word) return std::stoi(word);
    }
    return -1;
  }

  const pid_t pid;
};

}  // namespace tvx
