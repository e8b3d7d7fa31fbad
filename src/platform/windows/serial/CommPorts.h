// The real COM ports.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/windows/serial/CommLine.h"

namespace tvx {

// Ports are opened and closed by threads of their own, because a driver may take its time; they touch nothing
// of the program's. A port that is opened anew waits for its own closing there, or it would be found busy.
class CommPorts {
 public:
  // Null where no thread can be had.
  std::unique_ptr<CommOpening> Open(const std::string& name, SerialReset reset);

 private:
  // By name: signalled when the port was let go.
  std::map<std::string, std::shared_ptr<void>> closed_;
};

}  // namespace tvx
