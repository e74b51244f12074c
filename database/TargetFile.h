#pragma once

#include <string>

#include "database/TargetDatabase.h"

namespace vesk {

// Fills a database from a file that is either the target's ELF load or a description in JSON,
// told apart by how it begins. On false the database is unchanged and error says why.
bool LoadTargetFile(const std::string& path, TargetDatabase& database, std::string& error);

// Where the target description of a log is looked for: NAME.target.json beside NAME.bin.
std::string TargetFileBeside(const std::string& logPath);

}  // namespace vesk
