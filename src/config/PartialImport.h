// Takes chosen chapters of a configuration file over into the loaded configuration.
#pragma once

#include <array>
#include <string_view>

#include "config/ConfigFile.h"

namespace tvx {

// The chapters, in the order of their check boxes.
enum class ImportChapter {
  General,
  IOModules,
  StandardFunctions,  // 0..50
  UserFunctions,      // 51..300
  Gaugetypes,
  Gauges,
  Plates,
  EngineCluster,
};
inline constexpr std::size_t kImportChapters = 8;
using ImportChoice = std::array<bool, kImportChapters>;

// Reads `text` with the two questions of a load and stores the chosen chapters into `model`; what is not
// chosen is read past. A read error (Failed, described in `error`) leaves what was read before it in force. A
// question answered No changes nothing. The force-feedback sections are never read.
ConfigReadResult ImportConfigText(std::string_view text, const ImportChoice& chosen, ConfigModel& model,
                                  MessageBoxes& boxes, std::string& error);

}  // namespace tvx
