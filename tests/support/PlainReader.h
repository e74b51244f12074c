#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "database/TargetDatabase.h"
#include "log/ExtraInfoRecord.h"
#include "log/McuJob.h"
#include "log/PDIInfo.h"
#include "log/SplitInterval.h"

namespace vesk {

// What a read depends on beside the file and the database.
struct PlainOptions {
    TargetCapability capability;
    std::int32_t tickIRQ = 0;
    std::int32_t featureLevel = 4;
    std::optional<SplitInterval> interval;  // none: the whole file
};

// Everything that a log yields, in the containers that its rules are told in.
struct PlainLog {
    bool ok = false;
    std::string error;
    std::vector<std::string> messages;  // boxes that the user would have seen
    std::string fileName;
    std::vector<McuJob> jobs;
    std::map<std::string, int> jobNames;
    std::uint64_t endTime = 0;
    std::uint64_t idleTotal = 0;
    std::vector<McuJob> customJobs;
    std::map<std::string, std::uint64_t> customNames;
    std::map<std::string, std::vector<McuJob>> customJobsCS;
    std::vector<McuJob> sourceMarks;
    std::map<std::string, int> sourceMarkNames;
    std::map<std::string, std::vector<McuJob>> hwJobs;
    std::int32_t extraInfoNum = 0;
    std::vector<std::string> extraNames;
    std::vector<int> extraMax;
    std::vector<int> extraMin;
    std::vector<ExtraInfoRecord> extraInfos;
    std::vector<PDIInfo> pdi;
    bool isTQCNT = true;
    bool isKaldo = false;
    std::int32_t taskOverhead = 0;
    std::int32_t functionOverhead = 0;
    std::int32_t tickIRQ = 0;  // after the read, which may have set it
};

// Reads a log the slow way: field by field through the C library, one step after the other as the
// format's rules are told, with nothing shared with McuJobList but the plain records. It is what
// the real reader is compared with, in its results and in its speed. Plug-ins do not exist here.
PlainLog ReadPlainly(const std::string& path, TargetDatabase&, const PlainOptions&);

// The same with the header from one file and the records from another.
PlainLog ReadPlainlyWithHeader(const std::string& headerPath, const std::string& rawPath,
                               TargetDatabase&, const PlainOptions&);

}  // namespace vesk
