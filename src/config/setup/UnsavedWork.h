// Changes that were not saved when the program ended: kept beside their file as "Cockpit.cfg.unsaved", and
// offered again. The file itself stays as it is.
#pragma once

#include <string>

#include "config/ConfigFile.h"

namespace tvx {

class UnsavedWork {
 public:
  UnsavedWork(ConfigModel& model, MessageBoxes& boxes) : model_(model), boxes_(boxes) {}

  // Keeps the model beside the file in use, where it holds changes that are not saved. Older ones that nobody
  // has decided about are put aside under their date. Asks and shows nothing; false where it cannot be
  // written.
  bool Keep();
  // The configuration was worked on, and may have been saved: keeps what was not, and takes away what was
  // kept or taken before and is saved by now.
  void Follow();
  // What is kept for a configuration file, in words: "Changes to Cockpit.cfg of 2026-11-22 01:45 were not
  // saved."; empty where nothing is.
  std::string Words(const std::string& configFile) const;
  // Puts them into the model, as changes to that file that are not saved. False, and said why, where they
  // cannot be read; the model stays as it was then.
  bool Take(const std::string& configFile);
  // Puts them aside, into the row of the file's backups.
  bool Discard(const std::string& configFile);

 private:
  ConfigModel& model_;
  MessageBoxes& boxes_;
  // What was kept or taken last: the model's own earlier state, which a later one may replace.
  std::string ours_, oursText_;
};

}  // namespace tvx
