#pragma once

#include "platform/Surface.h"

namespace vesk {

class GlyphSource;

// A surface that keeps shapes as shapes: a page to print, a drawing in a file. What a raster of
// scale 1 paints in whole pixels becomes the area of those pixels, so that both show the same
// picture. There are no parts on surfaces of their own: it is drawn on as when printing.
class VectorSurface : public Surface {
public:
    // Size in logical pixels. The glyphs, in which text is measured, are borrowed.
    VectorSurface(CSize size, const GlyphSource& glyphs);

    CSize Size() const override { return m_Size; }
    void SetClip(const CRect&) override;
    void FillRect(const CRect&, COLORREF) override;
    void Line(CPoint from, CPoint to, const CPen&) override;
    void Polygon(std::span<const CPoint> corners, const CPen&, const CBrush&) override;
    void RoundRect(const CRect&, CSize corner, const CPen&, const CBrush&) override;
    void Rectangle(const CRect&, const CPen&, const CBrush&) override;
    void Text(CPoint, std::string_view, COLORREF) override;
    CSize MeasureText(std::string_view) const override;
    const GlyphSource& Glyphs() const override { return m_Glyphs; }
    std::unique_ptr<Surface> MakeCompatible(CSize) const override { return nullptr; }
    void Copy(const CRect&, const Surface&, CPoint) override {}

protected:
    // A place on the page. Pixel (x, y) is the area from there to (x + 1, y + 1).
    struct Spot {
        double x;
        double y;
    };

    // What a page is made of. Pens and brushes that draw nothing are null. Lines have their middle
    // on the places given, and the pen's width.
    virtual void ClipTo(const CRect&) = 0;
    virtual void Area(const CRect&, COLORREF) = 0;  // not empty, within the clip
    virtual void OpenPath(Spot from, Spot to, const CPen&) = 0;
    virtual void ClosedPath(std::span<const Spot> corners, const CPen*, const CBrush*) = 0;
    virtual void RoundArea(Spot topLeft, Spot bottomRight, Spot radii, const CPen*,
                           const CBrush*) = 0;
    // Text that is as wide as it was measured, from its top left.
    virtual void Words(CPoint, std::string_view, CSize measured, COLORREF) = 0;

    // Draws what was held back; to be called before the page is taken.
    void Flush();

private:
    bool Sees(const CRect&) const;

    CSize m_Size;
    const GlyphSource& m_Glyphs;
    CRect m_Clip;
    CRect m_Held;  // an area that the next one may go on, so that no seam shows between them
    COLORREF m_HeldColor = 0;
};

}  // namespace vesk
