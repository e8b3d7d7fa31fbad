#include "core/BusHealth.h"

#include <algorithm>
#include <utility>

namespace tvx {
namespace {

constexpr std::int64_t kSecondMs = 1000;

}  // namespace

void GaugeHealth::CountAnswer(std::int64_t nowMs) {
  const std::int64_t second = nowMs / kSecondMs;
  const auto at = static_cast<std::size_t>(second % kSeconds);
  if (secondOf_[at] != second) answers_[at] = 0;
  secondOf_[at] = second;
  ++answers_[at];
}

int GaugeHealth::AnswersInLastMinute(std::int64_t nowMs) const {
  int sum = 0;
  for (std::size_t at = 0; at < answers_.size(); ++at) {
    if (nowMs / kSecondMs - secondOf_[at] < kSeconds) sum += answers_[at];
  }
  return sum;
}

void BusHealth::Add(int gaugeID) {
  gauges_.emplace_back().gaugeID = gaugeID;
}

void BusHealth::Begin(std::int64_t nowMs) {
  for (GaugeHealth& gauge : gauges_) {
    const int gaugeID = gauge.gaugeID;
    gauge = {};
    gauge.gaugeID = gaugeID;
    gauge.answeredMs = nowMs;
  }
  askedLast_ = restOf_ = kNobody;
}

GaugeHealth* BusHealth::Find(int gaugeID) {
  const auto found = std::ranges::lower_bound(gauges_, gaugeID, {}, &GaugeHealth::gaugeID);
  return found != gauges_.end() && found->gaugeID == gaugeID ? &*found : nullptr;
}

void BusHealth::NoteAsked(int gaugeID, std::int64_t nowMs) {
  GaugeHealth* gauge = Find(gaugeID);
  if (gauge == nullptr) return;
  if (gauge->askedMs != 0) gauge->askedEveryMs = nowMs - gauge->askedMs;
  gauge->askedMs = nowMs;
  if (!gauge->waitingSinceMs_) gauge->waitingSinceMs_ = nowMs;
  askedLast_ = gaugeID;
}

std::uint32_t BusHealth::NoteAnswer(int gaugeID, std::int64_t nowMs) {
  GaugeHealth* gauge = Find(gaugeID);
  if (gauge == nullptr) return 0;
  gauge->CountAnswer(nowMs);
  gauge->answeredMs = nowMs;
  gauge->everAnswered = true;
  restOf_ = kNobody;
  gauge->waitingSinceMs_.reset();
  return std::exchange(gauge->missedInARow, 0);
}

void BusHealth::NoteDamaged() {
  const int rest = std::exchange(restOf_, kNobody);
  if (GaugeHealth* gauge = Find(rest == kNobody ? askedLast_ : rest)) ++gauge->damaged;
}

void BusHealth::Watch(std::int64_t nowMs) {
  for (GaugeHealth& gauge : gauges_) {
    if (!gauge.waitingSinceMs_ || nowMs - *gauge.waitingSinceMs_ < kAnswerMs) continue;
    ++gauge.missed;
    ++gauge.missedInARow;
    gauge.waitingSinceMs_.reset();
  }
}

BusHealth::Silence BusHealth::Silent(std::int64_t nowMs) const {
  Silence silence;
  for (const GaugeHealth& gauge : gauges_) {
    if (gauge.missedInARow < kSilentAfterMissed || nowMs - gauge.answeredMs < kSilentMs) continue;
    ++silence.count;
    if (silence.longest == nullptr || gauge.answeredMs < silence.longest->answeredMs)
      silence.longest = &gauge;
  }
  return silence;
}

}  // namespace tvx
