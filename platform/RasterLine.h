#pragma once

#include <cstdint>
#include <utility>

namespace vesk {

// Device pixels. Coordinates are wide enough for every 32-bit coordinate at every scale.
struct DevicePoint {
    std::int64_t x = 0;
    std::int64_t y = 0;
    friend bool operator==(const DevicePoint&, const DevicePoint&) = default;
};

// Right and bottom edges lie outside.
struct DeviceRect {
    std::int64_t left = 0;
    std::int64_t top = 0;
    std::int64_t right = 0;
    std::int64_t bottom = 0;
    bool Empty() const { return right <= left || bottom <= top; }
};

// An integer for products of two device coordinates.
__extension__ typedef __int128 WideInt;

// A dotted line's dots and its gaps, in units of a pen of width 1.
constexpr std::int64_t kDotLength = 3;

// Division towards zero, fast where 64 bits are enough.
WideInt Divide(WideInt dividend, WideInt divisor);
// The least integer that is not below the quotient; the divisor is positive.
WideInt CeilDivide(WideInt dividend, WideInt divisor);

// The pixels of a line, one per step along its longer axis, by exact rounding. Steps outside of the
// bounds cost nothing, however long the line is.
class RasterLine {
public:
    // Which of two pixels a line takes that passes between them.
    enum class Tie { kAwayFromStart, kTowardsStart };

    RasterLine(DevicePoint from, DevicePoint to, Tie = Tie::kAwayFromStart);

    // Steps between the two points; the last point is one more.
    std::int64_t Length() const { return m_Long; }
    bool IsSteep() const { return m_Steep; }

    // Calls visit(step, x, y) for those of the first `count` pixels that lie within the bounds.
    template <class Visit>
    void Walk(std::int64_t count, const DeviceRect& bounds, Visit visit) const;

private:
    using Steps = std::pair<std::int64_t, std::int64_t>;  // from, to before

    Steps VisibleSteps(std::int64_t count, const DeviceRect& bounds) const;
    std::int64_t FirstStepAt(std::int64_t aside, std::int64_t count) const;
    WideInt Numerator(std::int64_t step) const;

    DevicePoint m_From;
    std::int64_t m_Long;   // extent along the longer axis
    std::int64_t m_Short;  // and along the other
    int m_LongSign;
    int m_ShortSign;
    bool m_Steep;  // the longer axis is y
    int m_Bias;    // 1 turns a tie towards the start
};

template <class Visit>
void RasterLine::Walk(std::int64_t count, const DeviceRect& bounds, Visit visit) const {
    const auto [first, last] = VisibleSteps(count, bounds);
    if (first >= last) return;
    const WideInt numerator = Numerator(first);
    auto aside = static_cast<std::int64_t>(Divide(numerator, 2 * m_Long));
    auto rest = static_cast<std::int64_t>(numerator - WideInt{2} * m_Long * aside);
    for (std::int64_t step = first; step < last; ++step) {
        const std::int64_t along = m_LongSign * step;
        const std::int64_t across = m_ShortSign * aside;
        visit(step, m_From.x + (m_Steep ? across : along), m_From.y + (m_Steep ? along : across));
        rest += 2 * m_Short;
        if (rest >= 2 * m_Long) {
            rest -= 2 * m_Long;
            ++aside;
        }
    }
}

}  // namespace vesk
