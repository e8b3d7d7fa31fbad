// The Functions and the Plates, as lists offer them.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/NumberFormat.h"
#include "config/Model.h"

namespace tvx {

// Every Function that has a name, as its number and "070  Name"; first of all 0, none.
inline std::vector<std::pair<int, std::string>> FunctionItems(const ConfigModel& model) {
  std::vector<std::pair<int, std::string>> items{{0, "(none)"}};
  for (int number = 1; number < kFunctions; ++number) {
    const FunctionRecord& function = model.Functions[static_cast<std::size_t>(number)];
    if (function.ShortName.empty()) continue;
    items.emplace_back(number, FormatNumberText(number, "000") + "  " + function.ShortName);
  }
  return items;
}

// Every Plate, as its number and "002  Name".
inline std::vector<std::pair<int, std::string>> PlateItems(const ConfigModel& model) {
  std::vector<std::pair<int, std::string>> items;
  items.reserve(static_cast<std::size_t>(model.PlateCount()));
  for (int number = 0; number < model.PlateCount(); ++number) {
    items.emplace_back(number, FormatNumberText(number, "000") + "  " + model.PlateOf(number)->Name);
  }
  return items;
}

}  // namespace tvx
