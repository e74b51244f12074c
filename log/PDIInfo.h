#pragma once

#include <cstdint>
#include <string>

// One loss of log data.
struct PDIInfo {
    std::string m_Name;            // the job that ran when the loss happened, possibly empty
    std::uint32_t m_LostSize = 0;  // sum of what the loss packets say was dropped
    std::int32_t m_JobIndex = 0;   // index of the "%Lost" job that stands for the gap
};
