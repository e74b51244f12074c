#pragma once

#include <string>

#include "platform/VectorSurface.h"

namespace vesk {

// Draws into the text of an SVG file. Text stays text, in the first font of a list that its reader
// has, and is drawn together or apart to the width it was measured with. Bytes are taken as
// Latin-1; characters that no XML may hold become blanks.
class SvgSurface : public VectorSurface {
public:
    SvgSurface(CSize size, const GlyphSource& glyphs) : VectorSurface(size, glyphs) {}

    // The file, with all that was drawn so far.
    std::string Document();

protected:
    void ClipTo(const CRect&) override;
    void Area(const CRect&, COLORREF) override;
    void OpenPath(Spot from, Spot to, const CPen&) override;
    void ClosedPath(std::span<const Spot> corners, const CPen*, const CBrush*) override;
    void RoundArea(Spot topLeft, Spot bottomRight, Spot radii, const CPen*, const CBrush*) override;
    void Words(CPoint, std::string_view, CSize measured, COLORREF) override;

private:
    void LeaveClip();

    std::string m_Body;
    int m_Clips = 0;
    bool m_IsClipped = false;  // within the group of a clip path
};

}  // namespace vesk
