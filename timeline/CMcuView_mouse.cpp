// What the left button takes hold of, and what a move does.
#include <algorithm>
#include <cstdlib>

#include "host/VESKUIDoc.h"
#include "log/McuJobList.h"
#include "log/TimeText.h"
#include "platform/CClientDC.h"
#include "platform/Text.h"
#include "platform/UserInterface.h"
#include "timeline/CMcuView.h"

namespace {

constexpr int kTopMargin = 30;
constexpr int kMarkerReach = 10;
constexpr int kHandleReach = 5;
constexpr int kMarkHeight = 10;

// A strip of the pure outlook: what its hit test is asked with, and where a click counts for it.
struct Band {
    int m_Height;
    int m_Bottom;
    int m_ClickTop;

    bool IsClicked(int y) const { return y >= m_ClickTop && y <= m_Bottom; }
};
Band JobBand(int canvasBottom) {
    return {canvasBottom / 4, canvasBottom * 3 / 4, canvasBottom / 2};
}
Band CustomBand(int canvasBottom) {
    return {canvasBottom / 6, canvasBottom * 2 / 5, canvasBottom * 7 / 30};
}
Band MarkBand(int canvasBottom) {
    const int bottom = canvasBottom * 7 / 30;
    return {kMarkHeight, bottom, bottom - kMarkHeight};
}

bool IsNear(std::int64_t x, std::int64_t place, int reach) {
    return std::abs(x - place) < reach;
}

// In the unit of the time axis; counters wrap, so they stand for the time that they count.
std::string InUnit(std::uint64_t qbits, TIMEUNITTYPE unit, bool isTqcnt) {
    if (unit == TIMEUNIT_TIME) return vesk::MillisecondsText(qbits) + " ms";
    if (unit == TIMEUNIT_COUNT && !isTqcnt) return vesk::MicrosecondsText(qbits) + " us";
    return std::to_string(qbits) + " QBit";
}

}  // namespace

// --- What lies under the pointer -----------------------------------------------------------------

std::int32_t CMcuView::MarkerAt(CPoint point) const {
    const int height = CClientDC(nullptr).GetTextExtent("49").cy;
    const bool isInRow =
        point.y >= (kTopMargin - height) / 2 && point.y <= (kTopMargin + height) / 2;
    if (!isInRow || !global_vesk_doc_ptr) return -1;
    for (const auto& [key, time] : global_vesk_doc_ptr->m_Markers)
        if (IsInView(time) && IsNear(point.x, Scale().PixelAt(time), kMarkerReach)) return key;
    return -1;
}

std::int32_t CMcuView::*CMcuView::HandleAt(int x) const {
    for (std::int32_t CMcuView::*handle : {&CMcuView::m_RangeX1, &CMcuView::m_RangeX2})
        if (IsNear(x, this->*handle, kHandleReach)) return handle;
    return nullptr;
}

std::uint64_t CMcuView::DragTime(int x) const {
    std::uint64_t time = Scale().TimeAt(x);
    if (x > CanvasRight()) time = m_TimeOffset + std::min(m_VisibleQbits, ~m_TimeOffset);
    return std::min(time, Jobs().m_EndTime);
}

vesk::PointerShape CMcuView::PointerAt(CPoint point) const {
    if (m_DragCursor) return vesk::PointerShape::Arrow;
    if (m_DragMarker || (!m_DragRange && MarkerAt(point) >= 0)) return vesk::PointerShape::Hand;
    if (m_DragRange || HandleAt(point.x)) return vesk::PointerShape::SizeHorizontal;
    return vesk::PointerShape::Arrow;
}

// --- Left button ---------------------------------------------------------------------------------

void CMcuView::OnLButtonDown(unsigned flags, CPoint point) {
    if (const std::int32_t marker = MarkerAt(point); marker >= 0) {
        m_DragMarkerIndex = marker;
        m_DragMarker = true;
        InvalidateView();
    } else if (std::int32_t CMcuView::*handle = HandleAt(point.x)) {
        m_DragRange = true;
        m_DragRangeX = &(this->*handle);
    } else {
        if (m_Outlook == OUTLOOK_PURE) OpenToolTips(point);
        m_DragCursor = true;
        m_CursorTime = DragTime(point.x);
        InvalidateView();
    }
    CView::OnLButtonDown(flags, point);
}

