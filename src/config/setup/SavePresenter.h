// The save form's logic: configuration files saved, loaded, deleted, imported in part, made the start-up one.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "config/ConfigFile.h"
#include "config/PartialImport.h"
#include "config/setup/KeptFiles.h"

namespace tvx {

// File names are paths, relative ones to the working folder. Each operation shows its own messages and
// returns true when it did what it is for; a refusal leaves model and files as they were.
class SavePresenter {
 public:
  // `header`: the header line for a file saved now (BuildConfigHeader).
  SavePresenter(ConfigModel& model, ConfigFile& file, MessageBoxes& boxes,
                std::function<std::string()> header);

  // Saves the model under this name, which becomes the file in use. The file that was there is kept beside it
  // (KeptFiles.h). Where the saving fails, all files stay as they were, and no other one is left.
  bool Save(const std::string& name);
  // The same, which says only where it failed.
  bool Store(const std::string& name);
  // What Save would do to the file of this name, in words; empty where it would refuse the name.
  std::string SaveWords(const std::string& name) const;
  // True where the file in use was not read to its end.
  bool NotReadWholly() const { return file_.NotReadWholly(model_.ConfigFileName); }
  // Asks, then loads the file, which becomes the one in use; one that cannot be opened does not.
  bool Load(const std::string& name);
  // Asks, then gives the file the name of its next copy (KeptFiles.h). Of a link, the link itself.
  bool Delete(const std::string& name);
  // Asks for the delay and writes the start-up file.
  bool SetAsStartup(const std::string& name);
  // Asks, then takes the chosen chapters over.
  bool ImportPartial(const std::string& name, const ImportChoice& chosen);

 private:
  KeptAs KindOfCopy(const std::string& name) const;
  bool NameAccepted(const std::string& name);
  bool WriteKeepingOld();

  ConfigModel& model_;
  ConfigFile& file_;
  MessageBoxes& boxes_;
  std::function<std::string()> header_;
};

// True where the name ends in a point followed by "cfg", in capitals or not.
bool IsConfigFileName(const std::string& name);

// The configuration files of a folder (empty: the working folder), by name.
std::vector<std::string> ConfigFilesIn(const std::string& folder);

}  // namespace tvx
