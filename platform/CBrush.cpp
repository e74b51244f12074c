#include "platform/CBrush.h"

bool CBrush::CreateSolidBrush(COLORREF color) {
    m_Color = color;
    m_Hollow = false;
    return true;
}
