#pragma once

#include <QFont>
#include <map>
#include <memory>

#include "platform/GlyphSource.h"

namespace vesk {

// The views' font: 12 pixels high, without kerning or shaping, so that the width of a text is the
// sum of its characters.
QFont ViewFont();

// The glyphs of the views' font, taken once per scale from the toolkit: fully hinted, each pixel
// covered or not. Bytes are taken as Latin-1; control characters are as wide as a space and leave
// no ink. Needs a running QGuiApplication when it is first asked.
class QtGlyphs : public GlyphSource {
public:
    QtGlyphs();
    ~QtGlyphs() override;
    int Height() const override;
    int Advance(std::uint8_t character) const override;
    int DeviceAdvance(std::uint8_t character, double scale) const override;
    GlyphMask Mask(std::uint8_t character, double scale) const override;

private:
    struct Masks;
    const Masks& At(double scale) const;
    mutable std::map<double, std::unique_ptr<Masks>> m_Scales;
    mutable const Masks* m_Last = nullptr;  // of the scale asked for last
    mutable double m_LastScale = 0;
};

}  // namespace vesk
