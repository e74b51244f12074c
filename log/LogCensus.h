#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace vesk {

// How many records of each kind a log yields. Reading counts first and stores afterwards, so that
// every container gets exactly the memory that it needs: counting is far cheaper than a second
// copy of the jobs.
struct LogCensus {
    std::uint64_t m_Jobs = 0;
    std::uint64_t m_Segments = 0;
    std::uint64_t m_SourceMarks = 0;
    std::uint64_t m_Samples = 0;
    std::map<std::string, std::uint64_t> m_Calls;           // per function
    std::map<std::string, std::uint64_t> m_HardwareEvents;  // per event
};

}  // namespace vesk
