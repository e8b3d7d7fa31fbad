// The Plates that every installation begins with.
#pragma once

#include "config/Model.h"

namespace tvx {

// Gives a model without Plates those of common faces. They are a beginning, to be corrected with the live
// needle; and a configuration file without any Plate could not be read again.
void FillStandardPlates(ConfigModel& model);

}  // namespace tvx
