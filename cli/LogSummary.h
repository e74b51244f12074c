#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "log/McuJobList.h"

namespace vesk {

// A job name and what ran under it.
struct NameSummary {
    std::string m_Name;
    std::uint64_t m_Count = 0;
    std::uint64_t m_Total = 0;  // QBit
};

// The names of tasks and interrupts, the busiest first.
std::vector<NameSummary> SummarizeJobs(const McuJobList&);

// The functions by name, with the number of calls that were seen from context switch to context
// switch, the longest-running first.
std::vector<NameSummary> SummarizeFunctions(const McuJobList&);

// Elements of all vectors of a map.
std::uint64_t CountAll(const std::map<std::string, std::vector<McuJob>>&);

// Bytes that the list's records take, long names of samples left out.
std::uint64_t MemoryOf(const McuJobList&);

}  // namespace vesk
