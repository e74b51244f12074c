#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "platform/Geometry.h"

namespace vesk {

// Coverage of one glyph, 0 to 255 a pixel, row by row from the top.
struct GlyphMask {
    const std::uint8_t* m_Coverage = nullptr;
    int m_Width = 0;  // may be wider than the advance: ink that hangs over
    int m_Height = 0;
    int m_OffsetX = 0;  // of the mask's left edge from the pen's position
    int m_OffsetY = 0;  // of its top from the line's top
};

// The font: fixed sizes and one mask per 8-bit character, for each scale of the screen. The width
// of a text is the sum of its characters' advances. Sizes are logical pixels, masks device pixels.
class GlyphSource {
public:
    virtual ~GlyphSource() = default;
    virtual int Height() const = 0;
    virtual int Advance(std::uint8_t character) const = 0;

    // Advance and mask in device pixels at a scale. The mask lives as long as the source.
    virtual int DeviceAdvance(std::uint8_t character, double scale) const = 0;
    virtual GlyphMask Mask(std::uint8_t character, double scale) const = 0;
};

// Width and height of a text in logical pixels.
CSize MeasureText(std::string_view, const GlyphSource&);

// A font without a toolkit: every character takes a box of the same size, so that tests and
// programs without a display get the same picture everywhere. Letters, digits and signs of ASCII
// have a shape of their own; any other character is shown as a frame.
class FixedGlyphs : public GlyphSource {
public:
    int Height() const override { return 13; }
    int Advance(std::uint8_t) const override { return 7; }
    int DeviceAdvance(std::uint8_t character, double scale) const override;
    GlyphMask Mask(std::uint8_t character, double scale) const override;

private:
    // Masks of all characters, one after the other, per scale that was asked for.
    mutable std::map<double, std::vector<std::uint8_t>> m_Masks;
};

}  // namespace vesk
