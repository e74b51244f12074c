#pragma once

#include "platform/CWnd.h"

constexpr unsigned SBS_HORZ = 0;
constexpr unsigned SBS_VERT = 1;
constexpr unsigned SBS_TOPALIGN = 2;
constexpr unsigned SBS_RIGHTALIGN = 4;

// Scroll codes.
constexpr unsigned SB_LINELEFT = 0, SB_LINEUP = 0;
constexpr unsigned SB_LINERIGHT = 1, SB_LINEDOWN = 1;
constexpr unsigned SB_PAGELEFT = 2, SB_PAGEUP = 2;
constexpr unsigned SB_PAGERIGHT = 3, SB_PAGEDOWN = 3;
constexpr unsigned SB_THUMBPOSITION = 4;
constexpr unsigned SB_THUMBTRACK = 5;
constexpr unsigned SB_LEFT = 6, SB_TOP = 6;
constexpr unsigned SB_RIGHT = 7, SB_BOTTOM = 7;
constexpr unsigned SB_ENDSCROLL = 8;

// What of a SCROLLINFO is meant.
constexpr unsigned SIF_RANGE = 1;
constexpr unsigned SIF_PAGE = 2;
constexpr unsigned SIF_POS = 4;
constexpr unsigned SIF_TRACKPOS = 16;
constexpr unsigned SIF_ALL = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS;

struct SCROLLINFO {
    unsigned fMask = 0;
    int nMin = 0;
    int nMax = 0;
    unsigned nPage = 0;
    int nPos = 0;
    int nTrackPos = 0;  // where the user held the thumb last; read only
};

// A scroll bar. It keeps range, page and position and never moves by itself: the user's action
// is told to the parent's OnHScroll or OnVScroll, which sets the new position.
class CScrollBar : public CWnd {
public:
    // By style SBS_..., WS_VISIBLE. False without a parent.
    bool Create(unsigned style, const CRect&, CWnd* parent, int id);
    bool IsVertical() const { return m_Vertical; }

    // What the mask names. Positions are kept within the range, less the page; a range that ends
    // before it begins ends where it begins.
    bool SetScrollInfo(const SCROLLINFO*, bool redraw = true);
    bool GetScrollInfo(SCROLLINFO*, unsigned mask = SIF_ALL) const;
    int SetScrollPos(int position, bool redraw = true);  // the former position
    int GetScrollPos() const { return m_State.m_Pos; }
    void GetScrollRange(int* min, int* max) const;
    // The greatest position that can be reached: nMax - (nPage - 1), at least nMin.
    int GetScrollLimit() const;

    // What the user does: one of the codes, with the thumb's position for the thumb codes. Nothing
    // if disabled or hidden.
    void Act(unsigned code, int trackPosition = 0);

private:
    struct State {
        int m_Min = 0;
        int m_Max = 100;
        unsigned m_Page = 0;
        int m_Pos = 0;
        friend bool operator==(const State&, const State&) = default;
    };

    bool m_Vertical = false;
    State m_State;
    int m_TrackPos = 0;
};
