#include "ffb/SimControls.h"

#include <cmath>

namespace tvx {
namespace {

constexpr std::array<std::string_view, 2> kYokeOverrides = {"sim/operation/override/override_joystick_roll",
                                                            "sim/operation/override/override_joystick_pitch"};
constexpr std::array<std::string_view, 2> kPedalOverrides = {
    "sim/operation/override/override_joystick_heading", "sim/operation/override/override_toe_brakes"};
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
  for (const std::string_view override : overrides) sim_.SendXplaneDREF(override, wanted ? 1.0f : 0.0f);
  return true;
}

void SimControls::Put(int offset, float FfbVariables::*variable, double value, bool always) {
  const auto next = static_cast<float>(value);
  if (!std::isfinite(next)) return;
  if (!always && std::abs(next - ports_.Variables.*variable) < kSmallestChange) return;
  ports_.Variables.*variable = next;
  ports_.PutPortFFB(offset);
}

void SimControls::Yoke(std::optional<std::array<double, 2>> ratios) {
  const bool all = Take(yoke_, ratios.has_value(), kYokeOverrides);
  if (!ratios) return;
  ratios_ = *ratios;
  Put(4, &FfbVariables::YokeRoll, ratios_[0], all);
  Put(5, &FfbVariables::YokePitch, ratios_[1], all);
}

void SimControls::Pedals(const std::optional<PedalRatios>& ratios) {
  const bool all = Take(pedals_, ratios.has_value(), kPedalOverrides);
  if (!ratios) return;
  Put(15, &FfbVariables::Rudder, ratios->rudder, all);
  Put(16, &FfbVariables::LeftBrake, ratios->leftBrake, all);
  Put(17, &FfbVariables::RightBrake, ratios->rightBrake, all);
}

void SimControls::GiveBack() {
  if (!yoke_.taken && !pedals_.taken) return;
  const bool closed = !sim_.UdpOpen();
  if (closed) sim_.OpenUDP();
  Yoke(std::nullopt);
  Pedals(std::nullopt);
  if (closed) sim_.CloseUDP();
}

}  // namespace tvx
