#include "platform/GlyphTable.h"

#include <algorithm>
#include <cstddef>

namespace vesk {

namespace {

// Most of the box around a full stop is empty.
GlyphMask WithoutEmptyRows(GlyphMask mask) {
    const auto isEmpty = [&](int row) {
        const std::uint8_t* const first = mask.m_Coverage + std::ptrdiff_t{row} * mask.m_Width;
        return std::all_of(first, first + mask.m_Width,
                           [](std::uint8_t share) { return share == 0; });
    };
    while (mask.m_Height > 0 && isEmpty(mask.m_Height - 1)) --mask.m_Height;
    while (mask.m_Height > 0 && isEmpty(0)) {
        mask.m_Coverage += mask.m_Width;
        --mask.m_Height;
        ++mask.m_OffsetY;
    }
    return mask;
}

}  // namespace

GlyphTable::GlyphTable(const GlyphSource& source, double scale)
    : m_Source(source), m_Height(source.Height()) {
    for (int i = 0; i < 256; ++i) {
        const auto character = static_cast<std::uint8_t>(i);
        const GlyphMask mask = WithoutEmptyRows(source.Mask(character, scale));
        m_Entries[character] = {mask, source.DeviceAdvance(character, scale),
                                source.Advance(character)};
        m_Ink.UnionRect(m_Ink, {mask.m_OffsetX, mask.m_OffsetY, mask.m_OffsetX + mask.m_Width,
                                mask.m_OffsetY + mask.m_Height});
    }
}

CSize GlyphTable::Measure(std::string_view text) const {
    int width = 0;
    for (const char character : text) width += (*this)[character].m_Advance;
    return {width, m_Height};
}

}  // namespace vesk
