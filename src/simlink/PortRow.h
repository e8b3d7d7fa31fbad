// One simulator port: a small number that binds a Function and a sequence number to a value.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

#include "base/Bytes.h"

namespace tvx {

// Ports are numbered 0, 1, 2 ... in the order of opening.
using Port = std::uint16_t;
inline constexpr Port kNoPort = 65535;
inline constexpr int kMaxPorts = 32767;

struct PortRow {
  std::int16_t FunctionNr = 0;
  std::int16_t OpenedBy = 0;  // Opener.h
  Byte SeqNr = 0;             // 1..4; 0 counts as 1
  bool ReadEnabled = false;   // what arrives refreshes the port, and GetPort reads it
  bool Blocked = false;       // holds the value: neither refreshed nor read
  // The value as it came, in the slot of the Function's data type.
  Byte ByteValue = 0;
  std::int16_t IntValue = 0;   // Integer, Unsigned Int., BCD code
  std::int32_t LongValue = 0;  // Long
  float FloatValue = 0;        // Float, Xplane Dataref
};

// How the values of one source come.
struct PortTraffic {
  std::int64_t cameMs = -1;  // the last one; -1: none has come
  std::uint32_t came = 0;
  std::uint32_t lost = 0;    // those that a gap in the usual rhythm tells of; a silence of 3 s is no loss
  std::uint32_t missed = 0;  // of the last gap; lost once the rhythm goes on without them
  float gapMs = 0;           // between two, as a rule
  std::uint8_t gaps = 0;     // that the rule was learnt from

  bool HasCome() const { return cameMs >= 0; }
  // Values a second, 0 where fewer than two have come or none for 3 s.
  float Rate(std::int64_t nowMs) const {
    return gapMs > 0 && nowMs - cameMs < kSilenceMs ? 1000.0f / gapMs : 0.0f;
  }
  // One came.
  void Note(std::int64_t nowMs) {
    const auto gap = static_cast<float>(std::max<std::int64_t>(nowMs - cameMs, 1));
    if (!HasCome() || gap >= static_cast<float>(kSilenceMs)) {
      missed = 0;
    } else if (gaps < kGapsToLearn) {
      gapMs += (gap - gapMs) / static_cast<float>(++gaps);
    } else if (gap > kMuchLonger * gapMs && gap > kShortestGapMs) {
      // Twice in a row it is a slower rhythm.
      if (missed > 0) gapMs = gap;
      missed = missed > 0 ? 0 : static_cast<std::uint32_t>(std::lround(gap / gapMs)) - 1;
    } else if (missed > 0 && gap < kMuchShorter * gapMs) {
      --missed;  // only late: it comes close behind the one before
    } else {
      lost += std::exchange(missed, 0);
      gapMs += (gap - gapMs) / 8.0f;
    }
    cameMs = nowMs;
    ++came;
  }

 private:
  static constexpr std::int64_t kSilenceMs = 3000;
  static constexpr std::uint8_t kGapsToLearn = 4;
  static constexpr float kMuchLonger = 1.8f, kMuchShorter = 0.5f;
  static constexpr float kShortestGapMs = 60;
};

}  // namespace tvx
