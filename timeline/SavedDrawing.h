#pragma once

#include "platform/CDC.h"

namespace vesk {

// Gives a context back the pen, brush and text colour that it had, when this goes.
class SavedDrawing {
public:
    explicit SavedDrawing(CDC* dc)
        : m_Dc(*dc),
          m_Pen(dc->SelectObject(static_cast<CPen*>(nullptr))),
          m_Brush(dc->SelectObject(static_cast<CBrush*>(nullptr))),
          m_TextColor(dc->GetTextColor()) {}
    SavedDrawing(const SavedDrawing&) = delete;
    SavedDrawing& operator=(const SavedDrawing&) = delete;
    ~SavedDrawing() {
        m_Dc.SelectObject(m_Pen);
        m_Dc.SelectObject(m_Brush);
        m_Dc.SetTextColor(m_TextColor);
    }

private:
    CDC& m_Dc;
    CPen* m_Pen;
    CBrush* m_Brush;
    COLORREF m_TextColor;
};

}  // namespace vesk
