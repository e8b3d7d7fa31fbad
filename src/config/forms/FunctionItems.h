// The Functions, as lists offer them.
#pragma once

#include <QString>
#include <utility>
#include <vector>

#include "base/NumberFormat.h"
#include "config/Model.h"
#include "ui/Widgets.h"

namespace tvx {

// Every Function that has a name, as its number and "070  Name"; first of all 0, none.
inline std::vector<std::pair<int, QString>> FunctionItems(const ConfigModel& model) {
  std::vector<std::pair<int, QString>> items{{0, QObject::tr("(none)")}};
  for (int number = 1; number < kFunctions; ++number) {
    const FunctionRecord& function = model.Functions[static_cast<std::size_t>(number)];
    if (function.ShortName.empty()) continue;
    items.emplace_back(number, ToText(FormatNumberText(number, "000")) + "  " + ToText(function.ShortName));
  }
  return items;
}

}  // namespace tvx
