#pragma once

#include "platform/Color.h"

class CWnd;

// Asks for a colour.
class CColorDialog {
public:
    explicit CColorDialog(COLORREF initial = 0, CWnd* parent = nullptr)
        : m_Parent(parent), m_Color(initial) {}

    int DoModal();  // IDOK or IDCANCEL
    COLORREF GetColor() const { return m_Color; }

    CWnd* const m_Parent;
    COLORREF m_Color;  // before: the one proposed; afterwards: the one chosen
};
