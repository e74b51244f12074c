#pragma once

#include <string>

#include "database/TargetDatabase.h"

namespace vesk {

// Fills a database from the debug information (DWARF) of the target's ELF load file: structures
// by name or type name with their fields, enumerations likewise. The load may be for any
// processor and either byte order. Entries are added to those that the database holds; one of
// the same name is replaced. On false the database is unchanged and error says why.
bool LoadTargetFromElf(const std::string& path, TargetDatabase& database, std::string& error);

}  // namespace vesk
