#include "instruments/ReportedValue.h"

#include <algorithm>
#include <cmath>

namespace tvx {
namespace {

// Two values of the simulator count as the same below this difference.
constexpr double kSame = 0.005;
// How long the simulator's first value is waited for, from the first report on.
constexpr std::uint32_t kAwaitedSeconds = 3;

}  // namespace

void KnobHold::Begin(const GaugeWorld& now) {
  began_ = now.TickNumber();
  least_ = began_ + now.TicksPerSecond();
  most_ = std::max(least_, began_ + 2 * now.PollRoundTicks() + now.TicksPerSecond() / 2);
  rested_ = false;
}

void ReportedValue::Report(GaugeReply& world, KnobHold& hold, double value, const ShownOn& shown) {
  if (!Sends() || !IsNews(world, hold, value, shown)) return;
  auto sent = static_cast<float>(value);
  world.Sim().PutPort(port_, sent);
}

bool ReportedValue::IsNews(GaugeReply& world, KnobHold& hold, double value, const ShownOn& shown) {
  float current = 0;
  const bool known = world.Sim().GetPort(port_, current);
  const bool arrived = world.Sim().HasArrived(port_);
  const bool echo = shown.face != nullptr && world.WasTold(shown.gaugeID, shown.face->Command(), shown.value);
  if (echo && !arrived && !WasLast(value) && Awaiting(world)) return false;
  // Before the simulator's first value came, the face was told a mere beginning.
  const bool told = echo && arrived;
  const auto isCurrent = [current](std::optional<float> other) {
    return other && std::fabs(static_cast<double>(current) - static_cast<double>(*other)) <= kSame;
  };
  // Turned back, between two reports, to where it stood before the simulator's last change.
  const bool turnedBack = shown.face != nullptr && WasLast(value) && !isCurrent(lastReported_) && arrived &&
                          hold.Over(world.TickNumber()) &&
                          world.WasToldOther(shown.gaugeID, shown.face->Command(), shown.value);
  if (told && !WasLast(value)) {
    lastReported_ = static_cast<float>(value);
    beforeReport_.reset();
    return false;
  }
  if (!WasLast(value) || turnedBack) {
    lastReported_ = static_cast<float>(value);
    beforeReport_ = known ? std::optional(current) : std::nullopt;
    hold.Begin(world);
    if (shown.face != nullptr) shown.face->NoteShown(world, shown.gaugeID, shown.value);
    return true;
  }
  if (!known) return true;
  if (isCurrent(lastReported_)) beforeReport_.reset();
  return hold.Over(world.TickNumber()) && isCurrent(beforeReport_);
}

bool ReportedValue::Awaiting(const GaugeWorld& now) {
  if (!awaitedSince_) awaitedSince_ = now.TickNumber();
  return now.TickNumber() - *awaitedSince_ < kAwaitedSeconds * now.TicksPerSecond();
}

bool ReportedValue::WasLast(double value) const {
  return lastReported_ == static_cast<float>(value);
}

}  // namespace tvx
