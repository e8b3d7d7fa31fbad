// The last words of a program that crashes: prepared in fixed memory, sent from its signal handlers.
#pragma once

#include <functional>

#include "platform/LastWords.h"

namespace tvx {

// One object at a time: what is prepared stands in memory of the process's own.
class CrashWords final : public LastWords {
 public:
  using TargetNow = std::function<std::optional<UdpTarget>()>;
  // `target` says where the simulator's datagrams go now.
  explicit CrashWords(TargetNow target);
  ~CrashWords() override;
  CrashWords(const CrashWords&) = delete;
  CrashWords& operator=(const CrashWords&) = delete;

  // From now on what is prepared is sent when a signal is about to end this process that no program survives
  // (a fault, an abort, a lost terminal), and when exit() is called from anywhere. Afterwards the signal goes
  // its usual way: to the handler of before, or to the system, which makes a core file as ever. A signal that
  // is ignored stays so. For the rest of the process.
  static void CatchFatalSignals();

  std::optional<UdpTarget> Target() const override { return target_ ? target_() : std::nullopt; }
  void Prepare(const UdpTarget& target, std::span<const ByteView> datagrams) override;
  bool Send(const UdpTarget& target, ByteView datagram) override;

 private:
  TargetNow target_;
};

}  // namespace tvx
