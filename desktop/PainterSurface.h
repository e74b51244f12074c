#pragma once

#include "platform/VectorSurface.h"

class QPainter;

namespace vesk {

// Draws on a page of the toolkit's: paper, or a file for it. The painter is borrowed, begun, and
// scaled so that a logical pixel is one unit; it must outlive the surface, which completes the page
// when it goes.
class PainterSurface : public VectorSurface {
public:
    PainterSurface(QPainter&, CSize size, const GlyphSource&);
    ~PainterSurface() override;

protected:
    void ClipTo(const CRect&) override;
    void Area(const CRect&, COLORREF) override;
    void OpenPath(Spot from, Spot to, const CPen&) override;
    void ClosedPath(std::span<const Spot> corners, const CPen*, const CBrush*) override;
    void RoundArea(Spot topLeft, Spot bottomRight, Spot radii, const CPen*, const CBrush*) override;
    void Words(CPoint, std::string_view, CSize measured, COLORREF) override;

private:
    void Take(const CPen*, const CBrush*);

    QPainter& m_Painter;
};

}  // namespace vesk
