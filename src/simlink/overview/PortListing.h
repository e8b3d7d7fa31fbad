// The texts that tell of one open port: its user, its data type, its Function, and where its value comes
// from.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "simlink/SimCom.h"

namespace tvx {

// The fixed-width name of a data type code; "Not used" for any other code.
std::string_view DataTypeLabel(Byte dataType);

// "Used by Gauge Type: Altimeter", or "Gauge type: ENGCl" of a user that is no gauge.
std::string UserText(const ConfigModel& model, const PortRow& row);

// Where the port's value comes from, or goes to, in one line: "sim/... 20 times a second", "Data group 17,
// value 3".
std::string SourceText(const FunctionRecord& function, Byte sequenceNr);

// The lines that tell of one port's user and Function; empty for a port that is not open.
std::vector<std::string> PortDetails(const ConfigModel& model, const SimCom& sim, int port);

}  // namespace tvx
