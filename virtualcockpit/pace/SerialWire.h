// A serial line with its USB adapter, as slow as a real one. It has no clock of its own: times are handed in.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

#include "base/Bytes.h"
#include "virtualcockpit/pace/Chance.h"
#include "virtualcockpit/pace/Clock.h"

namespace tvx::vc {

// How a line and the hardware on it behave in time.
struct LineTraits {
  // False: every byte arrives at once, and an answer in one piece.
  bool paced = true;
  // How long the adapter keeps received bytes before it hands them to the computer. 16 ms is what adapters do
  // by themselves, 1 ms with "low latency".
  int latencyMs = 16;
  // When an answer begins, after the last byte of what asked for it.
  int leastAnswerUs = 1000, mostAnswerUs = 5000;
  std::uint32_t seed = 1;
  bool operator==(const LineTraits&) const = default;
};

// Both directions carry 38400 baud with 11 bits to a byte, independently of each other. What the hardware
// says is queued: two that speak at once follow each other.
class SerialWire {
 public:
  static constexpr std::int64_t kByteNs = 11 * kNsPerSecond / 38400;
  static constexpr std::size_t kAdapterRoom = 256;   // bytes that the adapter holds on their way out
  static constexpr std::size_t kAdapterPacket = 62;  // received bytes that it hands over without waiting

  // Bytes that have arrived at the hardware, with the moment at which the last of them was whole.
  using ToHardware = std::function<void(ByteView, std::int64_t atNs)>;
  using ToProgram = std::function<void(ByteView)>;
  SerialWire(ToHardware toHardware, ToProgram toProgram)
      : toHardware_(std::move(toHardware)), toProgram_(std::move(toProgram)) {}

  // From now on; bytes under way keep their times.
  void SetTraits(const LineTraits& traits);
  const LineTraits& Traits() const { return traits_; }

  // How many more bytes the adapter takes now. The rest stays where the program's driver keeps it.
  std::size_t Room() const;
  // At most Room() bytes that the program has written.
  void FromProgram(ByteView bytes, std::int64_t nowNs);
  // What the hardware sends. It begins after the time to answer, and when the line is free.
  void FromHardware(ByteView bytes, std::int64_t nowNs);
  // Lets everything happen that is due, in its order.
  void Advance(std::int64_t nowNs);
  // Whether anything is still under way.
  bool Busy() const { return !out_.empty() || !in_.empty() || !held_.empty(); }
  // When something happens next; std::nullopt when nothing is under way.
  std::optional<std::int64_t> NextNs() const;
  // The adapter was unplugged: all that is under way is lost.
  void Reset();

 private:
  struct Travelling {
    Byte byte;
    std::int64_t dueNs;  // when it is whole at the other end
  };
  void Queue(std::deque<Travelling>& line, ByteView bytes, std::int64_t startNs, std::int64_t& freeNs);
  void TakeOut();
  void TakeIn();
  void HandOver(std::int64_t nowNs);
  std::int64_t LatencyNs() const { return traits_.latencyMs * kNsPerMs; }

  ToHardware toHardware_;
  ToProgram toProgram_;
  LineTraits traits_;
  Chance chance_{1};
  std::deque<Travelling> out_, in_;  // to the hardware, to the adapter
  std::int64_t outFreeNs_ = 0, inFreeNs_ = 0;
  std::vector<Byte> held_;       // in the adapter
  std::int64_t handOverNs_ = 0;  // when its timer runs out; it runs on by itself
};

}  // namespace tvx::vc
