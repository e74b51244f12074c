#include "timeline/ScrollMapping.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vesk {

namespace {

constexpr std::int32_t kLastPosition = std::numeric_limits<std::int32_t>::max();

// Beyond the type's range the value stays on its side.
template <class Integer>
Integer Truncate(double value) {
    using Limits = std::numeric_limits<Integer>;
    if (!(value > static_cast<double>(Limits::min()))) return Limits::min();
    return value < static_cast<double>(Limits::max()) ? static_cast<Integer>(value) : Limits::max();
}

// A difference of times either of which may be the later one.
double Difference(std::uint64_t later, std::uint64_t earlier) {
    return later >= earlier ? static_cast<double>(later - earlier)
                            : -static_cast<double>(earlier - later);
}

}  // namespace

std::uint64_t VisibleQbits(std::int32_t canvasWidth, float pixelsPerQbit) {
    if (canvasWidth <= 0) return 0;
    return Truncate<std::uint64_t>(std::floor(static_cast<float>(canvasWidth) / pixelsPerQbit));
}

std::int32_t TimeRangeEnd(std::int32_t min, std::uint64_t end, std::uint64_t visible) {
    if (end <= visible) return min;
    const std::uint64_t last = std::min<std::uint64_t>(end - visible, kLastPosition);
    return std::max(static_cast<std::int32_t>(last), min);
}

std::uint64_t ScrollMapping::Clamp(std::uint64_t offset) const {
    return m_Visible > m_End ? 0 : std::min(offset, m_End - m_Visible);
}

std::int32_t ScrollMapping::PositionOf(std::uint64_t offset) const {
    const double lastOffset = Difference(m_End, m_Visible) - m_Min;
    if (lastOffset <= 0) return m_Min;
    const double positions = static_cast<double>(m_Max) - m_Min;
    return Truncate<std::int32_t>(positions / lastOffset * (static_cast<double>(offset) - m_Min) +
                                  m_Min);
}

std::uint64_t ScrollMapping::OffsetAt(std::int32_t position) const {
    if (m_Max == m_Min) return 0;
    const double lastOffset = Difference(m_End, m_Visible) - m_Min;
    const double positions = static_cast<double>(m_Max) - m_Min;
    const double share = (static_cast<double>(position) - m_Min) / positions;
    return Clamp(Truncate<std::uint64_t>(share * lastOffset + m_Min));
}

}  // namespace vesk
