// Starts the processes that keep serial lines.
#pragma once

#include <string>

#include "platform/SerialPort.h"

namespace tvx {

// What those processes are called in a list of processes.
inline constexpr const char* kKeeperName = "torvex-line";

// A small process that was split off early makes them, because to split the whole program each time would
// cost milliseconds. It and its keepers end by themselves when the program has ended, however that came.
class LineServer {
 public:
  // Splits it off: best before the program has windows, threads and much memory.
  LineServer();
  ~LineServer();
  LineServer(const LineServer&) = delete;
  LineServer& operator=(const LineServer&) = delete;

  // Starts a keeper for the device `path` (absolute) and returns the socket to it, to be closed by the
  // caller; -1 where none can be had. Does not wait. What a keeper says: see LineKeeper.h.
  int StartKeeper(const std::string& path, SerialReset reset);

 private:
  void SplitOff();

  int socket_ = -1;
};

}  // namespace tvx
