#include "timeline/SegmentWave.h"

#include <algorithm>

#include "platform/CDC.h"
#include "timeline/FunctionMarks.h"

namespace vesk {

namespace {

constexpr int kRoomForOne = 5;
constexpr int kRoomForBoth = 10;

}  // namespace

SegmentWave::SegmentWave(CDC* dc, const TimeScale& scale, int left, int right, int y,
                         std::uint32_t color, bool isHigh)
    : m_DC(dc),
      m_Ink(dc, y, color),
      m_Scale(scale),
      m_Left(left),
      m_Right(right),
      m_Y(y),
      m_IsHigh(isHigh),
      m_X(left),
      m_From(left) {}

void SegmentWave::DrawLevel() {
    if (m_From != m_X && m_IsHigh) m_Ink.High(m_From, m_X);
    if (m_From != m_X && !m_IsHigh) m_Ink.Low(m_From, m_X);
    m_From = m_X;
}

// Segments that overlap lead back to the left; such a line leaves out another pixel at its end.
void SegmentWave::LevelTo(int x) {
    if (x >= m_X) {
        m_X = x;
        return;
    }
    DrawLevel();
    m_X = x;
    DrawLevel();
}

void SegmentWave::SetHigh(bool isHigh) {
    if (isHigh != m_IsHigh) DrawLevel();
    m_IsHigh = isHigh;
}

void SegmentWave::Other(std::uint64_t end) {
    OtherTo(static_cast<int>(std::min<std::int64_t>(m_Scale.PixelAt(end), m_Right)));
}

void SegmentWave::OtherTo(int x) {
    LevelTo(std::min(x, m_Right));
}

bool SegmentWave::HighTo(int x, std::int64_t width) {
    const bool fits = width <= m_Right - x;
    m_X = m_From = fits ? x + static_cast<int>(width) : m_Right;
    m_Ink.High(x, m_X);
    return fits;
}

bool SegmentWave::Own(const McuJob& segment, std::uint64_t end) {
    const std::uint64_t start = std::max(segment.m_StartTime, m_Scale.m_Offset);
    const std::int64_t wideX = m_Scale.PixelAt(start);
    if (wideX < 0 || wideX > INT32_MAX) return false;
    const auto x = static_cast<int>(wideX);
    const std::int64_t length = end > start ? m_Scale.Length(end - start) : 0;
    const std::int64_t width = length <= INT32_MAX ? length : m_Right - x;
    const bool begins = (segment.m_Flags & kBeganAtEntry) != 0;
    const bool ends = (segment.m_Flags & kEndedAtExit) != 0;
    LevelTo(x);
    DrawLevel();
    if (begins && x > m_Left) m_Ink.Edge(x);
    const bool fits = HighTo(x, width);
    const bool hasEnd = fits && ends;
    if (hasEnd) m_Ink.Edge(m_X);
    // One that ends has room for both marks or shows neither, whether or not its entry is in view.
    const int room = begins && hasEnd ? kRoomForBoth : kRoomForOne;
    if (width >= room) {
        if (begins && segment.m_StartTime >= m_Scale.m_Offset)
            DrawBeginMark(m_DC, x, FunctionAxis(m_Y));
        if (hasEnd) DrawEndMark(m_DC, m_X, FunctionAxis(m_Y));
    }
    SetHigh(segment);
    return true;
}

void SegmentWave::Column(int x, bool hasEdges, bool isHigh) {
    m_X = x;
    if (hasEdges) m_Ink.Edge(x);
    SetHigh(isHigh);
}

void SegmentWave::Finish() {
    LevelTo(m_Right);
    DrawLevel();
    m_Ink.Finish();
}

}  // namespace vesk
