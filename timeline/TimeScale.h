#pragma once

#include <cstdint>

namespace vesk {

// Maps log time to client pixels for one visible span. Pure arithmetic: no window, no job list.
// Times are QBit since the start of the log, x is in pixels.
struct TimeScale {
    std::uint64_t m_Offset = 0;    // time at the left edge of the canvas
    float m_PixelsPerQbit = 2.0f;  // above 0
    int m_Left = 80;               // x of that edge

    // x of a time; a time before the edge lies on it. 64 bits, because late times of a long log
    // stand far right of any canvas: compare first, narrow afterwards. Products past 2^63 stop at
    // the greatest value.
    std::int64_t PixelAt(std::uint64_t time) const {
        const std::uint64_t span = time > m_Offset ? time - m_Offset : 0;
        return Truncate(m_Left + static_cast<double>(span) * m_PixelsPerQbit);
    }

    // Length in pixels of a span of time.
    std::int64_t Length(std::uint64_t qbits) const {
        return Truncate(static_cast<double>(qbits) * m_PixelsPerQbit);
    }

    // Time under a pixel; left of the edge, that of the edge.
    std::uint64_t TimeAt(int x) const;

    // The first time whose pixel is x or right of it; the offset itself for x at or left of the
    // edge. So a record is left of column x exactly if it starts before that time. The greatest
    // time if there is none.
    std::uint64_t FirstTimeAt(std::int64_t x) const;

    friend bool operator==(const TimeScale&, const TimeScale&) = default;

private:
    static std::int64_t Truncate(double pixels) {
        return pixels < 0x1p63 ? static_cast<std::int64_t>(pixels) : INT64_MAX;
    }
};

}  // namespace vesk
