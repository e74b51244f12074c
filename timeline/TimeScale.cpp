#include "timeline/TimeScale.h"

#include <limits>

namespace vesk {

namespace {

constexpr std::uint64_t kLastTime = std::numeric_limits<std::uint64_t>::max();

std::uint64_t ToSpan(double qbits, std::uint64_t most) {
    if (!(qbits > 0)) return 0;
    return qbits < static_cast<double>(most) ? static_cast<std::uint64_t>(qbits) : most;
}

}  // namespace

std::uint64_t TimeScale::TimeAt(int x) const {
    const double span = (static_cast<double>(x) - m_Left) / m_PixelsPerQbit;
    return m_Offset + ToSpan(span, kLastTime - m_Offset);
}

// The quotient is off by rounding: by a part of a QBit, but beyond 2^53 by many. The time is found
// by halving between two that surely stand on either side.
std::uint64_t TimeScale::FirstTimeAt(std::int64_t x) const {
    if (x <= m_Left) return m_Offset;
    if (PixelAt(kLastTime) < x) return kLastTime;
    const double quotient = (static_cast<double>(x) - m_Left) / m_PixelsPerQbit;
    const double margin = static_cast<double>(x) / m_PixelsPerQbit * 0x1p-50 + 2;
    const std::uint64_t most = kLastTime - m_Offset;
    std::uint64_t low = ToSpan(quotient - margin, most);
    std::uint64_t high = ToSpan(quotient + margin, most);
    while (high - low > 1) {
        const std::uint64_t middle = low + (high - low) / 2;
        (PixelAt(m_Offset + middle) < x ? low : high) = middle;
    }
    return m_Offset + high;
}

}  // namespace vesk
