// The physics: what a pilot feels, as pure functions. Speeds in knots of indicated airspeed unless said,
// times in seconds, deflections -1..1 (right and back positive), forces as shares of what the yoke can give.
// docs/force-feedback.md has the sources and the figures.
#pragma once

#include <array>
#include <cstddef>

#include "config/Records.h"

namespace tvx {

inline constexpr int kYokeTravel = 511;  // positions are -511..511

enum class Axis { Roll = 0, Pitch = 1 };
inline constexpr std::size_t kAxes = 2;

// Pressure of the air that meets the aircraft, pascal, at sea level's density (which is what an airspeed
// indicator is scaled for). 0 for a negative speed or one that is no number.
double DynamicPressure(double knots);

// Centring force at full deflection over airspeed.
struct ForcePoint {
  double airspeed = 0;  // kt
  double force = 0;     // 0..1
};
struct ForceCurve {
  std::array<ForcePoint, 13> points{};  // airspeed rises
  std::size_t count = 0;
};
// The points of one axis in order of airspeed; those that are no numbers are left out, airspeeds brought to
// 0..1000 and forces to 0..100 %. Of points at one airspeed the first counts.
ForceCurve MakeForceCurve(const GeneralFFBRecord& record, Axis axis);
// The force at an airspeed. Between two points it goes with the dynamic pressure; outside it is that of the
// nearest point. A curve without points gives 0.
double ForceAt(const ForceCurve& curve, double knots);

// A yoke's place (counts) as a ratio of the way from `centre` (counts) to the stop on its side: -1..1, so
// that the stop is the whole deflection wherever the centre is; and back.
double RatioOfPlace(double place, double centre);
double PlaceOfRatio(double ratio, double centre);

// Stall speed under a load of `g`: it grows with the root of the load. Loads below 0.25 count as 0.25, above
// 9 as 9.
double StallSpeedUnderLoad(double stallSpeed, double g);
// 0 above stall speed by `margin` (0.1 is 10 %), rising to 1 at the stall speed, then constant; fading out
// below half of it, where no air is left to shake anything.
double StallBuffet(double knots, double stallSpeed, double margin);
// 0 up to 97 % of the never-exceed speed, 1 from 107 % on.
double OverspeedVibration(double knots, double neverExceedSpeed);
// 0 at standstill, 1 from 60 kt of ground speed on.
double RunwayRumble(double groundSpeed);
// Bumps a second at a distance of `bumps` metres, 3..`highest` Hz.
double RumbleFrequency(double groundSpeed, double bumps, double highest);
// Strength 0..1 of the shock of wheels that touched with `g`, `seconds` ago: none for a touch of 1 g, the
// whole at 2.5 g, half of it left after each tenth of a second.
double WheelShock(double g, double seconds);
// Strength 0..1 of turbulence whose load differs from its mean by `deviation` g.
double GustStrength(double deviation);

enum class Effect { StallBuffet, Overspeed, Turbulence, WheelShock, RunwayRumble, Shaker };
inline constexpr std::size_t kEffects = 6;
struct EffectSetting {
  double frequency = 0;  // Hz
  double level = 0;      // 0..1
};

struct ForceSettings {
  std::array<ForceCurve, kAxes> curves{};
  std::array<std::array<EffectSetting, kAxes>, kEffects> effects{};
  double maximum = 0;      // 0..1
  double friction = 0;     // 0..1
  double damping = 0;      // 0..1
  double groundForce = 0;  // 0..1
  std::array<double, kAxes> trimRange{};
  double stallMargin = 0.1;
  double gustTime = 0.5;          // s
  double stallSpeed = 50;         // kt
  double neverExceedSpeed = 160;  // kt
  double bumps = 6;               // m
};

}  // namespace tvx
