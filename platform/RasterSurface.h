#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/GlyphSource.h"
#include "platform/RasterLine.h"
#include "platform/Surface.h"

namespace vesk {

// Pixels in memory, 0xFFRRGGBB each, row by row from the top: the same picture on every machine.
// At a scale above 1 a logical pixel covers several device pixels: edge v of a rectangle lies at
// floor(v * scale + 0.5), counted in the whole picture, and lines are max(1, floor(scale)) times
// their width thick. A part of a picture, drawn on a surface of its own with its origin set, is
// equal to that part of the whole, pixel by pixel, at every scale.
class RasterSurface : public Surface {
public:
    // Size in logical pixels. The glyphs are borrowed. Starts white. A size that is not positive
    // or needs more than 2^28 pixels gives an empty surface; a scale outside 0.1 to 16 becomes 1.
    RasterSurface(CSize size, const GlyphSource&, double scale = 1.0);
    ~RasterSurface() override;

    // Takes another size and scale; keeps its memory where it can. The picture is undefined then,
    // unless both are as before; clip and origin are as at first. False if the size is too large:
    // the surface is empty then.
    bool Resize(CSize size, double scale);

    CSize Size() const override { return m_Size; }
    void SetClip(const CRect&) override;
    // Moves what is drawn from here on, and may change DeviceWidth and DeviceHeight by one.
    void SetOrigin(CPoint) override;
    void FillRect(const CRect&, COLORREF) override;
    void Line(CPoint from, CPoint to, const CPen&) override;
    void Polygon(std::span<const CPoint> corners, const CPen&, const CBrush&) override;
    void RoundRect(const CRect&, CSize corner, const CPen&, const CBrush&) override;
    void Rectangle(const CRect&, const CPen&, const CBrush&) override;
    void Text(CPoint, std::string_view, COLORREF) override;
    CSize MeasureText(std::string_view) const override;
    const GlyphSource& Glyphs() const override;
    void FillCells(CPoint, const CellPicture&, std::span<const COLORREF> palette) override;
    std::unique_ptr<Surface> MakeCompatible(CSize) const override;
    // From another raster surface of the same scale; does nothing with any other.
    void Copy(const CRect& target, const Surface& source, CPoint sourceTopLeft) override;

    double Scale() const { return m_Scale; }
    int DeviceWidth() const { return m_DeviceWidth; }
    int DeviceHeight() const { return m_DeviceHeight; }
    const std::uint32_t* Pixels() const { return m_Pixels.data(); }
    // Pixels from one row to the next: DeviceWidth or one more.
    int Stride() const { return m_Stride; }
    // Colour of the device pixel; 0 outside.
    COLORREF PixelAt(int x, int y) const;

private:
    struct Shared;

    // A pen in device pixels. At point p it covers p - m_Lead up to p - m_Lead + m_Thickness.
    struct Stroke {
        std::uint32_t m_Pixel = 0;
        std::int64_t m_Unit = 1;  // a pen of width 1
        std::int64_t m_Thickness = 1;
        std::int64_t m_Lead = 0;
        bool m_Dotted = false;
        bool m_Visible = true;
    };

    explicit RasterSurface(std::shared_ptr<Shared>);
    bool TakeSize(CSize);
    void UpdateDevice();

    // Logical to device.
    std::int64_t DeviceEdge(std::int64_t) const;
    DevicePoint At(std::int64_t x, std::int64_t y) const;
    DeviceRect Box(const CRect&) const;
    DeviceRect Cut(const DeviceRect&) const;
    Stroke StrokeOf(const CPen&) const;

    void Fill(const DeviceRect&, std::uint32_t pixel);
    void Straight(DevicePoint from, DevicePoint to, const Stroke&);
    void Slanted(DevicePoint from, DevicePoint to, const Stroke&);
    void Dots(DeviceRect, bool horizontal, bool backwards, const Stroke&);
    void Frame(const DeviceRect&, const Stroke&);
    void FillPolygon(std::uint32_t pixel);
    void FindCrossings(std::int64_t y);
    void OutlinePolygon(const Stroke&);
    void PolygonEdge(DevicePoint upper, DevicePoint lower, int turn, const Stroke&);
    void Blend(const GlyphMask&, int stride, std::int64_t x, std::int64_t y, std::uint32_t pixel);

    std::shared_ptr<Shared> m_Shared;  // with all surfaces made from this one
    double m_Scale = 1.0;
    CSize m_Size;
    CPoint m_Origin;
    CRect m_LogicalClip;
    DevicePoint m_DeviceOrigin;
    DeviceRect m_Clip;
    int m_DeviceWidth = 0;
    int m_DeviceHeight = 0;
    int m_Stride = 0;
    std::vector<std::uint32_t> m_Pixels;    // at least as many as needed
    std::vector<DevicePoint> m_Corners;     // of the polygon at hand
    std::vector<std::int64_t> m_Crossings;  // of one of its rows
    std::vector<std::uint32_t> m_CellRow;   // of the picture of cells at hand
};

}  // namespace vesk
