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

// The chapters in words, as the check boxes and the messages name them.
inline constexpr std::array<std::string_view, kImportChapters> kImportChapterNames{
    "General: ports, link, interval",
    "IOM: inputs and outputs",
    "Functions 0 to 50",
    "Functions 51 to 300",
    "Gaugetypes",
    "Gauges",
    "Plates",
    "Engine Cluster Settings"};

// Which of the chosen chapters were taken whole, and which the file did not have, or not to their ends.
struct ImportReport {
  ImportChoice taken{};
  ImportChoice missing{};
};

// Reads `text` with the two questions of a load and stores the chosen chapters into `model`; what is not
// chosen is read past. A read error (Failed, described in `error`) leaves what was read before it in force. A
// question answered No changes nothing. The force-feedback sections are never read.
ConfigReadResult ImportConfigText(std::string_view text, const ImportChoice& chosen, ConfigModel& model,
                                  MessageBoxes& boxes, std::string& error, ImportReport& report);

}  // namespace tvx
