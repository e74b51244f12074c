#pragma once

#include "platform/CWnd.h"

// A text that is shown at a point of the screen when told to, and hidden when told to. Its window
// text is the text.
class CToolTipCtrl : public CWnd {
public:
    bool Create(CWnd* owner);
    void UpdateTipText(const CString& text) { SetWindowText(text); }
    void TrackPosition(CPoint screen);
    void TrackActivate(bool show);

    CPoint Position() const { return m_Position; }
    CWnd* Owner() const { return m_Owner; }

private:
    CPoint m_Position;
    CWnd* m_Owner = nullptr;
};
