#pragma once

#include "platform/CWnd.h"

// A line of text that the user edits; the text is the window's text.
class CEdit : public CWnd {
public:
    void SetSel(int from, int to);  // characters; 0, -1 selects everything
    void GetSel(int& from, int& to) const;

    // What the user's typing leaves as text; the parent gets EN_CHANGE if it differs. Nothing if
    // disabled, hidden or read-only. An edit for digits drops everything else.
    void Type(const CString& text);

    bool m_DigitsOnly = false;
    bool m_ReadOnly = false;

private:
    int m_SelFrom = 0;
    int m_SelTo = 0;
};
