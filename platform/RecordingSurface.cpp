#include "platform/RecordingSurface.h"

#include <cstdint>
#include <cstdio>
#include <utility>

#include "platform/CBrush.h"
#include "platform/CPen.h"
#include "platform/GlyphSource.h"

namespace vesk {

namespace {

std::string HexOf(COLORREF color) {
    char text[16];
    std::snprintf(text, sizeof text, "%06X", static_cast<unsigned>(color));
    return text;
}

std::string SizeOf(std::int64_t width, std::int64_t height) {
    return std::to_string(width) + "x" + std::to_string(height);
}

std::string SizeOf(const CRect& rect) {
    return SizeOf(std::int64_t{rect.right} - rect.left, std::int64_t{rect.bottom} - rect.top);
}

std::string TextOf(const CPen& pen) {
    const char* style = pen.m_Style == PS_DOT ? "dot" : "solid";
    if (pen.m_Style == PS_NULL) return "none";
    return std::string(style) + " " + std::to_string(pen.m_Width) + " " + HexOf(pen.m_Color);
}

std::string TextOf(const CBrush& brush) {
    return brush.m_Hollow ? "hollow" : HexOf(brush.m_Color);
}

}  // namespace

void RecordingSurface::FillRect(const CRect& rect, COLORREF color) {
    m_Calls.push_back({"fill", {rect.TopLeft()}, SizeOf(rect) + " " + HexOf(color)});
}

void RecordingSurface::Line(CPoint from, CPoint to, const CPen& pen) {
    m_Calls.push_back({"line", {from, to}, TextOf(pen)});
}

void RecordingSurface::Polygon(std::span<const CPoint> corners, const CPen& pen,
                               const CBrush& brush) {
    m_Calls.push_back(
        {"polygon", {corners.begin(), corners.end()}, TextOf(pen) + " on " + TextOf(brush)});
}

void RecordingSurface::RoundRect(const CRect& rect, CSize corner, const CPen& pen,
                                 const CBrush& brush) {
    m_Calls.push_back({"roundrect",
                       {rect.TopLeft()},
                       SizeOf(rect) + " by " + SizeOf(corner.cx, corner.cy) + " " + TextOf(pen) +
                           " on " + TextOf(brush)});
}

void RecordingSurface::Rectangle(const CRect& rect, const CPen& pen, const CBrush& brush) {
    m_Calls.push_back(
        {"rect", {rect.TopLeft()}, SizeOf(rect) + " " + TextOf(pen) + " on " + TextOf(brush)});
}

void RecordingSurface::Text(CPoint at, std::string_view text, COLORREF color) {
    m_Calls.push_back({"text", {at}, HexOf(color), std::string(text)});
}

CSize RecordingSurface::MeasureText(std::string_view text) const {
    return vesk::MeasureText(text, Glyphs());
}

const GlyphSource& RecordingSurface::Glyphs() const {
    static const FixedGlyphs glyphs;
    return glyphs;
}

std::unique_ptr<Surface> RecordingSurface::MakeCompatible(CSize size) const {
    if (size.cx <= 0 || size.cy <= 0) return nullptr;
    return std::make_unique<RecordingSurface>(size);
}

void RecordingSurface::Copy(const CRect& target, const Surface& source, CPoint sourceTopLeft) {
    const auto* other = dynamic_cast<const RecordingSurface*>(&source);
    if (!other) return;
    const std::vector<Call> calls = other->m_Calls;  // the other may be this one
    for (Call call : calls) {
        for (CPoint& point : call.m_Points) {
            point.x = ToCoordinate(std::int64_t{point.x} + target.left - sourceTopLeft.x);
            point.y = ToCoordinate(std::int64_t{point.y} + target.top - sourceTopLeft.y);
        }
        m_Calls.push_back(std::move(call));
    }
}

std::vector<std::string> RecordingSurface::Lines() const {
    std::vector<std::string> lines;
    for (const Call& call : m_Calls) {
        std::string line = call.m_Verb;
        const char* separator = " ";
        for (const CPoint& point : call.m_Points) {
            line += separator + std::to_string(point.x) + "," + std::to_string(point.y);
            separator = " > ";
        }
        if (call.m_Verb == "text") line += " \"" + call.m_Text + "\"";
        lines.push_back(line + " " + call.m_Rest);
    }
    return lines;
}

std::vector<std::string> RecordingSurface::Texts() const {
    std::vector<std::string> texts;
    for (const Call& call : m_Calls) {
        if (call.m_Verb == "text") texts.push_back(call.m_Text);
    }
    return texts;
}

}  // namespace vesk
