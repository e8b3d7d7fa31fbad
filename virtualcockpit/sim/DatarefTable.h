// The built-in names (DatarefTable.cpp).
#pragma once

#include <span>

#include "virtualcockpit/sim/DatarefStore.h"

namespace tvx::vc {

std::span<const DatarefRow> BuiltInDatarefs();

}  // namespace tvx::vc
