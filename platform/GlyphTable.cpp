#include "platform/GlyphTable.h"

#include <cstddef>

namespace vesk {

namespace {

// Most of the box around a full stop is empty.
void CutToInk(GlyphMask& mask) {
    const int stride = mask.m_Width;
    const std::uint8_t* const all = mask.m_Coverage;
    CRect ink;
    for (int y = 0; y < mask.m_Height; ++y)
        for (int x = 0; x < stride; ++x)
            if (all[std::ptrdiff_t{y} * stride + x] != 0) ink.UnionRect(ink, {x, y, x + 1, y + 1});
    mask.m_Coverage += std::ptrdiff_t{ink.top} * stride + ink.left;
    mask.m_OffsetX += ink.left;
    mask.m_OffsetY += ink.top;
    mask.m_Width = ink.Width();
    mask.m_Height = ink.Height();
}

}  // namespace

GlyphTable::GlyphTable(const GlyphSource& source, double scale)
    : m_Source(source), m_Height(source.Height()) {
    for (int i = 0; i < 256; ++i) {
        const auto character = static_cast<std::uint8_t>(i);
        GlyphMask mask = source.Mask(character, scale);
        const int stride = mask.m_Width;
        CutToInk(mask);
        m_Entries[character] = {mask, stride, source.DeviceAdvance(character, scale),
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
