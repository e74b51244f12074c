#include "timeline/StrokeTile.h"

#include <algorithm>

#include "platform/CDC.h"

namespace vesk {

namespace {

CRect PaintedRows(const CDC& dc, std::int64_t top, std::int64_t bottom) {
    CRect box;
    dc.GetClipBox(&box);
    box.top = ToCoordinate(std::max<std::int64_t>(box.top, top));
    box.bottom = std::max(box.top, ToCoordinate(std::min<std::int64_t>(box.bottom, bottom)));
    return box;
}

}  // namespace

StrokeTile::StrokeTile(CDC* dc, std::int64_t top, std::int64_t bottom)
    : m_DC(dc), m_Rows(PaintedRows(*dc, top, bottom)), m_Cells(kWidth, m_Rows.Height()) {}

void StrokeTile::Fill(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom,
                      std::size_t color) {
    top = std::max<std::int64_t>(top, m_Rows.top);
    bottom = std::min<std::int64_t>(bottom, m_Rows.bottom);
    if (top >= bottom || left >= right) return;
    if (m_Cells.Used() > 0 && (left < m_Left || right > m_Left + kWidth)) Flush();
    if (right - left > kWidth) {
        m_DC->FillSolidRect({ToCoordinate(left), static_cast<int>(top), ToCoordinate(right),
                             static_cast<int>(bottom)},
                            m_Palette[color]);
        return;
    }
    if (m_Cells.Used() == 0) m_Left = left;
    m_Cells.Fill(static_cast<int>(left - m_Left), static_cast<int>(top - m_Rows.top),
                 static_cast<int>(right - m_Left), static_cast<int>(bottom - m_Rows.top),
                 static_cast<std::uint8_t>(color + 1));
}

void StrokeTile::Flush() {
    if (m_Cells.Used() == 0) return;
    m_DC->FillCells({ToCoordinate(m_Left), m_Rows.top}, m_Cells, m_Palette);
    m_Cells.Clear();
}

}  // namespace vesk
