#include "instruments/ReportedValue.h"

#include <cmath>

namespace tvx {
namespace {

// Two values of the simulator count as the same below this difference.
constexpr double kSame = 0.005;

}  // namespace

void ReportedValue::Report(GaugeReply& world, KnobHold& hold, double value) {
  if (!Sends() || !IsNews(world, hold, value)) return;
  auto sent = static_cast<float>(value);
  world.Sim().PutPort(port_, sent);
}

bool ReportedValue::IsNews(GaugeReply& world, KnobHold& hold, double value) {
  float current = 0;
  const bool known = world.Sim().GetPort(port_, current);
  if (!WasLast(value)) {
    lastReported_ = static_cast<float>(value);
    beforeReport_ = known ? std::optional(current) : std::nullopt;
    hold.Begin(world);
    return true;
  }
  if (!known) return true;
  const auto isCurrent = [current](std::optional<float> other) {
    return other && std::fabs(static_cast<double>(current) - static_cast<double>(*other)) <= kSame;
  };
  if (isCurrent(lastReported_)) beforeReport_.reset();
  return hold.Over(world.TickNumber()) && isCurrent(beforeReport_);
}

bool ReportedValue::WasLast(double value) const {
  return lastReported_ == static_cast<float>(value);
}

}  // namespace tvx
