// What the simulator does not send although it was asked, in words for the status form.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "config/Model.h"
#include "core/watch/LatencyMeter.h"
#include "simlink/SimCom.h"

namespace tvx {

struct LinkFindings {
  std::string Text;            // a line for each finding; empty where there is none
  bool GroupsMissing = false;  // datarefs come, and data groups do not
};

// Looks at every subscription: to be called about once a second, not for each value.
LinkFindings FindMissingValues(const ConfigModel& model, const SimCom& sim, std::int64_t nowMs);

// "In 12 ms from X-Plane to the instruments, 99 of 100 within 40 ms; 3 values lost, 0 datagrams given up"
std::string FlowWords(const std::optional<LatencyMeter::Result>& latency, std::uint64_t lost,
                      std::uint64_t givenUp);

}  // namespace tvx
