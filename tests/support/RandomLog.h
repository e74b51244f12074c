#pragma once

#include <cstdint>
#include <string>

#include "database/TargetDatabase.h"
#include "tests/support/PlainReader.h"

namespace vesk {

// A log made of chance, with all that its reading depends on.
struct RandomLog {
    std::string form;        // what kind of log it is, for messages
    std::string bytes;       // the file
    std::string headerFile;  // not empty: the header's own file, the records are those of bytes
    TargetDatabase database;
    PlainOptions options;
};

// The same seed and number of records give the same log on every machine. Most logs read well;
// every form, kind of record and kind of damage comes often over many seeds.
RandomLog MakeRandomLog(std::uint64_t seed, int records);

}  // namespace vesk
