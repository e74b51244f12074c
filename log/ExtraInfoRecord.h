#pragma once

#include <cstdint>
#include <string>
#include <vector>

// One sample of the extra monitor values.
struct ExtraInfoRecord {
    std::uint64_t m_Time = 0;   // QBit at which the interval of the sample starts
    std::vector<int> m_Values;  // one per extra value of the log; the bits of an unsigned value
    std::string m_Name;         // the job that the sample is charged to
};
