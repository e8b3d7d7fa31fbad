// The built-in names (DatarefTable.cpp).
#pragma once

#include <span>

#include "virtualcockpit/sim/DatarefStore.h"

namespace tvx::vc {

std::span<const DatarefRow> BuiltInDatarefs();

// Two names of one free value, an older and a newer one: writing one writes both. `other` counts in units of
// 1 / scale.
struct TwinRow {
  std::string_view one, other;
  double scale = 1;
};
std::span<const TwinRow> BuiltInTwins();

}  // namespace tvx::vc
