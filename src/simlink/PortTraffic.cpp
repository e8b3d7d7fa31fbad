#include "simlink/PortTraffic.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tvx {

namespace {

constexpr float kMuchLonger = 1.8f, kMuchShorter = 0.5f;
constexpr float kShortestGapMs = 60;  // a shorter one is no gap, however dense the values are

}  // namespace

void PortTraffic::Look(std::int64_t nowMs, std::int64_t gapMs) {
  const auto gap = static_cast<float>(std::max<std::int64_t>(gapMs, 1));
  const bool first = averagedMs_ < 0;
  if (first || gapMs >= kSilenceMs) {
    missed_ = 0;
  } else if (gaps_ < kGapsToLearn) {
    gapMs_ += (gap - gapMs_) / static_cast<float>(++gaps_);
  } else if (gap > kMuchLonger * gapMs_ && gap > kShortestGapMs) {
    // Twice in a row it is a slower rhythm.
    if (missed_ > 0) gapMs_ = gap;
    missed_ = missed_ > 0 ? 0 : static_cast<std::uint32_t>(std::lround(gap / gapMs_)) - 1;
  } else if (missed_ > 0 && gap < kMuchShorter * gapMs_) {
    --missed_;  // only late: it comes close behind the one before
  } else {
    lost_ += std::exchange(missed_, 0);
    Average(nowMs);
  }
  unaveraged_ = 0;
  averagedMs_ = nowMs;
  const float regular = std::min(std::max(kMuchLonger * gapMs_, kShortestGapMs), kSilenceMs - 1.0f);
  const bool each = gaps_ < kGapsToLearn || missed_ > 0;
  regularMs_ = each ? kLookAtEach : static_cast<std::int32_t>(regular);
}

// One weighs an eighth, and several in their rhythm together about as much as one after the other would.
void PortTraffic::Average(std::int64_t nowMs) {
  const auto values = static_cast<float>(unaveraged_);
  const float mean = std::max(static_cast<float>(nowMs - averagedMs_), values) / values;
  gapMs_ += (mean - gapMs_) * values / (values + 7.0f);
}

}  // namespace tvx
