#pragma once

#include "platform/CObject.h"
#include "platform/Color.h"

constexpr int PS_SOLID = 0;
constexpr int PS_DOT = 2;
constexpr int PS_NULL = 5;

// How lines are drawn. Width in logical pixels, at least 1; dotted lines are 3 on, 3 off, and let
// the ground show through.
class CPen : public CObject {
public:
    CPen() = default;
    CPen(int style, int width, COLORREF color) { CreatePen(style, width, color); }
    bool CreatePen(int style, int width, COLORREF color);

    int m_Style = PS_SOLID;
    int m_Width = 1;
    COLORREF m_Color = 0;
};
