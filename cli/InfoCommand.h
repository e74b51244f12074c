#pragma once

#include "cli/ExitCode.h"
#include "cli/Options.h"
#include "cli/Terminal.h"

namespace vesk {

// vesk info: what a log is and what is in it.
ExitCode RunInfo(const Options&, Terminal&);

}  // namespace vesk
