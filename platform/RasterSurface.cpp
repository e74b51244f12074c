#include "platform/RasterSurface.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "platform/CPen.h"
#include "platform/GlyphTable.h"
#include "platform/Pixels.h"

namespace vesk {

// The glyphs, and memory that a surface has given back: a memory context is made for every paint.
struct RasterSurface::Shared {
    Shared(const GlyphSource& glyphs, double scale) : m_Glyphs(glyphs, scale), m_Scale(scale) {}

    GlyphTable m_Glyphs;
    double m_Scale;
    std::vector<std::uint32_t> m_Spare;
};

namespace {

constexpr double kLeastScale = 0.1;
constexpr double kGreatestScale = 16.0;
constexpr double kMostPixels = 268435456.0;  // 2^28
constexpr std::uint32_t kWhite = 0xFFFFFFFF;

double Usable(double scale) {
    return scale >= kLeastScale && scale <= kGreatestScale ? scale : 1.0;
}

}  // namespace

// --- Size, clip, origin --------------------------------------------------------------------------

RasterSurface::RasterSurface(CSize size, const GlyphSource& glyphs, double scale)
    : RasterSurface(std::make_shared<Shared>(glyphs, Usable(scale))) {
    TakeSize(size);
    std::fill(m_Pixels.begin(), m_Pixels.end(), kWhite);
}

RasterSurface::RasterSurface(std::shared_ptr<Shared> shared)
    : m_Shared(std::move(shared)), m_Scale(m_Shared->m_Scale) {}

RasterSurface::~RasterSurface() {
    if (m_Pixels.size() > m_Shared->m_Spare.size()) m_Shared->m_Spare = std::move(m_Pixels);
}

bool RasterSurface::Resize(CSize size, double scale) {
    if (Usable(scale) != m_Scale) {
        m_Shared = std::make_shared<Shared>(m_Shared->m_Glyphs.Source(), Usable(scale));
        m_Scale = m_Shared->m_Scale;
    }
    return TakeSize(size);
}

// A part of a picture can be one device pixel wider than its size says, depending on its origin.
bool RasterSurface::TakeSize(CSize size) {
    const double width = std::ceil(size.cx * m_Scale);
    const double height = std::ceil(size.cy * m_Scale);
    const bool usable = size.cx > 0 && size.cy > 0 && width * height <= kMostPixels;
    m_Size = usable ? size : CSize{};
    m_Stride = usable ? static_cast<int>(width) : 0;
    m_Origin = {};
    m_LogicalClip = {0, 0, m_Size.cx, m_Size.cy};
    UpdateDevice();
    if (!usable) return false;
    const auto needed = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    if (m_Pixels.size() < needed) m_Pixels.swap(m_Shared->m_Spare);
    if (m_Pixels.size() < needed) m_Pixels.resize(needed);
    return true;
}

void RasterSurface::UpdateDevice() {
    m_DeviceOrigin = {DeviceEdge(m_Origin.x), DeviceEdge(m_Origin.y)};
    const DevicePoint end = At(m_Size.cx, m_Size.cy);
    m_DeviceWidth = static_cast<int>(end.x);
    m_DeviceHeight = static_cast<int>(end.y);
    m_Clip = Box(m_LogicalClip);
}

void RasterSurface::SetClip(const CRect& clip) {
    m_LogicalClip.IntersectRect(clip, {0, 0, m_Size.cx, m_Size.cy});
    m_Clip = Box(m_LogicalClip);
}

void RasterSurface::SetOrigin(CPoint origin) {
    m_Origin = origin;
    UpdateDevice();
}

std::unique_ptr<Surface> RasterSurface::MakeCompatible(CSize size) const {
    std::unique_ptr<RasterSurface> surface(new RasterSurface(m_Shared));
    if (!surface->TakeSize(size)) return nullptr;
    return surface;
}

// --- Logical to device ---------------------------------------------------------------------------

// Floor of value * scale + 0.5. The product is exact enough for every scale a screen has.
std::int64_t RasterSurface::DeviceEdge(std::int64_t value) const {
    if (m_Scale == 1.0) return value;
    const double edge = static_cast<double>(value) * m_Scale + 0.5;
    const auto whole = static_cast<std::int64_t>(edge);
    return whole - (edge < static_cast<double>(whole) ? 1 : 0);
}

DevicePoint RasterSurface::At(std::int64_t x, std::int64_t y) const {
    return {DeviceEdge(x + m_Origin.x) - m_DeviceOrigin.x,
            DeviceEdge(y + m_Origin.y) - m_DeviceOrigin.y};
}

DeviceRect RasterSurface::Box(const CRect& rect) const {
    const DevicePoint topLeft = At(rect.left, rect.top);
    const DevicePoint bottomRight = At(rect.right, rect.bottom);
    return {topLeft.x, topLeft.y, bottomRight.x, bottomRight.y};
}

DeviceRect RasterSurface::Cut(const DeviceRect& box) const {
    return {std::max(box.left, m_Clip.left), std::max(box.top, m_Clip.top),
            std::min(box.right, m_Clip.right), std::min(box.bottom, m_Clip.bottom)};
}

RasterSurface::Stroke RasterSurface::StrokeOf(const CPen& pen) const {
    const std::int64_t unit = std::max<std::int64_t>(1, static_cast<std::int64_t>(m_Scale));
    return {PixelOf(pen.m_Color),  unit,
            unit * pen.m_Width,    unit * (pen.m_Width / 2),
            pen.m_Style == PS_DOT, pen.m_Style != PS_NULL};
}

// --- Fills and lines -----------------------------------------------------------------------------

void RasterSurface::FillRect(const CRect& rect, COLORREF color) {
    Fill(Box(rect), PixelOf(color));
}

void RasterSurface::Fill(const DeviceRect& box, std::uint32_t pixel) {
    const DeviceRect cut = Cut(box);
    if (cut.Empty()) return;
    std::uint32_t* row = m_Pixels.data() + cut.top * m_Stride + cut.left;
    const std::int64_t width = cut.right - cut.left;
    for (std::int64_t y = cut.top; y < cut.bottom; ++y, row += m_Stride) {
        if (width == 1) {
            *row = pixel;
        } else {
            std::fill_n(row, width, pixel);
        }
    }
}

void RasterSurface::Line(CPoint from, CPoint to, const CPen& pen) {
    const Stroke stroke = StrokeOf(pen);
    const DevicePoint start = At(from.x, from.y);
    const DevicePoint end = At(to.x, to.y);
    if (!stroke.m_Visible || start == end) return;
    if (start.x == end.x || start.y == end.y) {
        Straight(start, end, stroke);
    } else {
        Slanted(start, end, stroke);
    }
}

// The pen covers a unit right of and below its point: towards the left or up a line therefore
// begins and ends one unit later than the other way round.
void RasterSurface::Straight(DevicePoint from, DevicePoint to, const Stroke& stroke) {
    const bool horizontal = from.y == to.y;
    const auto [start, end] =
        horizontal ? std::make_pair(from.x, to.x) : std::make_pair(from.y, to.y);
    const bool backwards = end < start;
    const std::int64_t low = backwards ? end + stroke.m_Unit : start;
    const std::int64_t high = backwards ? start + stroke.m_Unit : end;
    const std::int64_t side = (horizontal ? from.y : from.x) - stroke.m_Lead;
    const DeviceRect box = horizontal ? DeviceRect{low, side, high, side + stroke.m_Thickness}
                                      : DeviceRect{side, low, side + stroke.m_Thickness, high};
    if (stroke.m_Dotted) {
        Dots(box, horizontal, backwards, stroke);
    } else {
        Fill(box, stroke.m_Pixel);
    }
}

// Dots are counted from the line's start, wherever the visible part begins.
void RasterSurface::Dots(DeviceRect box, bool horizontal, bool backwards, const Stroke& stroke) {
    const DeviceRect cut = Cut(box);
    if (cut.Empty()) return;
    std::int64_t& low = horizontal ? box.left : box.top;
    std::int64_t& high = horizontal ? box.right : box.bottom;
    const std::int64_t seenLow = horizontal ? cut.left : cut.top;
    const std::int64_t seenHigh = horizontal ? cut.right : cut.bottom;
    const std::int64_t start = backwards ? high : low;
    const std::int64_t end = backwards ? low : high;
    const std::int64_t dot = kDotLength * stroke.m_Unit;
    const std::int64_t first = backwards ? start - seenHigh : seenLow - start;
    const std::int64_t last = backwards ? start - seenLow : seenHigh - start;
    for (std::int64_t at = first - first % (2 * dot); at < last; at += 2 * dot) {
        low = backwards ? std::max(start - at - dot, end) : start + at;
        high = backwards ? start - at : std::min(start + at + dot, end);
        Fill(box, stroke.m_Pixel);
    }
}

// One span across the line's longer axis for each of its pixels, the last point left out.
void RasterSurface::Slanted(DevicePoint from, DevicePoint to, const Stroke& stroke) {
    const RasterLine line(from, to);
    const bool steep = line.IsSteep();
    const bool backwards = steep ? to.y < from.y : to.x < from.x;
    const std::int64_t shift = backwards ? stroke.m_Unit - 1 : 0;
    const std::int64_t left = steep ? -stroke.m_Lead : shift;
    const std::int64_t top = steep ? shift : -stroke.m_Lead;
    const std::int64_t width = steep ? stroke.m_Thickness : 1;
    const std::int64_t height = steep ? 1 : stroke.m_Thickness;
    const DeviceRect bounds{m_Clip.left - left - width + 1, m_Clip.top - top - height + 1,
                            m_Clip.right - left, m_Clip.bottom - top};
    const std::int64_t dot = kDotLength * stroke.m_Unit;
    line.Walk(line.Length(), bounds, [&](std::int64_t step, std::int64_t x, std::int64_t y) {
        if (stroke.m_Dotted && step / dot % 2 == 1) return;
        Fill({x + left, y + top, x + left + width, y + top + height}, stroke.m_Pixel);
    });
}

// --- Text ----------------------------------------------------------------------------------------

CSize RasterSurface::MeasureText(std::string_view text) const {
    return m_Shared->m_Glyphs.Measure(text);
}

const GlyphSource& RasterSurface::Glyphs() const {
    return m_Shared->m_Glyphs.Source();
}

void RasterSurface::Text(CPoint at, std::string_view text, COLORREF color) {
    const GlyphTable& glyphs = m_Shared->m_Glyphs;
    const CRect& ink = glyphs.Ink();
    const std::uint32_t pixel = PixelOf(color);
    auto [x, y] = At(at.x, at.y);
    if (y + ink.top >= m_Clip.bottom || y + ink.bottom <= m_Clip.top) return;
    for (const char character : text) {
        if (x + ink.left >= m_Clip.right) return;
        const GlyphTable::Entry& glyph = glyphs[character];
        if (x + ink.right > m_Clip.left) Blend(glyph.m_Mask, glyph.m_Stride, x, y, pixel);
        x += glyph.m_DeviceAdvance;
    }
}

void RasterSurface::Blend(const GlyphMask& mask, int stride, std::int64_t x, std::int64_t y,
                          std::uint32_t pixel) {
    const std::int64_t left = x + mask.m_OffsetX;
    const std::int64_t top = y + mask.m_OffsetY;
    const DeviceRect cut = Cut({left, top, left + mask.m_Width, top + mask.m_Height});
    if (cut.Empty()) return;
    for (std::int64_t row = cut.top; row < cut.bottom; ++row) {
        const std::uint8_t* coverage = mask.m_Coverage + (row - top) * stride;
        std::uint32_t* pixels = m_Pixels.data() + row * m_Stride;
        for (std::int64_t column = cut.left; column < cut.right; ++column) {
            const std::uint8_t share = coverage[column - left];
            if (share == 255) {
                pixels[column] = pixel;
            } else if (share != 0) {
                pixels[column] = Mix(pixels[column], pixel, share);
            }
        }
    }
}

// --- Whole pictures ------------------------------------------------------------------------------

void RasterSurface::Copy(const CRect& target, const Surface& source, CPoint sourceTopLeft) {
    const auto* other = dynamic_cast<const RasterSurface*>(&source);
    if (!other || other->m_Scale != m_Scale) return;
    const DeviceRect box = Box(target);
    const DevicePoint from = other->At(sourceTopLeft.x, sourceTopLeft.y);
    const std::int64_t dx = from.x - box.left;
    const std::int64_t dy = from.y - box.top;
    DeviceRect cut = Cut(box);
    cut = {std::max(cut.left, -dx), std::max(cut.top, -dy),
           std::min(cut.right, other->m_DeviceWidth - dx),
           std::min(cut.bottom, other->m_DeviceHeight - dy)};
    if (cut.Empty()) return;
    // Within one surface, rows that move down are copied from the last one up.
    const bool upwards = other == this && dy < 0;
    for (std::int64_t i = 0; i < cut.bottom - cut.top; ++i) {
        const std::int64_t y = upwards ? cut.bottom - 1 - i : cut.top + i;
        std::memmove(m_Pixels.data() + y * m_Stride + cut.left,
                     other->m_Pixels.data() + (y + dy) * other->m_Stride + cut.left + dx,
                     static_cast<std::size_t>(cut.right - cut.left) * sizeof(std::uint32_t));
    }
}

COLORREF RasterSurface::PixelAt(int x, int y) const {
    if (x < 0 || y < 0 || x >= m_DeviceWidth || y >= m_DeviceHeight) return 0;
    return ColorOf(m_Pixels[static_cast<std::size_t>(y) * m_Stride + x]);
}

}  // namespace vesk
