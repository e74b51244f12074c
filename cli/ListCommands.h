#pragma once

#include "cli/ExitCode.h"
#include "cli/Options.h"
#include "cli/Terminal.h"

namespace vesk {

// The records of one kind as a table, a row for each that passes the filter.
ExitCode RunJobs(const Options&, Terminal&);
ExitCode RunCalls(const Options&, Terminal&);
ExitCode RunSegments(const Options&, Terminal&);
ExitCode RunMarks(const Options&, Terminal&);
ExitCode RunHardware(const Options&, Terminal&);
ExitCode RunSamples(const Options&, Terminal&);
ExitCode RunLosses(const Options&, Terminal&);

}  // namespace vesk
