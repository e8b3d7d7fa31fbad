#include "instruments/kinds/Registry.h"

#include "instruments/kinds/Kinds.h"

namespace tvx {
namespace {

using Table = std::array<const Instrument*, 256>;

Table BuildTable() {
  Table table{};
  for (const Instrument* kind :
       {&NeedleGaugeKind(), &ClusterGaugeKind(), &IOModuleGaugeKind(), &AltimeterKind(),
        &AttitudeIndicatorKind(), &ClockKind(), &HeadingIndicatorKind(), &VorIndicatorKind(),
        &AdfIndicatorKind(), &RadioModuleKind(), &TransponderKind(), &DmeIndicatorKind(), &ComNavRadioKind(),
        &AutopilotKind(), &AudioPanelKind(), &RadioMagneticIndicatorKind(), &TrimWheelKind()}) {
    for (const Byte code : kind->Gaugetypes()) table[code] = kind;
  }
  return table;
}

}  // namespace

const Instrument* InstrumentOf(int gaugetype) {
  static const Table table = BuildTable();
  return gaugetype >= 0 && gaugetype < 256 ? table[static_cast<std::size_t>(gaugetype)] : nullptr;
}

}  // namespace tvx
