#include "platform/SvgSurface.h"

#include "platform/CBrush.h"
#include "platform/CPen.h"
#include "platform/Text.h"

namespace vesk {

namespace {

// Of the height that a line of text is measured with.
constexpr double kFontSize = 0.86;
constexpr double kBaseline = 0.79;

std::string HexOf(COLORREF color) {
    return FormatText("#%02x%02x%02x", static_cast<unsigned>(GetRValue(color)),
                      static_cast<unsigned>(GetGValue(color)),
                      static_cast<unsigned>(GetBValue(color)));
}

// Whole and half pixels, without a fraction of zeros; the same in every language of the machine.
std::string Number(double value) {
    const auto hundredths = static_cast<long long>(value * 100 + (value < 0 ? -0.5 : 0.5));
    const unsigned long long size = hundredths < 0
                                        ? 0ULL - static_cast<unsigned long long>(hundredths)
                                        : static_cast<unsigned long long>(hundredths);
    std::string text = (hundredths < 0 ? "-" : "") + std::to_string(size / 100);
    if (size % 100 == 0) return text;
    text += FormatText(".%02llu", size % 100);
    if (text.back() == '0') text.pop_back();
    return text;
}

std::string Attribute(const char* name, double value) {
    return ' ' + std::string(name) + "=\"" + Number(value) + '"';
}

std::string StrokeOf(const CPen& pen) {
    std::string text = " stroke=\"" + HexOf(pen.m_Color) + '"';
    if (pen.m_Width != 1) text += Attribute("stroke-width", pen.m_Width);
    if (pen.m_Style == PS_DOT) text += " stroke-dasharray=\"3\"";
    return text;
}

std::string LookOf(const CPen* pen, const CBrush* brush) {
    return " fill=\"" + (brush ? HexOf(brush->m_Color) : "none") + '"' +
           (pen ? StrokeOf(*pen) : "");
}

std::string BoxOf(const CRect& rect) {
    return Attribute("x", rect.left) + Attribute("y", rect.top) + Attribute("width", rect.Width()) +
           Attribute("height", rect.Height());
}

void AppendCharacter(std::string& text, std::uint8_t character) {
    switch (character) {
        case '&':
            text += "&amp;";
            return;
        case '<':
            text += "&lt;";
            return;
        case '>':
            text += "&gt;";
            return;
        default:
            break;
    }
    const bool isControl = character < 0x20 || (character >= 0x7F && character < 0xA0);
    if (isControl) {
        text += ' ';
    } else if (character < 0x80) {
        text += static_cast<char>(character);
    } else {
        text += static_cast<char>(0xC0 | character >> 6);
        text += static_cast<char>(0x80 | (character & 0x3F));
    }
}

}  // namespace

void SvgSurface::LeaveClip() {
    if (m_IsClipped) m_Body += "</g>\n";
    m_IsClipped = false;
}

// The whole picture needs no clip: the file has its size.
void SvgSurface::ClipTo(const CRect& clip) {
    LeaveClip();
    if (clip == CRect{0, 0, Size().cx, Size().cy}) return;
    const std::string id = "clip" + std::to_string(++m_Clips);
    m_Body += "<clipPath id=\"" + id + "\"><rect" + BoxOf(clip) + "/></clipPath>\n" +
              "<g clip-path=\"url(#" + id + ")\">\n";
    m_IsClipped = true;
}

void SvgSurface::Area(const CRect& rect, COLORREF color) {
    m_Body += "<rect" + BoxOf(rect) + " fill=\"" + HexOf(color) + "\"/>\n";
}

void SvgSurface::OpenPath(Spot from, Spot to, const CPen& pen) {
    m_Body += "<line" + Attribute("x1", from.x) + Attribute("y1", from.y) + Attribute("x2", to.x) +
              Attribute("y2", to.y) + StrokeOf(pen);
    if (pen.m_Style == PS_SOLID) m_Body += " stroke-linecap=\"round\"";
    m_Body += "/>\n";
}

void SvgSurface::ClosedPath(std::span<const Spot> corners, const CPen* pen, const CBrush* brush) {
    m_Body += "<polygon points=\"";
    const char* separator = "";
    for (const Spot& corner : corners) {
        m_Body += separator + Number(corner.x) + ',' + Number(corner.y);
        separator = " ";
    }
    m_Body += "\" fill-rule=\"evenodd\"" + LookOf(pen, brush) + "/>\n";
}

void SvgSurface::RoundArea(Spot topLeft, Spot bottomRight, Spot radii, const CPen* pen,
                           const CBrush* brush) {
    m_Body += "<rect class=\"round\"" + Attribute("x", topLeft.x) + Attribute("y", topLeft.y) +
              Attribute("width", bottomRight.x - topLeft.x) +
              Attribute("height", bottomRight.y - topLeft.y) + Attribute("rx", radii.x) +
              Attribute("ry", radii.y) + LookOf(pen, brush) + "/>\n";
}

void SvgSurface::Words(CPoint at, std::string_view text, CSize measured, COLORREF color) {
    m_Body += "<text" + Attribute("x", at.x) + Attribute("y", at.y + measured.cy * kBaseline) +
              Attribute("font-size", measured.cy * kFontSize) +
              Attribute("textLength", measured.cx) + " fill=\"" + HexOf(color) + "\">";
    for (const char character : text) AppendCharacter(m_Body, static_cast<std::uint8_t>(character));
    m_Body += "</text>\n";
}

std::string SvgSurface::Document() {
    Flush();
    const std::string size = std::to_string(Size().cx) + "\" height=\"" + std::to_string(Size().cy);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
           size + "\" viewBox=\"0 0 " + std::to_string(Size().cx) + ' ' +
           std::to_string(Size().cy) +
           "\">\n"
           "<style>rect{shape-rendering:crispEdges} .round{shape-rendering:auto} "
           "text{font-family:'DejaVu Sans',Verdana,sans-serif;white-space:pre}</style>\n" +
           m_Body + (m_IsClipped ? "</g>\n" : "") + "</svg>\n";
}

}  // namespace vesk
