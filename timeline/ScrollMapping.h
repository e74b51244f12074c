#pragma once

#include <cstdint>

namespace vesk {

// A scroll bar has 32-bit positions, a log 64-bit times: positions stretch linearly between the
// log's begin and the last left edge that a view can have. Plain arithmetic; times are QBit.

// The QBit that a canvas of that width shows. The quotient is taken in single precision. 0 for a
// canvas without width.
std::uint64_t VisibleQbits(std::int32_t canvasWidth, float pixelsPerQbit);

// The greatest position a bar is given, before its page is taken off.
std::int32_t TimeRangeEnd(std::int32_t min, std::uint64_t end, std::uint64_t visible);

// What a bar and a time offset are matched by: the bar's reachable positions, the log's end and
// the span in view.
struct ScrollMapping {
    std::int32_t m_Min;
    std::int32_t m_Max;
    std::uint64_t m_End;
    std::uint64_t m_Visible;

    // The offset, or the last one at which the view does not pass the log's end.
    std::uint64_t Clamp(std::uint64_t offset) const;
    // Position of a clamped offset.
    std::int32_t PositionOf(std::uint64_t offset) const;
    std::uint64_t OffsetAt(std::int32_t position) const;
};

}  // namespace vesk
