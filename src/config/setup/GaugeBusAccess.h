// The gauge bus as the configuration forms reach it.
#pragma once

#include <string>

namespace tvx {

class GaugeBusAccess {
 public:
  virtual ~GaugeBusAccess() = default;
  // How the bus stands, in words.
  virtual std::string BusWords() const = 0;
  virtual void StartSearch() = 0;
  virtual void CancelSearch() = 0;
  // Counts down the time that a reply may take; to be called every 50 ms.
  virtual void TickReplyCountdown() = 0;
};

}  // namespace tvx
