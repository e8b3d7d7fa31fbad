// The texts of the listing of open ports: what the list shows, and what a click on a line tells.
#pragma once

#include <string>
#include <vector>

#include "simlink/SimCom.h"

namespace tvx {

struct PortListing {
  std::string Title;               // over the list (LabelPorts)
  std::string Header;              // the list's first line
  std::vector<std::string> Lines;  // one for each port, in their order
};

// The fixed-width name of a data type code; "Not used" for any other code.
std::string_view DataTypeLabel(Byte dataType);

PortListing ListPorts(const ConfigModel& model, const SimCom& sim);

// The lines that tell of one port's user and Function; empty for a port that is not open.
std::vector<std::string> PortDetails(const ConfigModel& model, const SimCom& sim, int port);

}  // namespace tvx
