// The configuration file: one reader and one writer for everything that needs it.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "config/Model.h"
#include "platform/Host.h"

namespace tvx {

// Unopened: the file cannot be read at all, and nothing has changed.
enum class ConfigReadResult { Loaded, RefusedTitle, RefusedVersion, Failed, Unopened };

class ConfigFile {
 public:
  ConfigFile(ConfigModel& model, MessageBoxes& boxes) : model_(model), boxes_(boxes) {}

  // Reads the file that ConfigFileName names into the model, section by section. Sets ConfigLoadFailed to
  // false at the start and to true when the load is refused or fails; shows its own messages. What was read
  // before an error stays in the model. While its questions stand, a second call does nothing. A file that
  // was read wholly leaves ConfigChanged false.
  void LoadConfigFile();
  // How the last load ended.
  ConfigReadResult LastLoad() const { return lastLoad_; }
  // True for a file whose last load ended before the file did, or was refused: the model lacks some of it.
  // Saving it makes that false.
  bool NotReadWholly(const std::string& path) const;

  // Replaces the file that ConfigFileName names by the whole model, atomically: on any failure (full disk, no
  // permission) the old file stays as it was. False then; shows nothing and leaves ConfigLoadFailed as it is.
  // ConfigChanged is false once the file is written.
  bool SaveConfigFile();

  // True while LoadConfigFile waits for an answer.
  bool Loading() const { return loading_; }

 private:
  ConfigModel& model_;
  MessageBoxes& boxes_;
  bool loading_ = false;
  ConfigReadResult lastLoad_ = ConfigReadResult::Unopened;
  std::set<std::string> notReadWholly_;
};

// The whole model as the file's text, and a file's text into the model (the reader without the disk, for the
// dump, the partial import and the tests).
std::string WriteConfigText(const ConfigModel& model);
// How far a file is read: to its end, or up to its Plates.
enum class ConfigReadExtent { Whole, UpToPlates };
// The sections that a file has and that were read to their ends, up to the Plates.
struct ConfigSections {
  bool General = false, IOModules = false, Functions = false, Gaugetypes = false, Gauges = false,
       EngineCluster = false, Plates = false;
};
// `error` gets the description where the result is Failed (empty for an unexpected keyword), `read`, where it
// is not null, the sections that were read.
ConfigReadResult ReadConfigText(std::string_view text, ConfigModel& model, MessageBoxes& boxes,
                                std::string& error, ConfigReadExtent extent = ConfigReadExtent::Whole,
                                ConfigSections* read = nullptr);

// The header line that saving puts into the general record. `simulatorName` and `simulatorVersion` are those
// of the last simulator that answered (empty when none did); `dateTime` is written as it stands.
std::string BuildConfigHeader(std::string_view simulatorName, std::string_view simulatorVersion,
                              std::string_view dateTime);

}  // namespace tvx
