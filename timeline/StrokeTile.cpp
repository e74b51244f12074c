#include "timeline/StrokeTile.h"

#include <algorithm>

#include "platform/CDC.h"

namespace vesk {

StrokeTile::StrokeTile(CDC* dc, std::int64_t top, std::int64_t bottom) : m_DC(dc) {
    CRect box;
    dc->GetClipBox(&box);
    m_Top = ToCoordinate(std::max<std::int64_t>(box.top, top));
    m_Bottom = std::max(m_Top, ToCoordinate(std::min<std::int64_t>(box.bottom, bottom)));
    // An odd number of lines, so that the cells of a row do not compete for the same places of the
    // cache. Rows beyond the clip are not painted.
    m_Height = ((m_Bottom - m_Top + kLine - 1) / kLine | 1) * kLine;
    m_Cells.resize(static_cast<std::size_t>(kWidth) * static_cast<std::size_t>(m_Height));
}

void StrokeTile::Fill(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom,
                      std::size_t color) {
    top = std::max<std::int64_t>(top, m_Top);
    bottom = std::min<std::int64_t>(bottom, m_Bottom);
    if (top >= bottom || left >= right) return;
    if (m_Used > 0 && (left < m_Left || right > m_Left + kWidth)) Flush();
    if (right - left > kWidth) {
        m_DC->FillSolidRect({ToCoordinate(left), static_cast<int>(top), ToCoordinate(right),
                             static_cast<int>(bottom)},
                            m_Palette[color]);
        return;
    }
    if (m_Used == 0) m_Left = left;
    m_Used = std::max(m_Used, static_cast<int>(right - m_Left));
    for (std::int64_t x = left - m_Left; x < right - m_Left; ++x) {
        std::fill_n(m_Cells.begin() + x * m_Height + top - m_Top, bottom - top,
                    static_cast<std::uint8_t>(color + 1));
    }
}

void StrokeTile::Flush() {
    if (m_Used == 0) return;
    const std::size_t used = static_cast<std::size_t>(m_Used) * static_cast<std::size_t>(m_Height);
    const int left = ToCoordinate(m_Left);
    m_DC->FillCells({left, m_Top, left + m_Used, m_Top + m_Height}, {m_Cells.data(), used},
                    m_Palette);
    std::fill_n(m_Cells.begin(), used, std::uint8_t{0});
    m_Used = 0;
}

}  // namespace vesk
