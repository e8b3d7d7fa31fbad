#include "core/watch/LatencyMeter.h"

#include <algorithm>
#include <numeric>

namespace tvx {
namespace {

constexpr std::size_t kExactMs = 100;
constexpr std::size_t kStepMs = 10;
constexpr std::int64_t kMsPerSecond = 1000;

}  // namespace

std::size_t LatencyMeter::BinOf(std::int64_t latencyMs) {
  const auto ms = static_cast<std::size_t>(std::max<std::int64_t>(latencyMs, 0));
  return std::min(ms < kExactMs ? ms : kExactMs + (ms - kExactMs) / kStepMs, kBins - 1);
}

int LatencyMeter::MsOf(std::size_t bin) {
  return static_cast<int>(bin < kExactMs ? bin : kExactMs + (bin - kExactMs) * kStepMs);
}

void LatencyMeter::Note(std::int64_t latencyMs, std::int64_t nowMs) {
  const std::int64_t number = nowMs / kMsPerSecond;
  Second& second = seconds_[static_cast<std::size_t>(number) % kSeconds];
  if (second.number != number) second = {number, {}};
  ++second.counts[BinOf(latencyMs)];
}

std::optional<LatencyMeter::Result> LatencyMeter::OfLastMinute(std::int64_t nowMs) const {
  std::array<std::uint32_t, kBins> counts{};
  for (const Second& second : seconds_) {
    if (second.number < 0 || nowMs / kMsPerSecond - second.number >= static_cast<std::int64_t>(kSeconds))
      continue;
    for (std::size_t bin = 0; bin < kBins; ++bin) counts[bin] += second.counts[bin];
  }
  const std::uint32_t all = std::accumulate(counts.begin(), counts.end(), std::uint32_t{0});
  if (all == 0) return std::nullopt;
  // The smallest latency that so many in a hundred do not exceed.
  const auto percentile = [&](std::uint32_t part) {
    std::uint64_t below = 0;
    std::size_t bin = 0;
    while (100 * (below += counts[bin]) < std::uint64_t{all} * part) ++bin;
    return MsOf(bin);
  };
  return Result{percentile(50), percentile(99)};
}

}  // namespace tvx
