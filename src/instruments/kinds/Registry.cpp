#include "instruments/kinds/Registry.h"

#include <array>

namespace tvx {
namespace {

using Table = std::array<const Instrument*, 256>;

Table BuildTable() {
  Table table{};
#define TVX_LIST_KIND(Name) &Name##Kind(),
  for (const Instrument* kind : {TVX_INSTRUMENT_KINDS(TVX_LIST_KIND)}) {
    for (const Byte code : kind->Gaugetypes()) table[code] = kind;
  }
#undef TVX_LIST_KIND
  return table;
}

}  // namespace

const Instrument* InstrumentOf(int gaugetype) {
  static const Table table = BuildTable();
  return gaugetype >= 0 && gaugetype < 256 ? table[static_cast<std::size_t>(gaugetype)] : nullptr;
}

}  // namespace tvx
