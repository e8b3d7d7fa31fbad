#include "config/plates/PlateLookup.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tvx {
namespace {

constexpr std::size_t kLowest = 2;
constexpr std::size_t kHighest = 3;
constexpr std::size_t kFirstPoint = 4;
constexpr std::size_t kLastPoint = 24;

}  // namespace

double PlatePositionOf(const PlateRecord& plate, double plateInput) {
  double input = std::isnan(plateInput) ? 0.0 : plateInput;
  if (input < plate.Value[kLowest]) input = plate.Value[kLowest];
  if (input > plate.Value[kHighest]) input = plate.Value[kHighest];
  if (input == plate.Value[kLowest]) return plate.Position[kLowest];
  if (input == plate.Value[kHighest]) return plate.Position[kHighest];

  std::size_t k = kFirstPoint;
  while (k <= kLastPoint && plate.Value[k] <= input) ++k;
  const double span = plate.Value[k] - plate.Value[k - 1];
  // Two equal values side by side cannot bracket anything; the needle then stands at the lower point.
  if (span == 0.0) return plate.Position[k - 1];
  const double fraction = (input - plate.Value[k - 1]) / span;
  return plate.Position[k - 1] + fraction * (plate.Position[k] - plate.Position[k - 1]);
}

std::int16_t PlateLookup(const PlateRecord& plate, double plateInput) {
  using Limits = std::numeric_limits<std::int16_t>;
  const double position = std::floor(PlatePositionOf(plate, plateInput));
  return static_cast<std::int16_t>(
      std::clamp(position, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

std::int16_t NeedlePosition(const PlateRecord& plate, double plateInput) {
  const double limited = std::clamp(PlatePositionOf(plate, plateInput), 0.0, kNeedlePositions - 1.0);
  return static_cast<std::int16_t>(limited);
}

}  // namespace tvx
