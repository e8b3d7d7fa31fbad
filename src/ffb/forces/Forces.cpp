#include "ffb/forces/Forces.h"

#include <algorithm>
#include <cmath>

namespace tvx {
namespace {

constexpr double kDensity = 1.225;                // kg/m3, standard atmosphere at sea level
constexpr double kMetresPerKnot = 0.514444;       // (m/s)/kt
constexpr double kFastest = 1000;                 // kt
constexpr double kMostCentre = kYokeTravel - 51;  // some way is left to either side

// 0 below `from`, 1 above `to`, straight between.
double Ramp(double value, double from, double to) {
  if (!(value > from)) return 0;
  return value >= to ? 1 : (value - from) / (to - from);
}

}  // namespace

double DynamicPressure(double knots) {
  if (!(knots > 0)) return 0;
  const double speed = knots * kMetresPerKnot;
  return 0.5 * kDensity * speed * speed;
}

ForceCurve MakeForceCurve(const GeneralFFBRecord& record, Axis axis) {
  ForceCurve curve;
  for (const auto& row : record.ForceTable) {
    const double airspeed = axis == Axis::Roll ? row.RollAirspeed : row.PitchAirspeed;
    const double force = axis == Axis::Roll ? row.RollForce : row.PitchForce;
    if (!std::isfinite(airspeed) || !std::isfinite(force)) continue;
    curve.points[curve.count++] = {std::clamp(airspeed, 0.0, kFastest), std::clamp(force / 100, 0.0, 1.0)};
  }
  const auto begin = curve.points.begin();
  auto end = begin + static_cast<std::ptrdiff_t>(curve.count);
  // Insertion keeps points of one airspeed in the table's order, and does not allocate.
  for (auto at = begin; at != end; ++at) {
    std::rotate(
        std::upper_bound(begin, at, *at,
                         [](const ForcePoint& a, const ForcePoint& b) { return a.airspeed < b.airspeed; }),
        at, at + 1);
  }
  end = std::unique(begin, end,
                    [](const ForcePoint& a, const ForcePoint& b) { return a.airspeed == b.airspeed; });
  curve.count = static_cast<std::size_t>(end - begin);
  return curve;
}

double ForceAt(const ForceCurve& curve, double knots) {
  if (curve.count == 0) return 0;
  const ForcePoint* points = curve.points.data();
  if (!(knots > points[0].airspeed)) return points[0].force;
  for (std::size_t i = 1; i < curve.count; ++i) {
    if (knots >= points[i].airspeed) continue;
    const double low = DynamicPressure(points[i - 1].airspeed);
    const double high = DynamicPressure(points[i].airspeed);
    const double share = (DynamicPressure(knots) - low) / (high - low);
    return points[i - 1].force + share * (points[i].force - points[i - 1].force);
  }
  return points[curve.count - 1].force;
}

double RatioOfPlace(double place, double centre) {
  centre = std::clamp(centre, -kMostCentre, kMostCentre);
  const double room = kYokeTravel + (place > centre ? -centre : centre);
  return std::clamp((place - centre) / room, -1.0, 1.0);
}

double PlaceOfRatio(double ratio, double centre) {
  centre = std::clamp(centre, -kMostCentre, kMostCentre);
  return centre + std::clamp(ratio, -1.0, 1.0) * (kYokeTravel + (ratio > 0 ? -centre : centre));
}

double StallSpeedUnderLoad(double stallSpeed, double g) {
  return stallSpeed * std::sqrt(std::isnan(g) ? 1 : std::clamp(g, 0.25, 9.0));
}

double StallBuffet(double knots, double stallSpeed, double margin) {
  if (!(stallSpeed > 0)) return 0;
  const double onset = stallSpeed * (1 + std::max(margin, 0.01));
  return (1 - Ramp(knots, stallSpeed, onset)) * Ramp(knots, 0.3 * stallSpeed, 0.5 * stallSpeed);
}

double OverspeedVibration(double knots, double neverExceedSpeed) {
  return neverExceedSpeed > 0 ? Ramp(knots, 0.97 * neverExceedSpeed, 1.07 * neverExceedSpeed) : 0;
}

double RunwayRumble(double groundSpeed) {
  return Ramp(groundSpeed, 0, 60);
}

double RumbleFrequency(double groundSpeed, double bumps, double highest) {
  const double frequency = groundSpeed > 0 && bumps > 0 ? groundSpeed * kMetresPerKnot / bumps : 0;
  return std::clamp(frequency, 3.0, std::max(highest, 3.0));
}

double WheelShock(double g, double seconds) {
  if (!(seconds >= 0)) return 0;
  return Ramp(g, 1, 2.5) * std::exp2(-seconds / 0.1);
}

double GustStrength(double deviation) {
  return Ramp(std::abs(deviation), 0.02, 0.6);
}

}  // namespace tvx
