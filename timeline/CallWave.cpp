#include "timeline/CallWave.h"

#include <algorithm>

#include "platform/CDC.h"
#include "timeline/FunctionMarks.h"

namespace vesk {

namespace {

constexpr int kRoomForOne = 5;
constexpr int kRoomForBoth = 10;

bool IsPixel(std::int64_t x) {
    return x >= 0 && x <= INT32_MAX;
}

}  // namespace

CallWave::CallWave(CDC* dc, const TimeScale& scale, int left, int right, int y, std::uint32_t color)
    : m_DC(dc),
      m_Ink(dc, y, color),
      m_Scale(scale),
      m_Left(left),
      m_Right(right),
      m_Y(y),
      m_X(left) {}

void CallWave::BeginHigh(std::uint64_t end) {
    m_BeginsHigh = true;
    m_LatestEnd = end;
}

void CallWave::LeadIn(int x) {
    if (m_BeginsHigh) {
        const int to = static_cast<int>(m_Scale.PixelAt(m_LatestEnd));
        m_Ink.High(m_Left, to);
        DrawEndMark(m_DC, to, FunctionAxis(m_Y));
    } else {
        m_Ink.Low(m_Left, x);
    }
    if (x > m_Left) m_Ink.Edge(x);
}

bool CallWave::Approach(int x, std::uint64_t start) {
    const bool overlaps = start < m_LatestEnd;
    if (!overlaps) m_Ink.Low(static_cast<int>(m_Scale.PixelAt(m_LatestEnd)), x);
    m_Ink.Edge(x);
    return overlaps;
}

bool CallWave::Take(const McuJob& call, std::uint64_t recordedEnd) {
    const std::uint64_t start = std::max(call.m_StartTime, m_Scale.m_Offset);
    const std::uint64_t end = std::max(recordedEnd, m_Scale.m_Offset);
    const std::int64_t wideX = m_Scale.PixelAt(start);
    if (!IsPixel(wideX) || !IsPixel(m_Scale.PixelAt(m_LatestEnd))) return false;
    const auto x = static_cast<int>(wideX);
    const std::int64_t length = end > start ? m_Scale.Length(end - start) : 0;
    const std::int64_t width = length <= INT32_MAX ? length : m_Right - x;
    const bool isFirst = m_IsFirst;
    m_IsFirst = false;
    bool overlaps = false;
    if (isFirst) {
        LeadIn(x);
    } else {
        overlaps = Approach(x, start);
    }
    const bool fits = width <= m_Right - x;
    m_X = fits ? x + static_cast<int>(width) : m_Right;
    m_Ink.High(x, m_X);
    if (fits) m_Ink.Edge(m_X);
    m_LatestEnd = std::max(m_LatestEnd, end);
    // Only the first call minds its width where it runs out of the canvas.
    const int room = fits ? kRoomForBoth : isFirst ? kRoomForOne : INT32_MIN;
    if (width < room) return true;
    if (overlaps || call.m_StartTime >= m_Scale.m_Offset) DrawBeginMark(m_DC, x, FunctionAxis(m_Y));
    if (fits || overlaps) DrawEndMark(m_DC, m_X, FunctionAxis(m_Y));
    return true;
}

void CallWave::Skip(int x, std::uint64_t latestEnd) {
    m_X = x;
    m_LatestEnd = std::max(m_LatestEnd, latestEnd);
}

bool CallWave::Column(int x, std::uint64_t latestEnd) {
    const std::int64_t from = m_Scale.PixelAt(m_LatestEnd);
    if (!IsPixel(from)) return false;
    if (from < x) m_Ink.Low(static_cast<int>(from), x);
    m_Ink.Edge(x);
    Skip(x, latestEnd);
    return true;
}

void CallWave::Finish() {
    const bool reachesOut =
        m_LatestEnd >= m_Scale.m_Offset && m_Scale.PixelAt(m_LatestEnd) >= m_Right;
    if (!reachesOut) m_Ink.Low(m_X, m_Right);
    m_Ink.Finish();
}

}  // namespace vesk
