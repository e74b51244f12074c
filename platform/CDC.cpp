#include "platform/CDC.h"

#include <cstdint>
#include <utility>

#include "platform/CBitmap.h"
#include "platform/CBrush.h"
#include "platform/CPen.h"
#include "platform/GlyphSource.h"
#include "platform/Surface.h"
#include "platform/SystemMetrics.h"
#include "platform/UserInterface.h"

namespace {

CPen defaultPen;
CBrush defaultBrush;

int Add(int a, int b) {
    return vesk::ToCoordinate(std::int64_t{a} + b);
}

int Subtract(int a, int b) {
    return vesk::ToCoordinate(std::int64_t{a} - b);
}

}  // namespace

CDC::CDC(vesk::Surface* surface) : m_Surface(surface), m_Pen(&defaultPen), m_Brush(&defaultBrush) {
    TakeWholeSurface();
}

void CDC::TakeWholeSurface() {
    m_Clip = {};
    vesk::Surface* surface = GetSurface();
    if (!surface) return;
    m_Clip = {0, 0, surface->Size().cx, surface->Size().cy};
    surface->SetOrigin(m_Origin);
    surface->SetClip(m_Clip);
}

vesk::Surface* CDC::GetSurface() const {
    return m_Bitmap ? m_Bitmap->GetSurface() : m_Surface;
}

const vesk::Surface* CDC::GetModel() const {
    return m_Model ? m_Model : GetSurface();
}

CPen* CDC::SelectObject(CPen* pen) {
    return pen ? std::exchange(m_Pen, pen) : m_Pen;
}

CBrush* CDC::SelectObject(CBrush* brush) {
    return brush ? std::exchange(m_Brush, brush) : m_Brush;
}

CBitmap* CDC::SelectObject(CBitmap* bitmap) {
    if (!m_Model) return nullptr;
    CBitmap* former = std::exchange(m_Bitmap, bitmap);
    TakeWholeSurface();
    return former;
}

COLORREF CDC::SetTextColor(COLORREF color) {
    return std::exchange(m_TextColor, color);
}

COLORREF CDC::SetBkColor(COLORREF color) {
    return std::exchange(m_BkColor, color);
}

int CDC::SetBkMode(int mode) {
    return std::exchange(m_BkMode, mode);
}

CPoint CDC::SetWindowOrg(int x, int y) {
    const CPoint former = std::exchange(m_Origin, CPoint{x, y});
    if (vesk::Surface* surface = GetSurface()) surface->SetOrigin(m_Origin);
    return former;
}

void CDC::SetClipBox(const CRect& box) {
    vesk::Surface* surface = GetSurface();
    if (!surface) return;
    m_Clip.IntersectRect(ToSurface(box), {0, 0, surface->Size().cx, surface->Size().cy});
    surface->SetClip(m_Clip);
}

void CDC::GetClipBox(CRect* box) const {
    *box = {Add(m_Clip.left, m_Origin.x), Add(m_Clip.top, m_Origin.y),
            Add(m_Clip.right, m_Origin.x), Add(m_Clip.bottom, m_Origin.y)};
}

CPoint CDC::ToSurface(int x, int y) const {
    return {Subtract(x, m_Origin.x), Subtract(y, m_Origin.y)};
}

CRect CDC::ToSurface(const CRect& rect) const {
    const CPoint topLeft = ToSurface(rect.left, rect.top);
    const CPoint bottomRight = ToSurface(rect.right, rect.bottom);
    return {topLeft.x, topLeft.y, bottomRight.x, bottomRight.y};
}

void CDC::FillSolidRect(const CRect& rect, COLORREF color) {
    if (vesk::Surface* surface = GetSurface()) surface->FillRect(ToSurface(rect), color);
}

void CDC::FillSolidRect(int x, int y, int width, int height, COLORREF color) {
    FillSolidRect({x, y, Add(x, width), Add(y, height)}, color);
}

CPoint CDC::MoveTo(int x, int y) {
    return std::exchange(m_Position, CPoint{x, y});
}

