// Areas with an outline: polygons, rectangles with sharp and with round corners.
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/CBrush.h"
#include "platform/CPen.h"
#include "platform/Pixels.h"
#include "platform/RasterSurface.h"

namespace vesk {

namespace {

// Twice the signed area, as far as its sign goes: 1 if the corners run clockwise on the screen.
int TurnOf(const std::vector<DevicePoint>& corners) {
    WideInt area = 0;
    DevicePoint last = corners.back();
    for (const DevicePoint& corner : corners) {
        area += WideInt{last.x} * corner.y - WideInt{corner.x} * last.y;
        last = corner;
    }
    return area > 0 ? 1 : area < 0 ? -1 : 0;
}

DeviceRect Around(const std::vector<DevicePoint>& corners) {
    const auto [left, right] = std::minmax_element(corners.begin(), corners.end(),
                                                   [](auto& a, auto& b) { return a.x < b.x; });
    const auto [top, bottom] = std::minmax_element(corners.begin(), corners.end(),
                                                   [](auto& a, auto& b) { return a.y < b.y; });
    return {left->x, top->y, right->x, bottom->y};
}

// A rectangle whose corners are quarters of an ellipse, as one span per row.
struct RoundBox {
    DeviceRect m_Box;
    double m_RadiusX;
    double m_RadiusY;

    // Left and right end of the row; not in this order where there is nothing.
    std::pair<std::int64_t, std::int64_t> Span(std::int64_t y) const {
        if (m_Box.Empty() || y < m_Box.top || y >= m_Box.bottom) return {m_Box.left, m_Box.left};
        const auto depth = static_cast<double>(std::min(y - m_Box.top, m_Box.bottom - 1 - y)) + 0.5;
        if (depth >= m_RadiusY) return {m_Box.left, m_Box.right};
        const double height = (m_RadiusY - depth) / m_RadiusY;
        const double inset = m_RadiusX - m_RadiusX * std::sqrt(1 - height * height);
        const auto pixels = static_cast<std::int64_t>(inset + 0.5);
        return {m_Box.left + pixels, m_Box.right - pixels};
    }

