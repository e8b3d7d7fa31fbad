// Which instrument a hand is on: asks all that report, one after the other, and sees whose report changes.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "guide/GuideHardware.h"
#include "hwbus/GaugeFrame.h"

namespace tvx {

// Clocks are left out: their reports change by themselves.
class HandWatch {
 public:
  HandWatch(const ConfigModel& model, GuideHardware& hardware) : model_(model), hardware_(hardware) {}

  // Begins anew: what stands now is at rest.
  void Start();
  void Stop() { running_ = false; }
  // About every 20 ms.
  void Tick();
  void OnReply(ReplyView reply);
  // The GaugeID that moved last; -1 before the first.
  int Moved() const { return moved_; }
  // Rises with every instrument that is found to move.
  unsigned Count() const { return count_; }
  // "033 CTL30 Radio Module moved. It stands at 118.50 MHz: a COM radio."; empty before the first.
  std::string Words() const;

 private:
  using Report = std::array<Byte, kReplySize>;

  const ConfigModel& model_;
  GuideHardware& hardware_;
  bool running_ = false;
  std::vector<int> asked_;  // GaugeIDs
  std::size_t next_ = 0;
  int ticks_ = 0;
  std::array<std::optional<Report>, 256> last_{};
  int moved_ = -1;
  unsigned count_ = 0;
};

}  // namespace tvx
