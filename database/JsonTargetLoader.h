#pragma once

#include <string>

#include "database/TargetDatabase.h"

namespace vesk {

// Fills a database from a target description in JSON (docs/target-description.md).
// On false the database is unchanged and error says what is wrong and where.
bool LoadTargetFromJson(const std::string& path, TargetDatabase& database, std::string& error);

// The same from text that is already in memory.
bool ParseTargetJson(const std::string& text, TargetDatabase& database, std::string& error);

}  // namespace vesk
