// Tells the rest of a damaged answer from an answer that is still coming in.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/SerialPort.h"

namespace tvx {

class StaleInput {
 public:
  // An adapter may hand an answer over in two pieces, 16 ms apart.
  static constexpr std::int64_t kRestMs = 25;

  // To be called before each write. Discards what waits on the port where it has not grown for kRestMs; true
  // when it did.
  bool DiscardRest(SerialPort& port, std::int64_t nowMs) {
    const std::size_t waiting = port.Waiting();
    if (waiting != waiting_ || waiting == 0) {
      waiting_ = waiting;
      sinceMs_ = nowMs;
      return false;
    }
    if (nowMs - sinceMs_ < kRestMs) return false;
    port.DiscardInput();
    waiting_ = 0;
    return true;
  }

  // Bytes that waited when it was looked at last.
  std::size_t Waiting() const { return waiting_; }
  // Input was read: what waits from now on is another answer.
  void NoteRead() { waiting_ = 0; }

 private:
  std::size_t waiting_ = 0;  // bytes, when it was looked at last
  std::int64_t sinceMs_ = 0;
};

}  // namespace tvx
