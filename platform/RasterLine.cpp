#include "platform/RasterLine.h"

#include <algorithm>

namespace vesk {

namespace {

std::int64_t Distance(std::int64_t a, std::int64_t b) {
    return a < b ? b - a : a - b;
}

// Distances from the start, in the direction of the sign, that lie in [low, high).
std::pair<std::int64_t, std::int64_t> Within(std::int64_t start, int sign, std::int64_t low,
                                             std::int64_t high) {
    if (sign > 0) return {low - start, high - start};
    return {start - high + 1, start - low + 1};
}

}  // namespace

WideInt Divide(WideInt dividend, WideInt divisor) {
    const auto shortDividend = static_cast<std::int64_t>(dividend);
    const auto shortDivisor = static_cast<std::int64_t>(divisor);
    if (shortDividend == dividend && shortDivisor == divisor) return shortDividend / shortDivisor;
    return dividend / divisor;
}

WideInt CeilDivide(WideInt dividend, WideInt divisor) {
    const WideInt quotient = Divide(dividend, divisor);
    return quotient + (quotient * divisor < dividend ? 1 : 0);
}

RasterLine::RasterLine(DevicePoint from, DevicePoint to, Tie tie)
    : m_From(from), m_Bias(tie == Tie::kTowardsStart ? 1 : 0) {
    const std::int64_t width = Distance(from.x, to.x);
    const std::int64_t height = Distance(from.y, to.y);
    const int signX = to.x < from.x ? -1 : 1;
    const int signY = to.y < from.y ? -1 : 1;
    m_Steep = height > width;
    m_Long = m_Steep ? height : width;
    m_Short = m_Steep ? width : height;
    m_LongSign = m_Steep ? signY : signX;
    m_ShortSign = m_Steep ? signX : signY;
}

// Over twice the length, this is how far aside a step lies.
WideInt RasterLine::Numerator(std::int64_t step) const {
    return WideInt{2} * step * m_Short + m_Long - m_Bias;
}

// The first step that lies at least so far aside of the start; `count` if none does.
std::int64_t RasterLine::FirstStepAt(std::int64_t aside, std::int64_t count) const {
    if (aside <= 0) return 0;
    if (m_Short == 0) return count;
    const WideInt step =
        CeilDivide(WideInt{2} * m_Long * aside - m_Long + m_Bias, WideInt{2} * m_Short);
    return static_cast<std::int64_t>(std::min<WideInt>(step, count));
}

RasterLine::Steps RasterLine::VisibleSteps(std::int64_t count, const DeviceRect& bounds) const {
    if (bounds.Empty() || m_Long == 0) return {0, 0};
    const auto x = std::make_pair(bounds.left, bounds.right);
    const auto y = std::make_pair(bounds.top, bounds.bottom);
    const auto& [longLow, longHigh] = m_Steep ? y : x;
    const auto& [shortLow, shortHigh] = m_Steep ? x : y;
    const Steps along = Within(m_Steep ? m_From.y : m_From.x, m_LongSign, longLow, longHigh);
    const Steps aside = Within(m_Steep ? m_From.x : m_From.y, m_ShortSign, shortLow, shortHigh);
    return {std::max(along.first, FirstStepAt(aside.first, count)),
            std::min({along.second, FirstStepAt(aside.second, count), count})};
}

}  // namespace vesk
