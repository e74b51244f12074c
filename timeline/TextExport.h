#pragma once

#include "log/McuJobList.h"
#include "platform/OutputBuffer.h"
#include "platform/ProgressDisplay.h"

namespace vesk {

// What a log holds as text files, always the whole of it; lines end with a line feed, times are
// QBit, names go out as the bytes that they are. Each returns false if the progress ended the work
// or the buffer has an error: what went out by then is no whole file. The buffer is not flushed.
using TextExport = bool(const McuJobList&, OutputBuffer&, const ProgressCallback&);

// All jobs in the log's order, an empty line, then the calls of functions in order of entry, put
// together from their segments. An outer call holds back those inside it. What has no end runs
// until the next record starts, or the log ends.
TextExport WriteJobText;

// The samples of the extra values with the time up to the next sample, as a table with commas.
// Samples without a name are left out.
TextExport WriteExtraInfoText;

// The calls of functions with their context switches, function by function, as a table with tabs.
TextExport WriteCallText;

}  // namespace vesk
