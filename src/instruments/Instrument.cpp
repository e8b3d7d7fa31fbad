#include "instruments/Instrument.h"

#include <cmath>

#include "base/Rounding.h"

namespace tvx {
namespace {

// Two values of the simulator count as the same below this difference.
constexpr double kSame = 0.005;

}  // namespace

bool GaugeTick::QueueValueIfChanged(ActiveGauge& gauge, std::size_t slot, int command, double value) {
  const auto rounded = RoundTo<std::int32_t>(value);
  if (!rounded || *rounded > kLargestValue || *rounded < -kLargestValue) return false;
  return QueueIfChanged(gauge, slot, command, *rounded);
}

void GaugeReply::Report(ActiveGauge& gauge, std::size_t n, double value) {
  if (gauge.InputFunction[n] == -1 || !IsNews(gauge, n, value, gauge.InputPort[n])) return;
  auto sent = static_cast<float>(value);
  Sim().PutPort(gauge.InputPort[n], sent);
}

bool GaugeReply::IsNews(ActiveGauge& gauge, std::size_t n, double value, Port port) {
  const auto reported = static_cast<float>(value);
  float current = 0;
  const bool known = Sim().GetPort(port, current);
  const auto isCurrent = [current](float other) {
    return std::fabs(static_cast<double>(current) - static_cast<double>(other)) <= kSame;
  };
  if (gauge.LastReported[n] != reported) {
    gauge.LastReported[n] = reported;
    gauge.BeforeReport[n] = known ? current : ActiveGauge::kUnknown;
    gauge.QuietUntil = TickNumber() + TicksPerSecond();
    return true;
  }
  if (!known) return true;
  if (isCurrent(reported)) gauge.BeforeReport[n] = ActiveGauge::kUnknown;
  return TickNumber() >= gauge.QuietUntil && isCurrent(gauge.BeforeReport[n]);
}

void Instrument::OpenInto(ActiveGauge& gauge, std::size_t slot, SimCom& sim, int function, int sequenceNr) {
  gauge.LastSent[slot] = ActiveGauge::kNeverSent;
  if (function == 0) return;
  gauge.Ports[slot] = sim.OpenSimPort(function, sequenceNr);
  if (gauge.Ports[slot] != kNoPort) sim.EnableReadSimPort(gauge.Ports[slot]);
}

void Instrument::ReportThrough(ActiveGauge& gauge, std::size_t n, std::size_t slot, int function) {
  gauge.InputPort[n] = gauge.Ports[slot];
  gauge.InputFunction[n] =
      gauge.Ports[slot] == kNoPort ? std::int16_t{-1} : static_cast<std::int16_t>(function);
}

}  // namespace tvx