void CDC::LineTo(int x, int y) {
    const CPoint from = MoveTo(x, y);
    if (vesk::Surface* surface = GetSurface()) {
        surface->Line(ToSurface(from.x, from.y), ToSurface(x, y), *m_Pen);
    }
}

void CDC::Polygon(const CPoint* corners, int count) {
    vesk::Surface* surface = GetSurface();
    if (!surface) return;
    m_Corners.clear();
    for (int i = 0; i < count; ++i) m_Corners.push_back(ToSurface(corners[i].x, corners[i].y));
    surface->Polygon(m_Corners, *m_Pen, *m_Brush);
}

void CDC::Rectangle(int left, int top, int right, int bottom) {
    if (vesk::Surface* surface = GetSurface()) {
        surface->Rectangle(ToSurface({left, top, right, bottom}), *m_Pen, *m_Brush);
    }
}

void CDC::RoundRect(const CRect& rect, CPoint corner) {
    if (vesk::Surface* surface = GetSurface()) {
        surface->RoundRect(ToSurface(rect), {corner.x, corner.y}, *m_Pen, *m_Brush);
    }
}

void CDC::TextOut(int x, int y, std::string_view text) {
    vesk::Surface* surface = GetSurface();
    if (!surface) return;
    if (m_BkMode == OPAQUE) {
        const CSize size = GetTextExtent(text);
        FillSolidRect(x, y, size.cx, size.cy, m_BkColor);
    }
    surface->Text(ToSurface(x, y), text, m_TextColor);
}

CSize CDC::GetTextExtent(std::string_view text) const {
    if (const vesk::Surface* model = GetModel()) return model->MeasureText(text);
    return vesk::MeasureText(text, vesk::CurrentUserInterface().Glyphs());
}

void CDC::DrawFrameControl(const CRect& rect, unsigned kind, unsigned state) {
    constexpr unsigned kKnownStates = DFCS_FLAT | DFCS_CHECKED | DFCS_INACTIVE;
    vesk::Surface* surface = GetSurface();
    if (!surface || kind != DFC_BUTTON || (state & ~kKnownStates) != 0 || !(state & DFCS_FLAT))
        return;
    const bool inactive = (state & DFCS_INACTIVE) != 0;
    const COLORREF color = GetSysColor(inactive ? COLOR_GRAYTEXT : COLOR_WINDOWTEXT);
    const CRect box = ToSurface(rect);
    surface->Rectangle(box, CPen(PS_SOLID, 1, color), CBrush(GetSysColor(COLOR_WINDOW)));
    if ((state & DFCS_CHECKED) == 0) return;
    const int width = box.Width(), height = box.Height();
    const CPoint bend{box.left + width * 2 / 5, box.bottom - height * 3 / 10 - 1};
    const CPen pen(PS_SOLID, 2, color);
    surface->Line({box.left + width / 5, box.top + height / 2}, bend, pen);
    surface->Line(bend, {box.right - width / 5, box.top + height / 5}, pen);
}

bool CDC::GetTextMetrics(TEXTMETRIC* metric) const {
    metric->tmHeight = GetTextExtent({}).cy;
    return true;
}

const vesk::GlyphSource& CDC::Glyphs() const {
    const vesk::Surface* model = GetModel();
    return model ? model->Glyphs() : vesk::CurrentUserInterface().Glyphs();
}

void CDC::FillCells(CPoint at, const vesk::CellPicture& cells, std::span<const COLORREF> palette) {
    if (vesk::Surface* surface = GetSurface())
        surface->FillCells(ToSurface(at.x, at.y), cells, palette);
}

bool CDC::CreateCompatibleDC(CDC* other) {
    m_Surface = nullptr;
    m_Bitmap = nullptr;
    m_Model = other ? other->GetModel() : nullptr;
    TakeWholeSurface();
    return m_Model != nullptr;
}

void CDC::BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                 unsigned operation) {
    vesk::Surface* target = GetSurface();
    const vesk::Surface* from = source ? source->GetSurface() : nullptr;
    if (!target || !from || operation != SRCCOPY) return;
    target->Copy(ToSurface({x, y, Add(x, width), Add(y, height)}), *from,
                 source->ToSurface(sourceX, sourceY));
}
