#include "virtualcockpit/pace/SerialWire.h"

#include <algorithm>
#include <utility>

namespace tvx::vc {
namespace {

constexpr std::int64_t kNsPerUs = 1000;

}  // namespace

void SerialWire::SetTraits(const LineTraits& traits) {
  if (traits.seed != traits_.seed) chance_ = Chance(traits.seed);
  if (traits.latencyMs != traits_.latencyMs) handOverNs_ = 0;  // another timer begins
  traits_ = traits;
}

std::size_t SerialWire::Room() const {
  return out_.size() < kAdapterRoom ? kAdapterRoom - out_.size() : 0;
}

void SerialWire::Queue(std::deque<Travelling>& line, ByteView bytes, std::int64_t startNs,
                       std::int64_t& freeNs) {
  freeNs = std::max(freeNs, startNs);
  for (const Byte byte : bytes) line.push_back({byte, freeNs += kByteNs});
}

void SerialWire::FromProgram(ByteView bytes, std::int64_t nowNs) {
  if (traits_.paced) {
    Queue(out_, bytes, nowNs, outFreeNs_);
  } else {
    toHardware_(bytes, nowNs);
  }
}

void SerialWire::FromHardware(ByteView bytes, std::int64_t nowNs) {
  if (!traits_.paced) {
    toProgram_(bytes);
    return;
  }
  const std::int64_t wait = chance_.Between(traits_.leastAnswerUs, traits_.mostAnswerUs) * kNsPerUs;
  Queue(in_, bytes, nowNs + wait, inFreeNs_);
}

std::optional<std::int64_t> SerialWire::NextNs() const {
  std::optional<std::int64_t> next;
  const auto consider = [&next](std::int64_t at) { next = std::min(next.value_or(at), at); };
  if (!out_.empty()) consider(out_.front().dueNs);
  if (!in_.empty()) consider(in_.front().dueNs);
  if (!held_.empty()) consider(handOverNs_);
  return next;
}

void SerialWire::Advance(std::int64_t nowNs) {
  for (auto next = NextNs(); next && *next <= nowNs; next = NextNs()) {
    if (!held_.empty() && handOverNs_ == *next) {
      HandOver(*next);
    } else if (!out_.empty() && out_.front().dueNs == *next) {
      TakeOut();
    } else {
      TakeIn();
    }
  }
}

void SerialWire::TakeOut() {
  const Travelling arrived = out_.front();
  out_.pop_front();
  toHardware_(ByteView(&arrived.byte, 1), arrived.dueNs);
}

void SerialWire::TakeIn() {
  const Travelling arrived = in_.front();
  in_.pop_front();
  // While nothing is held, the adapter's timer runs out unseen, again and again.
  if (held_.empty() && handOverNs_ <= arrived.dueNs) {
    const std::int64_t latency = std::max<std::int64_t>(LatencyNs(), 1);
    handOverNs_ += ((arrived.dueNs - handOverNs_) / latency + 1) * latency;
  }
  held_.push_back(arrived.byte);
  if (held_.size() >= kAdapterPacket) HandOver(arrived.dueNs);
}

void SerialWire::HandOver(std::int64_t nowNs) {
  handOverNs_ = nowNs + LatencyNs();
  const std::vector<Byte> bytes = std::exchange(held_, {});
  toProgram_(bytes);
}

void SerialWire::Reset() {
  out_.clear();
  in_.clear();
  held_.clear();
  outFreeNs_ = inFreeNs_ = 0;
}

}  // namespace tvx::vc
