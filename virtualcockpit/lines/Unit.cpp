#include "virtualcockpit/lines/Unit.h"

#include <algorithm>

namespace tvx::vc {

void Unit::SetFault(DeviceFault fault) {
  fault_ = fault;
  Changed();
}

void Unit::Receive(ByteView bytes, std::int64_t nowMs) {
  nowMs_ = nowMs;
  if (fault_ != DeviceFault::Dead) OnBytes(bytes);
}

void Unit::Tick(std::int64_t nowMs) {
  nowMs_ = nowMs;
  while (!waiting_.empty() && waiting_.front().dueMs <= nowMs) {
    const std::vector<Byte> bytes = std::move(waiting_.front().bytes);
    waiting_.erase(waiting_.begin());
    Transmit(bytes);
  }
  OnTick(nowMs);
}

void Unit::Interrupt() {
  waiting_.clear();
  OnInterrupt();
}

void Unit::Answer(std::vector<Byte> bytes) {
  switch (fault_) {
    case DeviceFault::Silent:
    case DeviceFault::Dead:
      return;
    case DeviceFault::Late:
      waiting_.push_back({nowMs_ + kLateMs, std::move(bytes)});
      return;
    case DeviceFault::Garbled:
      // Now its first byte, now its last, now one between.
      bytes[damage_++ % 3 * (bytes.size() - 1) / 2] ^= 0x5A;
      break;
    case DeviceFault::Duplicate:
      Transmit(bytes);
      break;
    case DeviceFault::None:
      break;
  }
  Transmit(bytes);
}

void Unit::Transmit(const std::vector<Byte>& bytes) {
  ++answers_;
  if (write_) write_(bytes);
}

}  // namespace tvx::vc
