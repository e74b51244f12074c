#include "platform/CPen.h"

#include <algorithm>

bool CPen::CreatePen(int style, int width, COLORREF color) {
    m_Style = style;
    m_Width = std::max(width, 1);
    m_Color = color;
    return true;
}