// Where two bands touch, the later one's tip stays.
void CMcuView::OpenToolTips(CPoint point) {
    const Band jobs = JobBand(m_CanvasBottom);
    const Band custom = CustomBand(m_CanvasBottom);
    const Band marks = MarkBand(m_CanvasBottom);
    if (jobs.IsClicked(point.y)) DisplayToolTip(point, jobs.m_Height, m_CanvasLeft, jobs.m_Bottom);
    if (custom.IsClicked(point.y))
        DisplayCustomJobToolTip(point, custom.m_Height, m_CanvasLeft, custom.m_Bottom);
    if (marks.IsClicked(point.y))
        DisplaySourceMarkToolTip(point, marks.m_Height, m_CanvasLeft, marks.m_Bottom);
}

void CMcuView::OnLButtonUp(unsigned flags, CPoint point) {
    m_DragCursor = m_DragMarker = m_DragRange = false;
    CView::OnLButtonUp(flags, point);
}

// --- Move ----------------------------------------------------------------------------------------

void CMcuView::OnMouseMove(unsigned flags, CPoint point) {
    Pan(flags, point);
    if (m_Outlook == OUTLOOK_PURE && m_ToolTipShown != 0 && !IsToolTipFor(point)) HideToolTip();
    if (m_DragRange) {
        DragHandle(point.x);
    } else if (m_DragCursor || m_DragMarker) {
        DragLine(DragTime(point.x));
    }
    CView::OnMouseMove(flags, point);
}

// The first strip with something under the pointer decides.
bool CMcuView::IsToolTipFor(CPoint point) {
    const Band jobs = JobBand(m_CanvasBottom);
    const Band custom = CustomBand(m_CanvasBottom);
    const Band marks = MarkBand(m_CanvasBottom);
    McuJob job;
    int index = 0;
    std::uint64_t end = 0;
    if (HitTest(point, jobs.m_Height, m_CanvasLeft, jobs.m_Bottom, job, index))
        return job == m_ToolTipJob;
    if (m_ContextSwitch) {
        if (HasCallAt(point, custom.m_Height, m_CanvasLeft, custom.m_Bottom)) return true;
    } else if (HitTest_CustomJob(point, custom.m_Height, m_CanvasLeft, custom.m_Bottom, job, end)) {
        return job == m_ToolTipJob;
    }
    return HitTest_SourceMark(point, marks.m_Height, m_CanvasLeft, marks.m_Bottom, job) &&
           job == m_ToolTipJob;
}

void CMcuView::DragHandle(int x) {
    *m_DragRangeX = std::clamp(x, m_CanvasLeft, std::max(m_CanvasLeft, CanvasRight()));
    ShowRange();
    InvalidateView();
}

void CMcuView::ShowRange() const {
    const std::uint64_t from = Scale().TimeAt(std::min(m_RangeX1, m_RangeX2));
    const std::uint64_t to = Scale().TimeAt(std::max(m_RangeX1, m_RangeX2));
    const auto inUnit = [this](std::uint64_t qbits) {
        return InUnit(qbits, m_TimeUnit, Jobs().m_IsTQCNT);
    };
    vesk::CurrentUserInterface().ShowStatus("Range: " + inUnit(from) + " to " + inUnit(to) +
                                            ", difference " + inUnit(to - from));
}

void CMcuView::DragLine(std::uint64_t time) {
    if (m_DragCursor) {
        m_CursorTime = time;
    } else if (m_DragMarkerIndex >= 0 && global_vesk_doc_ptr) {
        global_vesk_doc_ptr->m_Markers.SetMarkerTime(m_DragMarkerIndex, time);
    }
    InvalidateView();
}
