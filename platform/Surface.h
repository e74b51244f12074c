#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "platform/Color.h"
#include "platform/Geometry.h"

class CBrush;
class CPen;

namespace vesk {

class CellPicture;
class GlyphSource;

// What a drawing context draws on: pixels, a recording, a page. Coordinates are logical pixels of
// the surface; all drawing is cut to the clip rectangle. Lines do not paint their end point,
// rectangles exclude their right and bottom edges.
class Surface {
public:
    virtual ~Surface() = default;

    virtual CSize Size() const = 0;
    virtual void SetClip(const CRect&) = 0;  // within the size; all of it at first
    // Where the surface's top left lies in the whole picture. Coordinates stay those of the
    // surface; where a pixel of the picture falls on a scaled screen depends on its place in it.
    virtual void SetOrigin(CPoint) {}

    virtual void FillRect(const CRect&, COLORREF) = 0;
    virtual void Line(CPoint from, CPoint to, const CPen&) = 0;
    virtual void Polygon(std::span<const CPoint> corners, const CPen&, const CBrush&) = 0;
    virtual void RoundRect(const CRect&, CSize corner, const CPen&, const CBrush&) = 0;
    virtual void Rectangle(const CRect&, const CPen&, const CBrush&) = 0;
    // Text from its top left, over the ground as it is.
    virtual void Text(CPoint, std::string_view, COLORREF) = 0;
    virtual CSize MeasureText(std::string_view) const = 0;
    virtual const GlyphSource& Glyphs() const = 0;  // that text is measured in

    // Paints cells of a unit from their top left on: empty ones leave the ground as it is, the
    // others are painted in colour n - 1 of the palette.
    virtual void FillCells(CPoint, const CellPicture&, std::span<const COLORREF> palette);

    // Another surface of this kind, for a part of the picture; null if its size is not positive or
    // too large. It holds no picture yet.
    virtual std::unique_ptr<Surface> MakeCompatible(CSize) const = 0;
    // Copies a part of a compatible surface here.
    virtual void Copy(const CRect& target, const Surface& source, CPoint sourceTopLeft) = 0;
};

}  // namespace vesk
