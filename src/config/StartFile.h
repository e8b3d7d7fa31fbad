// The start-up file "DefaultStartFile.cfn" in the working folder: which configuration to load, and the start
// delay.
#pragma once

#include <string>
#include <string_view>

#include "config/Model.h"

namespace tvx {

inline constexpr std::string_view kStartFileName = "DefaultStartFile.cfn";

// Returns the configuration file's path and sets StartDelay. A file that is missing, unreadable or not
// exactly as it should be yields "Default.cfg" and 10, whatever was read before.
std::string ReadStartFile(ConfigModel& model);

// Creates or replaces the start-up file with the path and the model's StartDelay, atomically. False on
// failure.
bool WriteStartFile(const ConfigModel& model, std::string_view configPath);

}  // namespace tvx
