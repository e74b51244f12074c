#pragma once

#include "platform/CObject.h"
#include "platform/Color.h"

// What areas are filled with: one colour, or nothing.
class CBrush : public CObject {
public:
    CBrush() = default;
    explicit CBrush(COLORREF color) { CreateSolidBrush(color); }
    bool CreateSolidBrush(COLORREF color);

    COLORREF m_Color = 0xFFFFFF;
    bool m_Hollow = false;
};
