#include "timeline/WaveLane.h"

#include <algorithm>
#include <cmath>

#include "platform/CDC.h"
#include "platform/RasterSurface.h"

namespace vesk {

namespace {

constexpr int kWaveHeight = 10;

bool IsCoordinate(std::int64_t x) {
    return x >= 0 && x <= INT32_MAX;
}

}  // namespace

bool LinesAreAreas(const CDC& dc) {
    const auto* raster = dynamic_cast<const RasterSurface*>(dc.GetSurface());
    return raster && raster->Scale() >= 1.0 && raster->Scale() == std::floor(raster->Scale());
}

WaveLane::WaveLane(CDC* dc, const TimeScale& scale, int left, int right, int y, std::uint32_t color)
    : m_DC(dc),
      m_Scale(scale),
      m_Left(left),
      m_Right(right),
      m_LowY(y),
      m_HighY(y - kWaveHeight),
      m_Color(color),
      m_EdgesAreAreas(LinesAreAreas(*dc)),
      m_X(left),
      m_LowFrom(left) {}

bool WaveLane::High(std::uint64_t start, std::uint64_t end) {
    const std::int64_t pixel = m_Scale.PixelAt(start);
    if (!IsCoordinate(pixel)) return false;
    HighAt(static_cast<int>(pixel), end > start ? m_Scale.Length(end - start) : 0);
    return true;
}

void WaveLane::HighAt(int x, std::int64_t width) {
    const std::int64_t rest = std::int64_t{m_Right} - x;
    if (width > INT32_MAX) width = rest;
    LowTo(x);
    if (width == 0 && rest >= 0 && x > m_Left) {
        Edges(x);
        return;
    }
    if (x > m_Left) Line(x, m_LowY, x, m_HighY);
    const int to = ToCoordinate(x + std::min(width, rest));
    Line(x, m_HighY, to, m_HighY);
    if (width <= rest) Line(to, m_HighY, to, m_LowY);
    DrawLow();
    m_X = m_LowFrom = to;
}

void WaveLane::Low(std::uint64_t end) {
    const std::int64_t x = m_Scale.PixelAt(end);
    LowTo(IsCoordinate(x) ? static_cast<int>(std::min<std::int64_t>(x, m_Right)) : m_Right);
}

bool WaveLane::Tick(std::uint64_t time) {
    const std::int64_t pixel = m_Scale.PixelAt(time);
    if (!IsCoordinate(pixel)) return false;
    TickAt(static_cast<int>(pixel));
    return true;
}

void WaveLane::TickAt(int x) {
    LowTo(x);
    if (x > m_Left) Line(x, m_LowY, x, m_HighY);
}

// A record without a pixel of its own is an edge up and one down; at the left edge only down.
void WaveLane::ColumnEdges(int x) {
    if (x > m_Left) {
        Edges(x);
    } else {
        Line(x, m_HighY, x, m_LowY);
    }
}

void WaveLane::Finish() {
    LowTo(m_Right);
    DrawLow();
    DrawEdges();
}

// --- Lines held back -----------------------------------------------------------------------------

// Overlapping records can lead backwards, and such a line covers other pixels than one forwards.
void WaveLane::LowBackTo(int x) {
    DrawLow();
    Line(m_X, m_LowY, x, m_LowY);
    m_LowFrom = x;
}

void WaveLane::DrawLow() {
    if (m_LowFrom < m_X) Line(m_LowFrom, m_LowY, m_X, m_LowY);
    m_LowFrom = m_X;
}

void WaveLane::Edges(int x) {
    if (!m_EdgesAreAreas) {
        Line(x, m_LowY, x, m_HighY);
        Line(x, m_HighY, x, m_LowY);
        return;
    }
    if (m_EdgesFrom < m_EdgesTo && x >= m_EdgesFrom && x < m_EdgesTo) return;
    if (x != m_EdgesTo) {
        DrawEdges();
        m_EdgesFrom = x;
    }
    m_EdgesTo = x + 1;
}

void WaveLane::DrawEdges() {
    if (m_EdgesFrom < m_EdgesTo) {
        m_DC->FillSolidRect(m_EdgesFrom, m_HighY, m_EdgesTo - m_EdgesFrom, kWaveHeight + 1,
                            m_Color);
    }
    m_EdgesFrom = m_EdgesTo = 0;
}

void WaveLane::Line(int x1, int y1, int x2, int y2) {
    m_DC->MoveTo(x1, y1);
    m_DC->LineTo(x2, y2);
}

}  // namespace vesk
