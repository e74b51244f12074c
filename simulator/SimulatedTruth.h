#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vesk {

// How often something was recorded under a name, and for how long altogether in QBit. What has no
// recorded end counts without a length.
struct SimulatedTotal {
    std::uint64_t m_Count = 0;
    std::uint64_t m_Qbits = 0;

    friend bool operator==(const SimulatedTotal&, const SimulatedTotal&) = default;
};

// What a reader must find in a simulated log, as the target knows it. Names as the reader gives
// them; those that never occurred are left out.
struct SimulatedTruth {
    using Totals = std::map<std::string, SimulatedTotal>;

    Totals m_Jobs;       // tasks, interrupts and "%Lost"
    Totals m_Functions;  // calls with their context switches
    Totals m_Hardware;
    std::map<std::string, std::uint64_t> m_Marks;
    std::uint64_t m_Records = 0;  // in the log, loss packets left out
    std::uint64_t m_EndTime = 0;  // QBit since the start of the log
    std::uint64_t m_Losses = 0;   // gaps
    std::uint64_t m_LossPackets = 0;
    std::uint64_t m_LostBytes = 0;
    std::vector<std::uint64_t> m_ValueSums;  // per extra value that a sample has, over all records
};

}  // namespace vesk
