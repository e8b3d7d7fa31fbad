// How the values of one source come: how often, how long ago, and how many were lost on the way.
#pragma once

#include <cstdint>

namespace tvx {

class PortTraffic {
 public:
  bool HasCome() const { return cameMs_ >= 0; }
  // When the last one came; -1: none has.
  std::int64_t CameMs() const { return cameMs_; }
  // Those that a gap in the usual rhythm tells of; a silence of 3 s is no loss.
  std::uint32_t Lost() const { return lost_; }
  // Values a second, 0 where fewer than two have come or none for 3 s.
  float Rate(std::int64_t nowMs) const {
    return gapMs_ > 0 && nowMs - cameMs_ < kSilenceMs ? 1000.0f / gapMs_ : 0.0f;
  }
  // One came. Every value of every dataref passes here: what comes in its rhythm is counted, and looked at
  // only now and then.
  void Note(std::int64_t nowMs) {
    const std::int64_t gap = nowMs - cameMs_;
    cameMs_ = nowMs;
    ++unaveraged_;
    if (gap > regularMs_ || unaveraged_ >= kAverageOver) Look(nowMs, gap);
  }

 private:
  static constexpr std::int64_t kSilenceMs = 3000;
  static constexpr std::uint8_t kGapsToLearn = 4;
  static constexpr std::uint8_t kAverageOver = 16;
  static constexpr std::int64_t kLookAtEach = -1;

  void Look(std::int64_t nowMs, std::int64_t gapMs);
  void Average(std::int64_t nowMs);

  std::int64_t cameMs_ = -1;
  std::int32_t regularMs_ = kLookAtEach;  // a longer gap is looked at
  std::uint8_t unaveraged_ = 0;           // values that gapMs_ does not know of yet
  std::uint8_t gaps_ = 0;                 // that the rule was learnt from
  float gapMs_ = 0;                       // between two, as a rule
  std::int64_t averagedMs_ = -1;          // up to when gapMs_ knows
  std::uint32_t lost_ = 0;
  std::uint32_t missed_ = 0;  // of the last gap; lost once the rhythm goes on without them
};

}  // namespace tvx
