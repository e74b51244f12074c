#include <algorithm>

#include "log/McuJobList.h"
#include "platform/SystemMetrics.h"
#include "timeline/CMcuView.h"

namespace {

constexpr unsigned kTimePage = 30;
constexpr unsigned kLanePage = 1;
constexpr int kLanePitch = 20;
constexpr int kLinesOfPage = 5;
constexpr int kBandBelow = 100;

// Gives a bar another range, and tells the greatest position that can be reached in it.
int SetRange(CScrollBar& bar, int min, int max, unsigned page) {
    SCROLLINFO info;
    bar.GetScrollInfo(&info);
    info.fMask = SIF_ALL;
    info.nMin = min;
    info.nMax = max;
    info.nPage = page;
    bar.SetScrollInfo(&info);
    return bar.GetScrollLimit();
}

template <class Flags>
int CountSet(const Flags& flags) {
    return static_cast<int>(std::count(flags.begin(), flags.end(), true));
}

// How a bar stands while the user works with it. In 64 bits, because steps in time can be far
// longer than the range.
struct BarState {
    explicit BarState(const CScrollBar& bar) : m_Limit(bar.GetScrollLimit()) {
        SCROLLINFO info;
        bar.GetScrollInfo(&info);
        m_Min = info.nMin;
        m_Position = info.nPos;
        m_Track = info.nTrackPos;
    }

    std::int64_t Lower(std::int64_t step) const {
        return m_Position > m_Min ? std::max(m_Position - step, m_Min) : m_Position;
    }
    std::int64_t Raise(std::int64_t step) const {
        return m_Position < m_Limit ? std::min(m_Position + step, m_Limit) : m_Position;
    }

    // Where a scroll code leads. Both ends are those of the code, not of the range.
    std::int64_t After(unsigned code, std::int64_t line, std::int64_t page) const {
        switch (code) {
            case SB_LINELEFT:
                return Lower(line);
            case SB_LINERIGHT:
                return Raise(line);
            case SB_PAGELEFT:
                return Lower(page);
            case SB_PAGERIGHT:
                return Raise(page);
            case SB_THUMBPOSITION:
            case SB_THUMBTRACK:
                return std::min(m_Track, m_Limit);
            case SB_LEFT:
                return 0;
            case SB_RIGHT:
                return m_Limit;
            default:
                return m_Position;
        }
    }

    std::int64_t m_Min;
    std::int64_t m_Limit;
    std::int64_t m_Position;
    std::int64_t m_Track;
};

void SetPosition(CScrollBar& bar, int position) {
    SCROLLINFO info;
    info.fMask = SIF_POS;
    info.nPos = position;
    bar.SetScrollInfo(&info);
}

}  // namespace

// --- Time ----------------------------------------------------------------------------------------

void CMcuView::SetHScrollRange() {
    const McuJobList& jobs = Jobs();
    m_HScrollMin = static_cast<std::int32_t>(static_cast<std::uint32_t>(jobs.m_BeginTime));
    const int max = vesk::TimeRangeEnd(m_HScrollMin, jobs.m_EndTime, m_VisibleQbits);
    m_HScrollMax = SetRange(m_HScrollBar, m_HScrollMin, max, kTimePage);
}

vesk::ScrollMapping CMcuView::TimeMapping() const {
    return {m_HScrollMin, m_HScrollMax, Jobs().m_EndTime, m_VisibleQbits};
}

void CMcuView::Cal_HScrollPos() {
    m_TimeOffset = TimeMapping().Clamp(m_TimeOffset);
    Cal_VisibleIndex();
    m_HScrollPos = TimeMapping().PositionOf(m_TimeOffset);
    m_HScrollBar.SetScrollPos(m_HScrollPos);
}

void CMcuView::Cal_HTimeOffset() {
    m_TimeOffset = TimeMapping().OffsetAt(m_HScrollPos);
    Cal_VisibleIndex();
}

