#include "platform/CScrollBar.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/UserInterface.h"

bool CScrollBar::Create(unsigned style, const CRect& rect, CWnd* parent, int id) {
    if (!parent) return false;
    m_Vertical = (style & SBS_VERT) != 0;
    Attach(parent, id);
    MoveWindow(rect.left, rect.top, rect.Width(), rect.Height());
    if ((style & WS_VISIBLE) != 0) ShowWindow(SW_SHOW);
    SetPeer(vesk::CurrentUserInterface().MakePeer(*this));
    return true;
}

bool CScrollBar::SetScrollInfo(const SCROLLINFO* info, bool /*redraw*/) {
    if (!info) return false;
    const State before = m_State;
    if ((info->fMask & SIF_RANGE) != 0) {
        m_State.m_Min = info->nMin;
        m_State.m_Max = std::max(info->nMin, info->nMax);
    }
    if ((info->fMask & SIF_PAGE) != 0) m_State.m_Page = info->nPage;
    const int position = (info->fMask & SIF_POS) != 0 ? info->nPos : m_State.m_Pos;
    m_State.m_Pos = std::clamp(position, m_State.m_Min, GetScrollLimit());
    if (m_State != before) Notify(vesk::Aspect::Scroll);
    return true;
}

bool CScrollBar::GetScrollInfo(SCROLLINFO* info, unsigned mask) const {
    if (!info) return false;
    if ((mask & SIF_RANGE) != 0) {
        info->nMin = m_State.m_Min;
        info->nMax = m_State.m_Max;
    }
    if ((mask & SIF_PAGE) != 0) info->nPage = m_State.m_Page;
    if ((mask & SIF_POS) != 0) info->nPos = m_State.m_Pos;
    if ((mask & SIF_TRACKPOS) != 0) info->nTrackPos = m_TrackPos;
    return true;
}

int CScrollBar::SetScrollPos(int position, bool redraw) {
    const int former = m_State.m_Pos;
    SCROLLINFO info;
    info.fMask = SIF_POS;
    info.nPos = position;
    SetScrollInfo(&info, redraw);
    return former;
}

void CScrollBar::GetScrollRange(int* min, int* max) const {
    *min = m_State.m_Min;
    *max = m_State.m_Max;
}

int CScrollBar::GetScrollLimit() const {
    // 64 bits: a range may be as wide as all 32-bit numbers, and a page wider than the range.
    const std::int64_t page = std::max<std::int64_t>(m_State.m_Page, 1);
    const std::int64_t limit = std::int64_t{m_State.m_Max} - (page - 1);
    return static_cast<int>(std::max<std::int64_t>(limit, m_State.m_Min));
}

void CScrollBar::Act(unsigned code, int trackPosition) {
    if (!IsUsable() || !GetParent()) return;
    const bool isThumb = code == SB_THUMBPOSITION || code == SB_THUMBTRACK;
    if (isThumb) m_TrackPos = trackPosition;
    const auto position = isThumb ? static_cast<std::uint32_t>(trackPosition) : 0U;
    if (m_Vertical) {
        GetParent()->OnVScroll(code, position, this);
    } else {
        GetParent()->OnHScroll(code, position, this);
    }
}
