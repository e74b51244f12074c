#pragma once

#include "cli/ExitCode.h"
#include "cli/Options.h"
#include "cli/Terminal.h"

namespace vesk {

// vesk units: the units that a log offers for reading in parts.
ExitCode RunUnits(const Options&, Terminal&);

}  // namespace vesk
