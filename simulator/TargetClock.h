#pragma once

#include <cstdint>

namespace vesk {

// The simulated target's time: counts of its clock, QBit or microseconds, since it was switched on,
// and the frame number that its tick interrupt has counted.
struct TargetClock {
    std::uint64_t m_Counts = 0;
    std::int32_t m_FrameNo = 0;
};

}  // namespace vesk
