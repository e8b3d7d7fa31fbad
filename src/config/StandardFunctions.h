// The Functions that every installation begins with.
#pragma once

#include "config/Model.h"

namespace tvx {

// Defines the Functions that the program and its instruments use by number (of 1..50, 91..112, 143, 144, and
// above 269), and those of a single-engine light aircraft's panel (from 51), which the user may change. A
// Function that has a short name stays as it is.
void FillStandardFunctions(ConfigModel& model);

}  // namespace tvx