void CMcuView::OnHScroll(unsigned code, unsigned pos, CScrollBar* bar) {
    if (bar == &m_HScrollBar) {
        // No position is farther than 2^32 from another, and beyond that the products could wrap.
        const auto visible =
            static_cast<std::int64_t>(std::min(m_VisibleQbits, std::uint64_t{1} << 40));
        const BarState state(m_HScrollBar);
        const std::int64_t position = state.After(code, visible / 40, visible * 2 / 3);
        if (position != state.m_Position) {
            const vesk::ShownSpan before = Shown();
            m_HScrollPos = static_cast<std::int32_t>(position);
            Cal_HTimeOffset();
            Note(before, vesk::SpanChange::kScrollBar);
            SetPosition(m_HScrollBar, m_HScrollPos);
            InvalidateView();
        }
        if (code == SB_THUMBPOSITION) m_History.EndMovement();
    }
    HideToolTip();
    CView::OnHScroll(code, pos, bar);
}

// --- Lanes ---------------------------------------------------------------------------------------

void CMcuView::SetVScrollRange() {
    const McuJobList& jobs = Jobs();
    m_VScrollMin = 0;
    int lanes = static_cast<int>(m_RelativeList.size());
    if (m_ShowCustomLogging) lanes += CountSet(jobs.m_CustomShown);
    lanes += CountSet(jobs.m_SourceMarkShown) + static_cast<int>(jobs.m_HWJobs.size());
    lanes -= (m_CanvasHeight - kLanePitch) / kLanePitch;
    m_VScrollMax = SetRange(m_VScrollBar, m_VScrollMin, lanes, kLanePage);
}

void CMcuView::Cal_VScrollPos() {
    m_LaneOffset = std::clamp(m_LaneOffset, 0, m_VScrollMax);
    m_VScrollPos = m_VScrollMin - m_LaneOffset + m_VScrollMax;
    m_VScrollBar.SetScrollPos(m_VScrollPos);
}

void CMcuView::Cal_VTimeOffset() {
    m_LaneOffset = m_VScrollMin - m_VScrollPos + m_VScrollMax;
}

void CMcuView::ShowLowestLanes() {
    m_VScrollPos = m_VScrollMax;
    m_LaneOffset = m_VScrollMin;
    m_VScrollBar.SetScrollPos(m_VScrollPos);
}

void CMcuView::OnVScroll(unsigned code, unsigned pos, CScrollBar* bar) {
    if (bar == &m_VScrollBar) {
        const BarState state(m_VScrollBar);
        const std::int64_t wanted = state.After(code, 1, kLinesOfPage);
        const std::int64_t position = std::clamp<std::int64_t>(wanted, 0, state.m_Limit);
        if (position != state.m_Position) {
            m_VScrollPos = static_cast<std::int32_t>(position);
            Cal_VTimeOffset();
            SetPosition(m_VScrollBar, m_VScrollPos);
            InvalidateView();
        }
    }
    HideToolTip();
    CView::OnVScroll(code, pos, bar);
}

// --- Size ----------------------------------------------------------------------------------------

void CMcuView::PlaceBars(int cx, int cy) {
    const int height = GetSystemMetrics(SM_CXHSCROLL);
    const int width = GetSystemMetrics(SM_CXVSCROLL);
    m_HScrollBar.MoveWindow(0, cy - height, cx - height, height);
    m_VScrollBar.MoveWindow(cx - width, 0, width, cy - width);
    m_HScrollBar.ShowWindow(SW_SHOW);
    m_VScrollBar.ShowWindow(SW_SHOW);
}

void CMcuView::OnSize(unsigned type, int cx, int cy) {
    CView::OnSize(type, cx, cy);
    PlaceBars(cx, cy);
    InitCanvas();
    SetHScrollRange();
    SetVScrollRange();
    Cal_HScrollPos();
    Cal_VScrollPos();
}

void CMcuView::InvalidateView() {
    CRect part;
    GetClientRect(&part);
    part.bottom =
        std::min(m_CanvasBottom + kBandBelow, part.bottom - GetSystemMetrics(SM_CYHSCROLL));
    part.right -= GetSystemMetrics(SM_CYVSCROLL);
    InvalidateRect(&part, false);
}
