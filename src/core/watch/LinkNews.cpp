#include "core/watch/LinkNews.h"

#include <algorithm>

namespace tvx {

std::vector<std::size_t> LinkNews::Tick(bool running, std::span<const bool> well, std::int64_t nowMs) {
  if (running && !running_) {
    links_.assign(well.size(), {});
    nextMs_ = nowMs + kAtFirstMs;
    quietMs_ = 0;
  }
  running_ = running;
  if (!running) return {};
  bool ripe = false;
  for (std::size_t i = 0; i < links_.size(); ++i) {
    Link& link = links_[i];
    if (well[i] == link.told) {
      link.otherSinceMs.reset();
    } else {
      if (!link.otherSinceMs) link.otherSinceMs = nowMs;
      ripe |= nowMs - *link.otherSinceMs >= kLastsMs;
    }
  }
  if (!ripe || nowMs < nextMs_) return {};
  const bool calm = nowMs - nextMs_ > kCalmMs;
  quietMs_ = calm ? kQuietMs : std::clamp(2 * quietMs_, kQuietMs, kCalmMs);
  nextMs_ = nowMs + quietMs_;
  // What has changed together is told together, whichever was first.
  std::vector<std::size_t> news;
  for (std::size_t i = 0; i < links_.size(); ++i) {
    if (!links_[i].otherSinceMs) continue;
    links_[i] = {well[i], {}};
    news.push_back(i);
  }
  return news;
}

}  // namespace tvx
