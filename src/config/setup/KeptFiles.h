// What is kept of a configuration file before it is replaced or deleted: files beside it, whose names hold
// the date. "Cockpit.cfg.2026-11-22.bak" is the first of a day, "Cockpit.cfg.2026-11-22_02.bak" the second.
#pragma once

#include <string>

namespace tvx {

// A backup is one of a row of ten; what could not be read wholly, and changes that were not saved, are kept
// for good.
enum class KeptAs { Backup, Unread, Unsaved };

// The name that the next one gets: no file, folder or link has it.
std::string NextKeptName(const std::string& path, KeptAs as);

// Takes away the oldest backups of this file until ten are left.
void KeepTenBackups(const std::string& path);

}  // namespace tvx
