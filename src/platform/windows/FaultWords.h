// The last words of a program that crashes: prepared in fixed memory, sent from its handler of faults.
#pragma once

#include <functional>

#include "platform/LastWords.h"

namespace tvx {

// One object at a time: what is prepared stands in memory of the process's own.
class FaultWords final : public LastWords {
 public:
  using TargetNow = std::function<std::optional<UdpTarget>()>;
  // `target` says where the simulator's datagrams go now.
  explicit FaultWords(TargetNow target);
  ~FaultWords() override;
  FaultWords(const FaultWords&) = delete;
  FaultWords& operator=(const FaultWords&) = delete;

  // From now on what is prepared is sent when a fault or an abort is about to end this process, and when
  // exit() is called from anywhere. Afterwards the fault goes its usual way. For the rest of the process.
  static void CatchFaults();

  std::optional<UdpTarget> Target() const override { return target_ ? target_() : std::nullopt; }
  void Prepare(const UdpTarget& target, std::span<const ByteView> datagrams) override;
  bool Send(const UdpTarget& target, ByteView datagram) override;

 private:
  TargetNow target_;
};

}  // namespace tvx
