#include "platform/GlyphTable.h"

namespace vesk {

GlyphTable::GlyphTable(const GlyphSource& source, double scale)
    : m_Source(source), m_Height(source.Height()) {
    for (int i = 0; i < 256; ++i) {
        const auto character = static_cast<std::uint8_t>(i);
        const GlyphMask mask = source.Mask(character, scale);
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
