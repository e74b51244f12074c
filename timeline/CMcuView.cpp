#include "timeline/CMcuView.h"

#include <algorithm>

#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "platform/SystemMetrics.h"
#include "timeline/ScrollMapping.h"
#include "timeline/TimelineIndex.h"

namespace {

constexpr int kHScrollBarId = 40044;
constexpr int kVScrollBarId = 40045;
constexpr int kCanvasLeft = 80;
constexpr int kCanvasTop = 30;
constexpr int kRightMargin = 30;
constexpr int kBandBelow = 100;
constexpr int kLeastBottom = 100;
constexpr std::uint64_t kFirstCursorTime = 100;

std::int32_t IdlePercent(const McuJobList& jobs) {
    if (jobs.m_EndTime == 0) return 0;
    const double share =
        static_cast<double>(jobs.m_IdleTotal) / static_cast<double>(jobs.m_EndTime);
    return static_cast<std::int32_t>(std::min(share * 100, 2147483647.0));
}

}  // namespace

CMcuView::CMcuView() = default;
CMcuView::~CMcuView() = default;

const McuJobList& CMcuView::Jobs() {
    static const McuJobList empty;
    const McuJobList* const jobs = vesk_dll_shared_data.m_pJobList;
    return jobs ? *jobs : empty;
}

vesk::TimelineIndex& CMcuView::Index() {
    // The list may have been replaced without a word to the view.
    if (!m_Index || &m_Index->List() != &Jobs())
        m_Index = std::make_unique<vesk::TimelineIndex>(Jobs());
    return *m_Index;
}

int CMcuView::OnCreate() {
    if (CView::OnCreate() == -1) return -1;
    constexpr unsigned kStyle = WS_CHILD | WS_VISIBLE;
    m_HScrollBar.Create(kStyle | SBS_HORZ | SBS_TOPALIGN, {}, this, kHScrollBarId);
    m_VScrollBar.Create(kStyle | SBS_VERT | SBS_RIGHTALIGN, {}, this, kVScrollBarId);
    CRect client;
    GetClientRect(&client);
    PlaceBars(client.Width(), client.Height());
    InitCanvas();
    Init();
    InitToolTip();
    return 0;
}

void CMcuView::InitCanvas() {
    CRect client;
    GetClientRect(&client);
    m_CanvasLeft = kCanvasLeft;
    m_CanvasBottom =
        std::max(client.Height() - GetSystemMetrics(SM_CYHSCROLL) - kBandBelow, kLeastBottom);
    m_CanvasWidth = client.right - kCanvasLeft - kRightMargin;
    m_CanvasHeight = m_CanvasBottom - kCanvasTop;
    m_VisibleQbits = vesk::VisibleQbits(m_CanvasWidth, m_PixelsPerQbit);
    m_RangeX1 = m_CanvasWidth / 2 + kCanvasLeft;
    m_RangeX2 = static_cast<std::int32_t>(std::int64_t{m_CanvasWidth} * 3 / 4) + kCanvasLeft;
}

void CMcuView::Init() {
    const McuJobList& jobs = Jobs();
    VESKUIDoc* const document = global_vesk_doc_ptr;
    m_Index.reset();
    m_History.Clear();
    m_IdleRatio = IdlePercent(jobs);
    m_CursorTime = std::min(jobs.m_EndTime, kFirstCursorTime);
    m_DragMarkerIndex = m_DurationFrom = m_DurationTo = -1;
    if (document) document->m_Markers.clear();
    m_VScrollMax = m_VScrollMin;
    m_HScrollPos = m_HScrollMax = m_HScrollMin = 0;
    m_TimeOffset = 0;
    InitRelativeList();
    SetHScrollRange();
    SetVScrollRange();
    ShowLowestLanes();
    m_HScrollBar.SetScrollPos(m_HScrollPos);
    Cal_VisibleIndex();
    const auto extras = static_cast<std::size_t>(std::max(jobs.m_ExtraInfoNum, 0));
    m_ExtraShown.assign(extras, true);
    m_ExtraCursorValue.assign(extras, 0);
    if (!document) return;
    document->m_TSTInfos.clear();
    for (const auto& [name, count] : jobs.m_JobNames) document->m_TSTInfos.push_back(name);
}

void CMcuView::Reload() {
    Init();
    Invalidate();
}
