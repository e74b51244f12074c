#pragma once

#include "cli/ExitCode.h"
#include "cli/Options.h"
#include "cli/Terminal.h"

namespace vesk {

// vesk dump: everything that a read yields as one JSON document.
ExitCode RunDump(const Options&, Terminal&);

}  // namespace vesk
