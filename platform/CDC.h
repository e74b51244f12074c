#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "platform/CObject.h"
#include "platform/CString.h"
#include "platform/Color.h"
#include "platform/Geometry.h"

class CBitmap;
class CBrush;
class CPen;
class CWnd;

namespace vesk {
class CellPicture;
class GlyphSource;
class Surface;
}  // namespace vesk

constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;
constexpr unsigned SRCCOPY = 0x00CC0020;
constexpr unsigned DFC_BUTTON = 4;
constexpr unsigned DFCS_BUTTONCHECK = 0x0000;
constexpr unsigned DFCS_INACTIVE = 0x0100;
constexpr unsigned DFCS_CHECKED = 0x0400;
constexpr unsigned DFCS_FLAT = 0x4000;

// Sizes of a font, in pixels.
struct TEXTMETRIC {
    int tmHeight = 0;  // of a line
};

// A drawing context: pen, brush, colours, position and origin, and the surface they work on. The
// window origin is the logical point that lies at the surface's top left. Borrows the surface and
// the selected objects, which must outlive their selection. A context without a surface draws
// nothing, and measures in the user interface's font. Starts with a black pen of width 1, a white
// brush, black text on a white ground, and all of the surface to be painted; sets the surface's
// clip and origin. Coordinates may be any integers.
class CDC : public CObject {
public:
    CDC() : CDC(nullptr) {}
    explicit CDC(vesk::Surface* surface);

    // --- Objects and state ---------------------------------------------------------------------

    // Each selects an object and gives back the one selected before, which may be a default one.
    // A null pen or brush changes nothing; a null bitmap leaves a memory context without one.
    CPen* SelectObject(CPen*);
    CBrush* SelectObject(CBrush*);
    CBitmap* SelectObject(CBitmap*);  // memory contexts only: what is drawn on from here on

    COLORREF SetTextColor(COLORREF);  // setters return the former value
    COLORREF GetTextColor() const { return m_TextColor; }
    COLORREF SetBkColor(COLORREF);
    COLORREF GetBkColor() const { return m_BkColor; }
    int SetBkMode(int mode);
    CPoint SetWindowOrg(int x, int y);
    CPoint GetWindowOrg() const { return m_Origin; }

    // The part that is to be painted, in logical coordinates; it stays in its place on the surface
    // when the origin changes.
    void SetClipBox(const CRect&);
    void GetClipBox(CRect*) const;
    bool IsPrinting() const { return m_bPrinting; }

    // --- Drawing -------------------------------------------------------------------------------

    void FillSolidRect(const CRect&, COLORREF);
    void FillSolidRect(int x, int y, int width, int height, COLORREF);
    CPoint MoveTo(int x, int y);  // the former position
    void LineTo(int x, int y);    // the end point is not painted
    void Polygon(const CPoint* corners, int count);
    void Rectangle(int left, int top, int right, int bottom);
    void RoundRect(const CRect&, CPoint corner);
    void TextOut(int x, int y, std::string_view);  // opaque mode fills the text's box first
    CSize GetTextExtent(std::string_view) const;
    // A control in the system's colours; of kinds and states only flat check boxes, DFC_BUTTON with
    // DFCS_BUTTONCHECK and DFCS_FLAT, checked or not, inactive or not. Anything else draws nothing.
    void DrawFrameControl(const CRect&, unsigned kind, unsigned state);
    bool GetTextMetrics(TEXTMETRIC*) const;
    const vesk::GlyphSource& Glyphs() const;  // that text is measured in
    // See Surface::FillCells.
    void FillCells(CPoint, const vesk::CellPicture&, std::span<const COLORREF> palette);

    // --- Memory contexts -----------------------------------------------------------------------

    // Makes this a memory context for another; a bitmap has to be selected before drawing. False
    // if the other has nothing to draw on.
    bool CreateCompatibleDC(CDC*);
    // Copies what another context shows at its own logical coordinates. Operations other than
    // SRCCOPY do nothing.
    void BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                unsigned operation = SRCCOPY);

    // What is drawn on, in a memory context the selected bitmap's; null if there is nothing.
    vesk::Surface* GetSurface() const;
    // What bitmaps for this context are made like; null if there is nothing.
    const vesk::Surface* GetModel() const;

    bool m_bPrinting = false;

private:
    CPoint ToSurface(int x, int y) const;
    CRect ToSurface(const CRect&) const;
    void TakeWholeSurface();

    vesk::Surface* m_Surface = nullptr;
    const vesk::Surface* m_Model = nullptr;  // of the context that a memory context is made for
    CPen* m_Pen;
    CBrush* m_Brush;
    CBitmap* m_Bitmap = nullptr;
    COLORREF m_TextColor = 0;
    COLORREF m_BkColor = 0xFFFFFF;
    int m_BkMode = OPAQUE;
    CPoint m_Origin;
    CPoint m_Position;
    CRect m_Clip;                   // of the surface
    std::vector<CPoint> m_Corners;  // memory of Polygon
};
