#include "desktop/QtGlyphs.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <array>
#include <cmath>
#include <vector>

namespace vesk {

namespace {

constexpr int kPixelSize = 12;
constexpr int kInk = 128;  // from there on a pixel counts as covered
constexpr int kFirst = 32;
constexpr int kCount = 224;
constexpr int kColumns = 16;

// Without smooth edges: many names may stand on one place, and drawing one of them again must not
// make it bolder.
QFont MaskFont(double scale) {
    QFont font = ViewFont();
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(font.pixelSize() * scale))));
    font.setHintingPreference(QFont::PreferFullHinting);
    font.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::NoAntialias | QFont::PreferNoShaping));
    return font;
}

QString CharacterAt(int index) {
    return QString(QChar(static_cast<char16_t>(kFirst + index)));
}

// Ink of a cell of the sheet; an empty rectangle without any.
QRect InkOf(const QImage& sheet, const QRect& cell) {
    QRect ink;
    for (int y = cell.top(); y <= cell.bottom(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(sheet.constScanLine(y));
        for (int x = cell.left(); x <= cell.right(); ++x) {
            if (qGreen(row[x]) >= kInk) ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

}  // namespace

QFont ViewFont() {
    QFont font;
    font.setFamilies({"DejaVu Sans", "Liberation Sans"});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(kPixelSize);
    font.setKerning(false);
    font.setStyleStrategy(QFont::PreferNoShaping);
    return font;
}

// All glyphs of one scale, their coverage one after the other.
struct QtGlyphs::Masks {
    explicit Masks(double scale);
    void Cut(const QImage& sheet, int index, const QRect& cell, QPoint pen);

    struct Glyph {
        GlyphMask m_Mask;  // without its coverage
        std::size_t m_Start = 0;
        int m_Advance = 0;
    };
    int m_Height = 0;
    std::array<Glyph, kCount> m_Glyphs;
    std::vector<std::uint8_t> m_Coverage;
};

QtGlyphs::Masks::Masks(double scale) {
    const QFont font = MaskFont(scale);
    const QFontMetrics metrics(font);
    m_Height = metrics.height();

    // The margin catches ink outside the advance.
    const int margin = font.pixelSize();
    const QSize cell(metrics.maxWidth() + 2 * margin, m_Height + 2 * margin);
    QImage sheet(cell.width() * kColumns, cell.height() * (kCount / kColumns),
                 QImage::Format_RGB32);
    sheet.fill(Qt::black);
    QPainter painter(&sheet);
    painter.setFont(font);
    painter.setPen(Qt::white);
    for (int i = 0; i < kCount; ++i) {
        const QRect box(QPoint(i % kColumns * cell.width(), i / kColumns * cell.height()), cell);
        const QPoint pen = box.topLeft() + QPoint(margin, margin);
        painter.setClipRect(box);
        painter.drawText(pen + QPoint(0, metrics.ascent()), CharacterAt(i));
        m_Glyphs[static_cast<std::size_t>(i)].m_Advance = metrics.horizontalAdvance(CharacterAt(i));
    }
    painter.end();
    for (int i = 0; i < kCount; ++i) {
        const QRect box(QPoint(i % kColumns * cell.width(), i / kColumns * cell.height()), cell);
        Cut(sheet, i, box, box.topLeft() + QPoint(margin, margin));
    }
}

void QtGlyphs::Masks::Cut(const QImage& sheet, int index, const QRect& cell, QPoint pen) {
    const QRect ink = InkOf(sheet, cell);
    Glyph& glyph = m_Glyphs[static_cast<std::size_t>(index)];
    glyph.m_Start = m_Coverage.size();
    if (ink.isEmpty()) return;
    glyph.m_Mask = {nullptr, ink.width(), ink.height(), ink.left() - pen.x(), ink.top() - pen.y()};
    for (int y = ink.top(); y <= ink.bottom(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(sheet.constScanLine(y));
        for (int x = ink.left(); x <= ink.right(); ++x) {
            m_Coverage.push_back(qGreen(row[x]) >= kInk ? 255 : 0);
        }
    }
}

QtGlyphs::QtGlyphs() = default;
QtGlyphs::~QtGlyphs() = default;

const QtGlyphs::Masks& QtGlyphs::At(double scale) const {
    if (m_Last && m_LastScale == scale) return *m_Last;
    std::unique_ptr<Masks>& masks = m_Scales[scale];
    if (!masks) masks = std::make_unique<Masks>(scale);
    m_LastScale = scale;
    m_Last = masks.get();
    return *masks;
}

int QtGlyphs::Height() const {
    return At(1.0).m_Height;
}

int QtGlyphs::Advance(std::uint8_t character) const {
    return DeviceAdvance(character, 1.0);
}

int QtGlyphs::DeviceAdvance(std::uint8_t character, double scale) const {
    const std::size_t index = character < kFirst ? 0 : character - kFirst;
    return At(scale).m_Glyphs[index].m_Advance;
}

GlyphMask QtGlyphs::Mask(std::uint8_t character, double scale) const {
    if (character < kFirst) return {};
    const Masks& masks = At(scale);
    const Masks::Glyph& glyph = masks.m_Glyphs[static_cast<std::size_t>(character - kFirst)];
    GlyphMask mask = glyph.m_Mask;
    mask.m_Coverage = masks.m_Coverage.data() + glyph.m_Start;
    return mask;
}

}  // namespace vesk
