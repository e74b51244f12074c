#include "desktop/PainterSurface.h"

#include <QFontMetricsF>
#include <QPainter>

#include "desktop/InputTranslation.h"
#include "desktop/QtGlyphs.h"
#include "platform/CBrush.h"
#include "platform/CPen.h"

namespace vesk {

namespace {

constexpr double kDot = 3.0;  // pixels on, and off

QColor ColorOf(COLORREF color) {
    return {GetRValue(color), GetGValue(color), GetBValue(color)};
}

QPen PenOf(const CPen& pen) {
    const bool isDotted = pen.m_Style == PS_DOT;
    QPen made(ColorOf(pen.m_Color), pen.m_Width, Qt::SolidLine,
              isDotted ? Qt::FlatCap : Qt::RoundCap, Qt::MiterJoin);
    if (isDotted) made.setDashPattern({kDot / pen.m_Width, kDot / pen.m_Width});
    return made;
}

// Text as the glyphs have it: a byte is a character.
QString Latin(std::string_view text) {
    QString made = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
    for (QChar& character : made)
        if (character.category() == QChar::Other_Control) character = ' ';
    return made;
}

}  // namespace

PainterSurface::PainterSurface(QPainter& painter, CSize size, const GlyphSource& glyphs)
    : VectorSurface(size, glyphs), m_Painter(painter) {
    m_Painter.setRenderHint(QPainter::Antialiasing);
    m_Painter.setFont(ViewFont());
    m_Painter.setClipRect(0, 0, size.cx, size.cy);
}

PainterSurface::~PainterSurface() {
    Flush();
}

void PainterSurface::ClipTo(const CRect& clip) {
    m_Painter.setClipRect(ToQt(clip));
}

void PainterSurface::Area(const CRect& rect, COLORREF color) {
    m_Painter.fillRect(ToQt(rect), ColorOf(color));
}

void PainterSurface::Take(const CPen* pen, const CBrush* brush) {
    m_Painter.setPen(pen ? PenOf(*pen) : QPen(Qt::NoPen));
    m_Painter.setBrush(brush ? QBrush(ColorOf(brush->m_Color)) : QBrush());
}

void PainterSurface::OpenPath(Spot from, Spot to, const CPen& pen) {
    Take(&pen, nullptr);
    m_Painter.drawLine(QPointF(from.x, from.y), QPointF(to.x, to.y));
}

void PainterSurface::ClosedPath(std::span<const Spot> corners, const CPen* pen,
                                const CBrush* brush) {
    QPolygonF polygon;
    for (const Spot& corner : corners) polygon.append(QPointF(corner.x, corner.y));
    Take(pen, brush);
    m_Painter.drawPolygon(polygon, Qt::OddEvenFill);
}

void PainterSurface::RoundArea(Spot topLeft, Spot bottomRight, Spot radii, const CPen* pen,
                               const CBrush* brush) {
    Take(pen, brush);
    const QRectF box(QPointF(topLeft.x, topLeft.y), QPointF(bottomRight.x, bottomRight.y));
    m_Painter.drawRoundedRect(box, radii.x, radii.y);
}

// The page's own font is not hinted, and so not quite as wide as the screen's.
void PainterSurface::Words(CPoint at, std::string_view text, CSize measured, COLORREF color) {
    const QString words = Latin(text);
    const QFontMetricsF metrics(m_Painter.font());
    const double width = metrics.horizontalAdvance(words);
    if (width <= 0) return;
    m_Painter.save();
    m_Painter.setPen(ColorOf(color));
    m_Painter.translate(at.x, at.y + metrics.ascent());
    m_Painter.scale(measured.cx / width, 1);
    m_Painter.drawText(QPointF(0, 0), words);
    m_Painter.restore();
}

}  // namespace vesk
