#pragma once

#include <optional>

#include "platform/CWnd.h"

constexpr unsigned TTS_ALWAYSTIP = 0x01;  // shown in inactive windows too

// What a tip belongs to: a window, and the one that holds it or null.
struct TOOLINFO {
    unsigned cbSize = 0;
    unsigned uFlags = 0;
    CWnd* hwnd = nullptr;
    CWnd* uId = nullptr;
};

// A text that is shown at a point of the screen when told to, and hidden when told to. Its window
// text is the text.
class CToolTipCtrl : public CWnd {
public:
    bool Create(CWnd* owner, unsigned style = TTS_ALWAYSTIP);
    // The window whose tip this is. One at a time: a second one is refused.
    bool AddTool(const TOOLINFO&);
    // Lines break where they would be wider than so many pixels, and where the text says so.
    void SetMaxTipWidth(int width) { m_MaxWidth = width; }
    // For a window that was added; another one changes nothing.
    void UpdateTipText(const CString& text, CWnd* tool);
    void TrackPosition(CPoint screen);
    void TrackActivate(bool show);
    // The point of the screen that the tip is about. A tip that stands left of it may move up to
    // it, as its lines are shorter than a text that is measured as one line.
    void SetAnchor(CPoint screen) { m_Anchor = screen; }

    CPoint Position() const { return m_Position; }
    CWnd* Owner() const { return m_Owner; }
    int MaxTipWidth() const { return m_MaxWidth; }
    const std::optional<CPoint>& Anchor() const { return m_Anchor; }

private:
    CPoint m_Position;
    std::optional<CPoint> m_Anchor;
    CWnd* m_Owner = nullptr;
    CWnd* m_Tool = nullptr;
    int m_MaxWidth = 0;
};