    RoundBox Deflated(std::int64_t by) const {
        const auto less = static_cast<double>(by);
        return {{m_Box.left + by, m_Box.top + by, m_Box.right - by, m_Box.bottom - by},
                std::max(m_RadiusX - less, 0.0),
                std::max(m_RadiusY - less, 0.0)};
    }
};

}  // namespace

// --- Polygons ------------------------------------------------------------------------------------

void RasterSurface::Polygon(std::span<const CPoint> corners, const CPen& pen, const CBrush& brush) {
    if (corners.size() < 2) return;
    m_Corners.clear();
    for (const CPoint& corner : corners) m_Corners.push_back(At(corner.x, corner.y));
    const Stroke stroke = StrokeOf(pen);
    const DeviceRect around = Around(m_Corners);
    const std::int64_t reach = stroke.m_Thickness;
    if (Cut({around.left - reach, around.top - reach, around.right + reach, around.bottom + reach})
            .Empty()) {
        return;
    }
    if (!brush.m_Hollow) FillPolygon(PixelOf(brush.m_Color));
    if (stroke.m_Visible) OutlinePolygon(stroke);
}

// What lies inside an odd number of times is filled. Pixels on the right and lower edges are left
// to the outline.
void RasterSurface::FillPolygon(std::uint32_t pixel) {
    const DeviceRect rows = Cut(Around(m_Corners));
    for (std::int64_t y = rows.top; y < rows.bottom; ++y) {
        FindCrossings(y);
        for (std::size_t i = 0; i + 1 < m_Crossings.size(); i += 2) {
            Fill({m_Crossings[i], y, m_Crossings[i + 1], y + 1}, pixel);
        }
    }
}

// The first pixels at or right of where a row meets the edges, from left to right.
void RasterSurface::FindCrossings(std::int64_t y) {
    m_Crossings.clear();
    DevicePoint last = m_Corners.back();
    for (const DevicePoint& corner : m_Corners) {
        const DevicePoint& upper = last.y < corner.y ? last : corner;
        const DevicePoint& lower = last.y < corner.y ? corner : last;
        if (upper.y <= y && y < lower.y) {
            const WideInt aside =
                CeilDivide(WideInt{y - upper.y} * (lower.x - upper.x), WideInt{lower.y - upper.y});
            m_Crossings.push_back(upper.x + static_cast<std::int64_t>(aside));
        }
        last = corner;
    }
    std::sort(m_Crossings.begin(), m_Crossings.end());
}

void RasterSurface::OutlinePolygon(const Stroke& stroke) {
    const int turn = TurnOf(m_Corners);
    DevicePoint last = m_Corners.back();
    for (const DevicePoint& corner : m_Corners) {
        if (last.y <= corner.y) {
            PolygonEdge(last, corner, turn, stroke);
        } else {
            PolygonEdge(corner, last, -turn, stroke);
        }
        last = corner;
    }
}

// A square per pixel, both ends included. Edges are walked from their upper end, and one that
// passes between two pixels takes the outer one: a figure that is the same on both sides of an axis
// is painted so, whichever way its corners run.
void RasterSurface::PolygonEdge(DevicePoint upper, DevicePoint lower, int turn,
                                const Stroke& stroke) {
    const std::int64_t lead = stroke.m_Lead;
    const std::int64_t thickness = stroke.m_Thickness;
    const bool straight = upper.x == lower.x || upper.y == lower.y;
    if (straight && (!stroke.m_Dotted || upper == lower)) {
        const auto [left, right] = std::minmax(upper.x, lower.x);
        Fill({left - lead, upper.y - lead, right - lead + thickness, lower.y - lead + thickness},
             stroke.m_Pixel);
        return;
    }
    const bool steep = lower.y - upper.y > std::abs(lower.x - upper.x);
    const bool outwards = (turn * (lower.x < upper.x ? -1 : 1) > 0) == steep;
    const RasterLine line(
        upper, lower, outwards ? RasterLine::Tie::kAwayFromStart : RasterLine::Tie::kTowardsStart);
    const DeviceRect bounds{m_Clip.left + lead - thickness + 1, m_Clip.top + lead - thickness + 1,
                            m_Clip.right + lead, m_Clip.bottom + lead};
    const std::int64_t dot = kDotLength * stroke.m_Unit;
    line.Walk(line.Length() + 1, bounds, [&](std::int64_t step, std::int64_t x, std::int64_t y) {
        if (stroke.m_Dotted && step / dot % 2 == 1) return;
        Fill({x - lead, y - lead, x - lead + thickness, y - lead + thickness}, stroke.m_Pixel);
    });
}

// --- Rectangles ----------------------------------------------------------------------------------

void RasterSurface::Rectangle(const CRect& rect, const CPen& pen, const CBrush& brush) {
    const DeviceRect box = Box(rect);
    if (box.Empty()) return;
    if (!brush.m_Hollow) Fill(box, PixelOf(brush.m_Color));
    const Stroke stroke = StrokeOf(pen);
    if (stroke.m_Visible) Frame(box, stroke);
}

void RasterSurface::Frame(const DeviceRect& box, const Stroke& stroke) {
    const std::int64_t width =
        std::min({stroke.m_Thickness, box.right - box.left, box.bottom - box.top});
    const DeviceRect sides[] = {{box.left, box.top, box.right, box.top + width},
                                {box.left, box.bottom - width, box.right, box.bottom},
                                {box.left, box.top, box.left + width, box.bottom},
                                {box.right - width, box.top, box.right, box.bottom}};
    for (int i = 0; i < 4; ++i) {
        if (stroke.m_Dotted) {
            Dots(sides[i], i < 2, false, stroke);
        } else {
            Fill(sides[i], stroke.m_Pixel);
        }
    }
}

// Two boxes, one within the other: the pen's colour shows between them. The outline is solid.
void RasterSurface::RoundRect(const CRect& rect, CSize corner, const CPen& pen,
                              const CBrush& brush) {
    const DeviceRect box = Box(rect);
    const auto radius = [this](int diameter, std::int64_t room) {
        return std::clamp(diameter * m_Scale, 0.0, static_cast<double>(room)) / 2;
    };
    if (box.Empty()) return;
    const RoundBox outer{box, radius(corner.cx, box.right - box.left),
                         radius(corner.cy, box.bottom - box.top)};
    const Stroke stroke = StrokeOf(pen);
    const RoundBox inner = outer.Deflated(stroke.m_Visible ? stroke.m_Thickness : 0);
    const DeviceRect rows = Cut(box);
    for (std::int64_t y = rows.top; y < rows.bottom; ++y) {
        const auto [left, right] = outer.Span(y);
        auto [innerLeft, innerRight] = inner.Span(y);
        if (innerLeft >= innerRight) innerLeft = innerRight = right;
        Fill({left, y, innerLeft, y + 1}, stroke.m_Pixel);
        if (!brush.m_Hollow) Fill({innerLeft, y, innerRight, y + 1}, PixelOf(brush.m_Color));
        Fill({innerRight, y, right, y + 1}, stroke.m_Pixel);
    }
}

}  // namespace vesk
