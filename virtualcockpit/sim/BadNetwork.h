// A network that loses, doubles, reorders and delays datagrams, by chance that can be repeated.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "base/Bytes.h"
#include "virtualcockpit/pace/Chance.h"
#include "virtualcockpit/sim/Peer.h"
#include "virtualcockpit/sim/SimTraits.h"

namespace tvx::vc {

class BadNetwork {
 public:
  using Deliver = std::function<void(ByteView, const Peer&)>;
  explicit BadNetwork(Deliver deliver) : deliver_(std::move(deliver)) {}
  void SetTraits(const NetworkTraits& traits, std::uint32_t seed);

  // One datagram; it is delivered at once where nothing happens to it.
  void Pass(ByteView datagram, const Peer& peer, std::int64_t nowMs);
  // Delivers what has waited long enough.
  void Advance(std::int64_t nowMs);
  void Clear() { waiting_.clear(); }

  static constexpr std::int64_t kLeastDelayMs = 20, kMostDelayMs = 200;
  // A datagram that is to be overtaken waits for the next one, at most this long.
  static constexpr std::int64_t kOvertakeMs = 100;

 private:
  struct Waiting {
    std::int64_t dueMs;
    bool forNext;  // goes as soon as another one has gone
    Peer peer;
    std::vector<Byte> bytes;
  };
  void Hold(ByteView datagram, const Peer& peer, std::int64_t dueMs, bool forNext);
  void ReleaseOvertaken();

  Deliver deliver_;
  NetworkTraits traits_;
  Chance chance_{1};
  std::vector<Waiting> waiting_;
};

}  // namespace tvx::vc
