// The list of all gauges, one line for each.
#pragma once

#include <string>
#include <vector>

#include "config/Model.h"

namespace tvx {

// The name of a Gaugetype code, searched in slots 1..50 of the Gaugetype table; "Unknown" when no slot has
// it.
std::string GaugetypeNameInList(const ConfigModel& model, int code);

// One line for each gauge, in the order of GaugeIDs, its columns separated by tab characters: GaugeID, kind,
// first and second Function, the sequence numbers of both, model, firmware version, connection. Sequence
// numbers are shown above 1 only.
std::vector<std::string> GaugeLines(const ConfigModel& model);

}  // namespace tvx
