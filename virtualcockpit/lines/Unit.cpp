#include "virtualcockpit/lines/Unit.h"

#include <algorithm>

namespace tvx::vc {

void Unit::SetFault(DeviceFault fault) {
  const bool comesOn = fault_ == DeviceFault::Dead && fault != DeviceFault::Dead && power_;
  fault_ = fault;
  Changed();
  if (comesOn) ComeOn();
}

void Unit::SetPower(bool on) {
  const bool comesOn = on && !power_ && fault_ != DeviceFault::Dead;
  power_ = on;
  Changed();
  if (comesOn) ComeOn();
}

void Unit::ComeOn() {
  Interrupt();
  if (traits_.startsAnew) StartAnew();
}

void Unit::Receive(ByteView bytes, std::int64_t nowMs) {
  nowMs_ = nowMs;
  if (Powered()) OnBytes(bytes);
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
  if (!power_) return;
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
    case DeviceFault::Half:
      bytes.resize(bytes.size() / 2);
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
