#pragma once

#include <string>
#include <vector>

#include "cli/LogOpener.h"
#include "platform/OutputBuffer.h"

namespace vesk {

// What vesk info tells about: a log that was read, at least in part.
struct LogInfo {
    const std::string& m_Path;
    const LogOpener& m_Log;
    const std::vector<std::string>& m_Messages;  // that the read showed
};

// As one JSON object; docs/vesk.md has its fields.
void WriteInfoDocument(OutputBuffer&, const LogInfo&);

// Names of the log's form and of its counters' form, as the document has them.
const char* FormName(LogForm form);
const char* ClockName(const McuJobList&);

}  // namespace vesk
