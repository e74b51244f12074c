#include "platform/VectorSurface.h"

#include <algorithm>
#include <vector>

#include "platform/CBrush.h"
#include "platform/CPen.h"
#include "platform/GlyphSource.h"

namespace vesk {

namespace {

const CPen* Visible(const CPen& pen) {
    return pen.m_Style == PS_NULL ? nullptr : &pen;
}

const CBrush* Visible(const CBrush& brush) {
    return brush.m_Hollow ? nullptr : &brush;
}

// From a pixel's edge to the middle of a line on it: a line of even width has it on the edge.
double MiddleOf(const CPen& pen) {
    return pen.m_Width % 2 == 0 ? 0.0 : 0.5;
}

// The pixels of a solid line that runs along an axis; its end point is not painted.
CRect PixelsOf(CPoint from, CPoint to, const CPen& pen) {
    const int lead = pen.m_Width / 2;
    const bool horizontal = from.y == to.y;
    const auto [start, end] = horizontal ? std::pair(from.x, to.x) : std::pair(from.y, to.y);
    const bool backwards = end < start;
    const int low = backwards ? ToCoordinate(std::int64_t{end} + 1) : start;
    const int high = backwards ? ToCoordinate(std::int64_t{start} + 1) : end;
    const int side = ToCoordinate(std::int64_t{horizontal ? from.y : from.x} - lead);
    const int otherSide = ToCoordinate(std::int64_t{side} + pen.m_Width);
    return horizontal ? CRect{low, side, high, otherSide} : CRect{side, low, otherSide, high};
}

CRect Around(std::span<const CPoint> corners, int reach) {
    CRect around{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
    for (const CPoint& corner : corners) {
        around.left = std::min(around.left, corner.x);
        around.top = std::min(around.top, corner.y);
        around.right = std::max(around.right, corner.x);
        around.bottom = std::max(around.bottom, corner.y);
    }
    return {ToCoordinate(std::int64_t{around.left} - reach),
            ToCoordinate(std::int64_t{around.top} - reach),
            ToCoordinate(std::int64_t{around.right} + reach + 1),
            ToCoordinate(std::int64_t{around.bottom} + reach + 1)};
}

}  // namespace

VectorSurface::VectorSurface(CSize size, const GlyphSource& glyphs)
    : m_Size{std::max(size.cx, 0), std::max(size.cy, 0)},
      m_Glyphs(glyphs),
      m_Clip{0, 0, m_Size.cx, m_Size.cy} {}

void VectorSurface::SetClip(const CRect& clip) {
    CRect wanted;
    wanted.IntersectRect(clip, {0, 0, m_Size.cx, m_Size.cy});
    if (wanted == m_Clip) return;
    Flush();
    m_Clip = wanted;
    ClipTo(m_Clip);
}

bool VectorSurface::Sees(const CRect& rect) const {
    CRect seen;
    return seen.IntersectRect(rect, m_Clip);
}

void VectorSurface::FillRect(const CRect& rect, COLORREF color) {
    CRect seen;
    if (!seen.IntersectRect(rect, m_Clip)) return;
    const bool goesOn = !m_Held.IsRectEmpty() && color == m_HeldColor && seen.top == m_Held.top &&
                        seen.bottom == m_Held.bottom && seen.left == m_Held.right;
    if (goesOn) {
        m_Held.right = seen.right;
        return;
    }
    Flush();
    m_Held = seen;
    m_HeldColor = color;
}

void VectorSurface::Flush() {
    if (!m_Held.IsRectEmpty()) Area(m_Held, m_HeldColor);
    m_Held = {};
}

void VectorSurface::Line(CPoint from, CPoint to, const CPen& pen) {
    if (!Visible(pen) || from == to) return;
    const bool straight = from.x == to.x || from.y == to.y;
    if (straight && pen.m_Style == PS_SOLID) return FillRect(PixelsOf(from, to, pen), pen.m_Color);
    const CPoint ends[] = {from, to};
    if (!Sees(Around(ends, pen.m_Width))) return;
    Flush();
    const double middle = MiddleOf(pen);
    OpenPath({from.x + middle, from.y + middle}, {to.x + middle, to.y + middle}, pen);
}

void VectorSurface::Polygon(std::span<const CPoint> corners, const CPen& pen, const CBrush& brush) {
    if (corners.size() < 2 || !Sees(Around(corners, pen.m_Width))) return;
    Flush();
    const double middle = MiddleOf(pen);
    std::vector<Spot> spots;
    for (const CPoint& corner : corners) spots.push_back({corner.x + middle, corner.y + middle});
    ClosedPath(spots, Visible(pen), Visible(brush));
}

void VectorSurface::RoundRect(const CRect& rect, CSize corner, const CPen& pen,
                              const CBrush& brush) {
    if (rect.IsRectEmpty() || !Sees(rect)) return;
    Flush();
    const double half = Visible(pen) ? pen.m_Width / 2.0 : 0.0;
    RoundArea({rect.left + half, rect.top + half}, {rect.right - half, rect.bottom - half},
              {std::max(corner.cx / 2.0 - half, 0.0), std::max(corner.cy / 2.0 - half, 0.0)},
              Visible(pen), Visible(brush));
}

// The outline lies within the rectangle.
void VectorSurface::Rectangle(const CRect& rect, const CPen& pen, const CBrush& brush) {
    if (rect.IsRectEmpty() || !Sees(rect)) return;
    if (Visible(brush)) FillRect(rect, brush.m_Color);
    if (!Visible(pen)) return;
    const int width = std::min({pen.m_Width, rect.Width(), rect.Height()});
    FillRect({rect.left, rect.top, rect.right, rect.top + width}, pen.m_Color);
    FillRect({rect.left, rect.bottom - width, rect.right, rect.bottom}, pen.m_Color);
    FillRect({rect.left, rect.top, rect.left + width, rect.bottom}, pen.m_Color);
    FillRect({rect.right - width, rect.top, rect.right, rect.bottom}, pen.m_Color);
}

void VectorSurface::Text(CPoint at, std::string_view text, COLORREF color) {
    const CSize size = MeasureText(text);
    const CRect box{at.x, at.y, ToCoordinate(std::int64_t{at.x} + size.cx),
                    ToCoordinate(std::int64_t{at.y} + size.cy)};
    if (!Sees(box)) return;
    Flush();
    Words(at, text, size, color);
}

CSize VectorSurface::MeasureText(std::string_view text) const {
    return vesk::MeasureText(text, m_Glyphs);
}

}  // namespace vesk
