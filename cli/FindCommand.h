#pragma once

#include "cli/ExitCode.h"
#include "cli/Options.h"
#include "cli/Terminal.h"

namespace vesk {

// The tasks, function calls or source marks of a name as a table, in the order of their starts.
ExitCode RunFind(const Options&, Terminal&);

}  // namespace vesk
