#include "virtualcockpit/sim/BadNetwork.h"

#include <algorithm>

namespace tvx::vc {
namespace {

constexpr std::size_t kMostWaiting = 2000;

}  // namespace

void BadNetwork::SetTraits(const NetworkTraits& traits, std::uint32_t seed) {
  traits_ = traits;
  chance_ = Chance(seed);
}

void BadNetwork::Hold(ByteView datagram, const Peer& peer, std::int64_t dueMs, bool forNext) {
  if (waiting_.size() >= kMostWaiting) return;
  waiting_.push_back({dueMs, forNext, peer, {datagram.begin(), datagram.end()}});
}

void BadNetwork::Pass(ByteView datagram, const Peer& peer, std::int64_t nowMs) {
  if (chance_.Hits(traits_.lost)) return;
  const bool doubled = chance_.Hits(traits_.doubled);
  if (chance_.Hits(traits_.reordered)) return Hold(datagram, peer, nowMs + kOvertakeMs, true);
  if (chance_.Hits(traits_.delayed)) {
    return Hold(datagram, peer, nowMs + chance_.Between(kLeastDelayMs, kMostDelayMs), false);
  }
  deliver_(datagram, peer);
  if (doubled) deliver_(datagram, peer);
  ReleaseOvertaken();
}

void BadNetwork::ReleaseOvertaken() {
  const auto overtaken =
      std::stable_partition(waiting_.begin(), waiting_.end(), [](const Waiting& w) { return !w.forNext; });
  const std::vector<Waiting> ready(std::make_move_iterator(overtaken),
                                   std::make_move_iterator(waiting_.end()));
  waiting_.erase(overtaken, waiting_.end());
  for (const Waiting& w : ready) deliver_(w.bytes, w.peer);
}

void BadNetwork::Advance(std::int64_t nowMs) {
  const auto due = std::stable_partition(waiting_.begin(), waiting_.end(),
                                         [nowMs](const Waiting& w) { return w.dueMs > nowMs; });
  const std::vector<Waiting> ready(std::make_move_iterator(due), std::make_move_iterator(waiting_.end()));
  waiting_.erase(due, waiting_.end());
  for (const Waiting& w : ready) deliver_(w.bytes, w.peer);
}

}  // namespace tvx::vc
