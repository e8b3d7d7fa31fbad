// The option to park a needle whose value does not come any more.
#pragma once

#include "simlink/SimCom.h"

namespace tvx {

inline constexpr int kOptionParkOld = 0x40;
inline constexpr std::int64_t kOldMs = 5000;

// Whether the option is set, and the port's value is older, or has never come.
inline bool ParksOld(int options, const SimCom& sim, Port port) {
  return (options & kOptionParkOld) != 0 && sim.AgeMs(port).value_or(kOldMs + 1) > kOldMs;
}

}  // namespace tvx
