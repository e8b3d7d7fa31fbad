// Every kind of instrument that the program has, and how one is found.
#pragma once

#include "instruments/Instrument.h"

// A new kind is one line here. Its file defines `const Instrument& <Name>Kind()`.
#define TVX_INSTRUMENT_KINDS(KIND)                   \
  KIND(NeedleGauge)            /* Gaugetypes 1..6 */ \
  KIND(ClusterGauge)           /* 8 */               \
  KIND(IOModuleGauge)          /* 10 */              \
  KIND(Altimeter)              /* 101 */             \
  KIND(AttitudeIndicator)      /* 103 */             \
  KIND(Clock)                  /* 104, 109 */        \
  KIND(HeadingIndicator)       /* 105 */             \
  KIND(VorIndicator)           /* 106, 107 */        \
  KIND(AdfIndicator)           /* 108 */             \
  KIND(RadioModule)            /* 110, 111, 121 */   \
  KIND(Transponder)            /* 112, 114, 122 */   \
  KIND(DmeIndicator)           /* 113, 123 */        \
  KIND(ComNavRadio)            /* 120 */             \
  KIND(Autopilot)              /* 124 */             \
  KIND(AudioPanel)             /* 125 */             \
  KIND(RadioMagneticIndicator) /* 130 */             \
  KIND(TrimWheel)              /* 140 */

namespace tvx {

#define TVX_DECLARE_KIND(Name) const Instrument& Name##Kind();
TVX_INSTRUMENT_KINDS(TVX_DECLARE_KIND)
#undef TVX_DECLARE_KIND

// The instrument that serves the Gaugetype code; null where none does.
const Instrument* InstrumentOf(int gaugetype);

}  // namespace tvx
