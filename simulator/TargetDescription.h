#pragma once

#include <ostream>

#include "database/TargetDatabase.h"
#include "simulator/LogFormat.h"

namespace vesk {

// What a database must know of the target for a log of that format to be read: capability, clock
// and, without a header, the record's structure. It holds no names of interrupts and tasks.
TargetDatabase DescribeTarget(const LogFormat&);

// Writes a database as a target description in JSON, which JsonTargetLoader reads.
void WriteTargetDescription(const TargetDatabase&, std::ostream&);

}  // namespace vesk
