// Finds an instrument by its Gaugetype code.
#pragma once

#include "instruments/Instrument.h"

namespace tvx {

// The instrument that serves the code, or nothing.
const Instrument* InstrumentOf(int gaugetype);

}  // namespace tvx
