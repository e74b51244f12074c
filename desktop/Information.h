#pragma once

#include <string>

#include "desktop/LogFiles.h"

class McuJobList;

namespace vesk {

// What the program is, and, with a log, what was read from where and what was damaged in it. The
// text of a message box: lines of UTF-8 or of whatever bytes the names have.
std::string InformationText(const LogFiles& files, const std::string& target,
                            const McuJobList* log);

}  // namespace vesk
