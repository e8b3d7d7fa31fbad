// The built-in names of categories and Gaugetypes.
#pragma once

#include <string>

#include "config/Model.h"

namespace tvx {

// Fills the category table and Gaugetype slots 1..29 with the built-in entries, over whatever a configuration
// file loaded there. Slots 0 and 30..127 stay as they are.
void FillNameTables(ConfigModel& model);

// Looks for `code` in Gaugetype slots 1..29 and puts the slot's name into `name`; an unknown code leaves
// `name` as it is. Slots 30..127 are not searched.
void GetGaugetypeName(const ConfigModel& model, int code, std::string& name);

}  // namespace tvx
