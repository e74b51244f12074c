#pragma once

#include "cli/ExitCode.h"
#include "cli/Options.h"
#include "cli/Terminal.h"

namespace vesk {

// A filter file of the viewer as a table, a row for each of its records in the order of the file.
ExitCode RunFilter(const Options&, Terminal&);

}  // namespace vesk
