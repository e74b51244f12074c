#pragma once

#include <functional>
#include <vector>

#include "cli/ExitCode.h"
#include "cli/Options.h"
#include "cli/RecordFilter.h"
#include "cli/Terminal.h"

class McuJobList;

namespace vesk {

// What a list command shows: its columns, and the rows that the filter lets through.
struct Listing {
    std::function<std::vector<Column>(const McuJobList&)> m_Columns;
    std::function<void(const McuJobList&, const RecordFilter&, TableWriter&)> m_WriteRows;
};

// Reads the log and writes the table.
ExitCode RunList(const Options&, Terminal&, const Listing&);

// The records of one kind as a table, a row for each that passes the filter.
ExitCode RunJobs(const Options&, Terminal&);
ExitCode RunCalls(const Options&, Terminal&);
ExitCode RunSegments(const Options&, Terminal&);
ExitCode RunMarks(const Options&, Terminal&);
ExitCode RunHardware(const Options&, Terminal&);
ExitCode RunSamples(const Options&, Terminal&);
ExitCode RunLosses(const Options&, Terminal&);

}  // namespace vesk
