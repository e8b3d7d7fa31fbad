// The receive handler of the gauge bus: checks each reply, keeps its raw text, and hands it to its sender's
// instrument while the cycle runs.
#pragma once

#include <array>

#include "core/ProcessCycle.h"
#include "hwbus/Serial.h"

namespace tvx {

class GaugeReceiver {
 public:
  GaugeReceiver(Serial& serial, ProcessCycle& cycle, SimCom& sim)
      : serial_(serial), cycle_(cycle), sim_(sim) {}

  // One event of the gauge bus port. A break, a framing error or a reply whose envelope is wrong discards
  // what waits; a read of 7 bytes or fewer is ignored. `running` false: only the raw text and the reply flag
  // change.
  void OnComm(SerialEvent event, bool running);

  // The last well-formed reply; empty before the first.
  ByteView ReplyText() const { return {replyText_.data(), replyLength_}; }

 private:
  void Dispatch(ReplyView reply);

  Serial& serial_;
  ProcessCycle& cycle_;
  SimCom& sim_;
  std::array<Byte, kReplySize> replyText_{};
  std::size_t replyLength_ = 0;
};

}  // namespace tvx
