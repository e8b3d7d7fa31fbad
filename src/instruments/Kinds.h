// Every kind of instrument that the program has. A new one is named here, listed in Registry.cpp, and stands
// in a file of its own.
#pragma once

#include <algorithm>

#include "base/Rounding.h"
#include "instruments/Instrument.h"

namespace tvx {

// Largest magnitude that a command frame carries.
inline constexpr std::int32_t kLargestValue = 65535;

const Instrument& NeedleGaugeKind();    // 1..6
const Instrument& ClusterGaugeKind();   // 8
const Instrument& IOModuleGaugeKind();  // 10
const Instrument& AltimeterKind();      // 101
const Instrument& VorIndicatorKind();   // 106

}  // namespace tvx
