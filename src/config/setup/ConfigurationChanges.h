// What differs between two states of the configuration, in words.
#pragma once

#include <string>

#include "config/Model.h"

namespace tvx {

// Whether both hold the same. The header line, the file's name and what is known while running are no part
// of it.
bool SameConfiguration(const ConfigModel& a, const ConfigModel& b);
// "gauge 012", "new Plate 003 Oil pressure", "Function 120 Prop RPM cleared", "21 gauges, link to the
// simulator": what was changed on the way from `before` to `after`. Empty where both hold the
// same.
std::string ConfigurationChanges(const ConfigModel& before, const ConfigModel& after);

}  // namespace tvx
