#pragma once

#include <cstdint>

namespace vesk {

// One record as it was framed. In a log without frame numbers the framer has computed the frame.
struct RawRecord {
    std::uint32_t m_Id;
    std::uint32_t m_Count;
    std::uint32_t m_Wrap;  // frame length of the record, or the clock's wrap in USCNT form
    std::int32_t m_Frame;
    const std::uint8_t* m_Bytes;  // the whole record
};

}  // namespace vesk
