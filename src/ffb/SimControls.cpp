#include "ffb/SimControls.h"

#include <cmath>

namespace tvx {
namespace {

constexpr int kRenewCycles = 25;          // all is written again about once a second
constexpr double kSmallestChange = 5e-4;  // a quarter of a position count

}  // namespace

// True when everything is to be written, changed or not.
bool SimControls::Take(Group& group, bool wanted, std::array<std::string_view, 2> overrides) {
  if (!wanted && !group.taken) return false;
  const bool renew = wanted != group.taken || ++group.cycles >= kRenewCycles;
  group.taken = wanted;
  if (!renew) return false;
  group.cycles = 0;
  if (wanted) Tell();
  for (const std::string_view override : overrides) sim_.SendXplaneDREF(override, wanted ? 1.0f : 0.0f);
  if (!wanted) Tell();
  return true;
}

void SimControls::Put(int offset, double value, bool always) {
  float& variable = ports_.Variables.*FfbOffsets()[static_cast<std::size_t>(offset)].value;
  const auto next = static_cast<float>(value);
  if (!std::isfinite(next)) return;
  if (!always && std::abs(next - variable) < kSmallestChange) return;
  variable = next;
  ports_.PutPortFFB(offset);
}

void SimControls::Yoke(std::optional<std::array<double, kAxes>> ratios) {
  const bool all = Take(yoke_, ratios.has_value(), kYokeOverrides);
  if (!ratios) return;
  ratios_ = *ratios;
  Put(ffboffset::kYokeRoll, ratios_[0], all);
  Put(ffboffset::kYokePitch, ratios_[1], all);
}

void SimControls::Pedals(const std::optional<PedalRatios>& ratios) {
  const bool all = Take(pedals_, ratios.has_value(), kPedalOverrides);
  if (!ratios) return;
  Put(ffboffset::kRudder, ratios->rudder, all);
  Put(ffboffset::kLeftBrake, ratios->leftBrake, all);
  Put(ffboffset::kRightBrake, ratios->rightBrake, all);
}

void SimControls::GiveBack() {
  if (!yoke_.taken && !pedals_.taken) return;
  const bool closed = !sim_.UdpOpen();
  if (closed && !sim_.OpenUDP()) return;
  Yoke(std::nullopt);
  Pedals(std::nullopt);
  if (closed) sim_.CloseUDP();
}

}  // namespace tvx
