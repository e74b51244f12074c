#pragma once

#include <cstdint>

// One unit of a log that can be read by itself.
struct SplitInterval {
    std::int64_t m_StartPos = 0;       // file position of its first record, bytes
    std::int64_t m_EndPos = 0;         // file position behind its last record, bytes
    std::uint32_t m_FirstFrameNo = 0;  // frame number of the first record
    std::uint32_t m_BaseCount = 0;  // count that belongs to it; 0 where the log has frame numbers
};
