#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/GlyphSource.h"

namespace vesk {

// All glyphs of a source at one scale, looked up once: drawing a character is one step in an array.
class GlyphTable {
public:
    struct Entry {
        GlyphMask m_Mask;  // of the ink alone
        int m_Stride = 0;  // bytes from one of its rows to the next
        int m_DeviceAdvance = 0;
        int m_Advance = 0;  // logical
    };

    // The source is borrowed.
    GlyphTable(const GlyphSource&, double scale);

    const GlyphSource& Source() const { return m_Source; }
    const Entry& operator[](char character) const {
        return m_Entries[static_cast<std::uint8_t>(character)];
    }
    // The same as MeasureText of the source.
    CSize Measure(std::string_view) const;
    // Device pixels from the pen's position that hold the ink of every glyph.
    const CRect& Ink() const { return m_Ink; }

private:
    const GlyphSource& m_Source;
    int m_Height;
    std::array<Entry, 256> m_Entries;
    CRect m_Ink;
};

}  // namespace vesk
