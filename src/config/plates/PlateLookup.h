// From a simulator value to a needle position, with a gauge face's Plate.
#pragma once

#include <cstdint>

#include "config/Records.h"

namespace tvx {

inline constexpr int kNeedlePositions = 1080;  // 0..1079, three to a degree

// The position for `plateInput`, not yet cut to whole steps. Clamps to the Plate's lowest and highest value
// (entries 2 and 3), whose positions are taken as they stand; between them interpolates over entries 4..24. A
// NaN counts as 0.
double PlatePositionOf(const PlateRecord& plate, double plateInput);

// The same, rounded down to a whole position and cut to 16 bits.
std::int16_t PlateLookup(const PlateRecord& plate, double plateInput);

// PlatePositionOf, limited to the needle range 0..1079, its integer part.
std::int16_t NeedlePosition(const PlateRecord& plate, double plateInput);

}  // namespace tvx
