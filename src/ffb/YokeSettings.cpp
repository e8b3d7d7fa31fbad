#include "ffb/YokeSettings.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tvx {
namespace {

double Share(Byte percent) {
  return std::min<int>(percent, 100) / 100.0;
}

double OrStandard(std::int16_t value, double standard) {
  return value > 0 ? value : standard;
}

struct StandardEffect {
  float frequency;   // Hz
  Byte roll, pitch;  // %
};
constexpr StandardEffect kStandardEffects[kEffects] = {
    {8, 10, 20},   // stall buffet
    {18, 20, 20},  // overspeed
    {1, 15, 15},   // turbulence
    {4, 10, 35},   // wheel shock
    {15, 4, 8},    // runway rumble
    {20, 0, 0},    // shaker: not every aircraft has one
};

}  // namespace

bool CalibrateAxis(int low, int centre, int high, AxisCalibration& calibration) {
  const int below = centre - low;
  const int above = high - centre;
  if ((below < 0) != (above < 0)) return false;
  const int shorter = std::min(std::abs(below), std::abs(above));
  if (shorter < kLeastTravel) return false;
  calibration.centre = centre;
  calibration.scale = static_cast<float>(kYokeTravel) / static_cast<float>(above < 0 ? -shorter : shorter);
  return true;
}

YokeSettings ReadYokeSettings(const YokeRecord& record) {
  YokeSettings settings;
  const int mode = record.StartMode;
  settings.startMode = mode >= 0 && mode < kYokeModes ? static_cast<YokeMode>(mode) : YokeMode::Off;
  settings.address = record.Address;
  settings.options = record.OptionBits;
  const bool roll =
      CalibrateAxis(RawOf(record.RollLeft), RawOf(record.RollCentre), RawOf(record.RollRight), settings.roll);
  const bool pitch = CalibrateAxis(RawOf(record.PitchForward), RawOf(record.PitchCentre),
                                   RawOf(record.PitchBack), settings.pitch);
  settings.calibrated = roll && pitch;
  settings.forceLevel = record.ForceLevel == 0 ? 1 : Share(record.ForceLevel);
  for (std::size_t i = 0; i < settings.buttons.size(); ++i) {
    const Byte action = record.Buttons[i].Action;
    settings.buttons[i] = action < kButtonActions ? static_cast<ButtonAction>(action) : ButtonAction::None;
  }
  return settings;
}

bool IsBlank(const GeneralFFBRecord& r) {
  return r.MasterYoke == 0 && r.GripThreshold == 0 && r.MaximumForce == 0 && r.Friction == 0 &&
         r.Damping == 0 && r.GroundForce == 0 && r.RollTrimRange == 0 && r.PitchTrimRange == 0;
}

bool EffectsAreBlank(const YokeRecord& yoke1) {
  return std::all_of(yoke1.Effects.begin(), yoke1.Effects.end(),
                     [](const auto& effect) { return effect.Frequency == 0 && effect.Level == 0; });
}

GeneralFFBRecord StandardGeneralFFB() {
  GeneralFFBRecord r;
  r.MasterYoke = 1;
  r.GripThreshold = 40;
  r.MaximumForce = 80;
  r.Friction = 5;
  r.Damping = 10;
  r.GroundForce = 8;
  r.RollTrimRange = 20;
  r.PitchTrimRange = 40;
  for (std::size_t i = 0; i < r.ForceTable.size(); ++i) {
    const float airspeed = 20.0f * static_cast<float>(i);
    const float share = airspeed / 240 * (airspeed / 240);
    r.ForceTable[i] = {airspeed, 4 + 46 * share, airspeed, 6 + 74 * share};
  }
  return r;
}

void SetStandardEffects(YokeRecord& yoke1) {
  for (std::size_t i = 0; i < kEffects; ++i) {
    const StandardEffect& effect = kStandardEffects[i];
    yoke1.Effects[EffectPlace(i, Axis::Roll)] = {effect.frequency, effect.roll};
    yoke1.Effects[EffectPlace(i, Axis::Pitch)] = {effect.frequency, effect.pitch};
  }
}

bool BeginYoke(ConfigModel& model, YokeRecord& yoke) {
  const bool set = yoke.StartMode != 0 || yoke.OptionBits != 0 || yoke.Address != 0 || yoke.ForceLevel != 0 ||
                   yoke.RollLeft != 0 || yoke.RollCentre != 0 || yoke.RollRight != 0 ||
                   yoke.PitchForward != 0 || yoke.PitchCentre != 0 || yoke.PitchBack != 0;
  if (set) return false;
  yoke.StartMode = static_cast<std::int16_t>(YokeMode::Ffb);
  yoke.OptionBits = yokeoption::kStandard;
  if (IsBlank(model.GeneralFFB)) model.GeneralFFB = StandardGeneralFFB();
  if (EffectsAreBlank(model.Yoke1)) SetStandardEffects(model.Yoke1);
  return true;
}

FfbSettings ReadFfbSettings(const ConfigModel& model) {
  const GeneralFFBRecord general = IsBlank(model.GeneralFFB) ? StandardGeneralFFB() : model.GeneralFFB;
  YokeRecord tail = model.Yoke1;
  if (EffectsAreBlank(tail)) SetStandardEffects(tail);
  FfbSettings settings;
  settings.master = general.MasterYoke == 2 ? 2 : 1;
  settings.gripThreshold = std::clamp<int>(general.GripThreshold, 0, kYokeTravel);
  settings.servoSpeed = OrStandard(tail.ServoSpeed, settings.servoSpeed);
  ForceSettings& forces = settings.forces;
  forces.curves = {MakeForceCurve(general, Axis::Roll), MakeForceCurve(general, Axis::Pitch)};
  for (std::size_t i = 0; i < kEffects; ++i) {
    for (std::size_t axis = 0; axis < kAxes; ++axis) {
      const auto& effect = tail.Effects[EffectPlace(i, static_cast<Axis>(axis))];
      const double frequency = std::isfinite(effect.Frequency) ? effect.Frequency : 0;
      forces.effects[i][axis] = {std::clamp(frequency, 0.0, kHighestFrequency), Share(effect.Level)};
    }
  }
  forces.maximum = Share(general.MaximumForce);
  forces.friction = Share(general.Friction);
  forces.damping = Share(general.Damping);
  forces.groundForce = Share(general.GroundForce);
  forces.trimRange = {Share(general.RollTrimRange), Share(general.PitchTrimRange)};
  // Where none was set, the values that ForceSettings begins with stay.
  if (tail.StallMargin != 0) forces.stallMargin = Share(tail.StallMargin);
  if (tail.GustTime > 0) forces.gustTime = std::clamp<double>(tail.GustTime, 0.1, 10.0);
  forces.stallSpeed = OrStandard(tail.StallSpeed, forces.stallSpeed);
  forces.neverExceedSpeed = OrStandard(tail.NeverExceedSpeed, forces.neverExceedSpeed);
  if (tail.RunwayBumps > 0) forces.bumps = tail.RunwayBumps / 10.0;  // kept in tenths of a metre
  return settings;
}

void ClearYoke2Tail(ConfigModel& model) {
  YokeRecord& yoke = model.Yoke2;
  yoke.StallMargin = 0;
  yoke.GustTime = 0;
  yoke.TailZero = 0;
  YokeRecord::TailNumbers(yoke, [](std::string_view, auto& number) { number = 0; });
  yoke.Effects.fill({});
}

}  // namespace tvx
