#pragma once

#include <cstdint>

// How the records of a log are laid out and timed: what the decoder works from.
// Offsets and sizes are bytes.
struct HeaderInfo {
    std::int32_t m_FrameBased = 0;  // not 0: frame number changes count in rebuilding time
    bool m_IsTQCNT = false;         // 16-bit counts with a frame length; else 32-bit USCNT counts
    bool m_HasFrameNo = true;       // records carry a frame number
    std::uint32_t m_Wrap = 0;       // count at which the USCNT counter wraps
    float m_Ratio = 1.0F;           // clock rate / origin rate; counts are divided by it
    std::uint32_t m_TimeStampRatio = 1;   // counts per frame where the frame number is computed
    std::uint32_t m_ExtraSize = 0;        // extra data per record
    std::uint32_t m_JobSize = 0;          // a whole record
    std::uint32_t m_FirstFrameNo = 0;     // frame number of the first record, where computed
    std::uint32_t m_FrameBaseCount = 0;   // count that belongs to that frame number
    std::uint32_t m_FrameNoOffset = 8;    // of the frame number in a record
    bool m_ReturnToTask = false;          // the last task runs on when the last interrupt returns
    std::uint16_t m_ContextIdOffset = 0;  // these three: in a record that travels in packets
    std::uint16_t m_KaldoFrameOffset = 0;
    std::uint16_t m_KaldoCountOffset = 0;
    std::int32_t m_PacketsPerJob = 1;
    bool m_IsKaldo = false;  // records travel in packets
    bool m_HasKaldoFrameNo = false;
};
