// Every kind of instrument that the program has. A new one is named here, listed in Registry.cpp, and stands
// in a file of its own.
#pragma once

#include <algorithm>

#include "base/Rounding.h"
#include "instruments/Instrument.h"

namespace tvx {

const Instrument& NeedleGaugeKind();             // 1..6
const Instrument& ClusterGaugeKind();            // 8
const Instrument& IOModuleGaugeKind();           // 10
const Instrument& AltimeterKind();               // 101
const Instrument& AttitudeIndicatorKind();       // 103
const Instrument& ClockKind();                   // 104, 109
const Instrument& HeadingIndicatorKind();        // 105
const Instrument& VorIndicatorKind();            // 106, 107
const Instrument& AdfIndicatorKind();            // 108
const Instrument& RadioModuleKind();             // 110, 111, 121
const Instrument& TransponderKind();             // 112, 114, 122
const Instrument& DmeIndicatorKind();            // 113, 123
const Instrument& ComNavRadioKind();             // 120
const Instrument& AutopilotKind();               // 124
const Instrument& AudioPanelKind();              // 125
const Instrument& RadioMagneticIndicatorKind();  // 130
const Instrument& TrimWheelKind();               // 140

}  // namespace tvx
