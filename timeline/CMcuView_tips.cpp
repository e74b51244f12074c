// Tool tips: which text opens where.
#include <algorithm>

#include "log/McuJobList.h"
#include "platform/CClientDC.h"
#include "platform/SystemMetrics.h"
#include "timeline/CMcuView.h"
#include "timeline/TipText.h"

namespace {

constexpr int kMaxTipWidth = 32767;  // the text alone breaks lines
constexpr int kTipOffset = 5;        // from the point, to the right
constexpr int kRightGap = 25;        // that stays free at the screen's edges
constexpr int kBottomGap = 40;
constexpr int kTipMargin = 4;
constexpr int kJobLines = 4;  // that room is made for
constexpr int kCustomLines = 7;

// Moves a tip off the screen's edges, which are tested where the click was: by its width to the
// left, or up.
CPoint PlaceOf(CPoint client, CPoint screen, int width, std::int64_t height) {
    CPoint place = client;
    if (std::int64_t{screen.x} + width > GetSystemMetrics(SM_CXSCREEN) - kRightGap)
        place.x = vesk::ToCoordinate(std::int64_t{client.x} - width);
    const std::int64_t lowest = std::int64_t{GetSystemMetrics(SM_CYSCREEN)} - kBottomGap;
    const std::int64_t room = height + kTipMargin;
    if (screen.y + room > lowest)
        place.y = vesk::ToCoordinate(
            std::max<std::int64_t>(0, std::min<std::int64_t>(client.y, lowest - room)));
    return place;
}

const ExtraInfoRecord* SampleAt(std::uint64_t time) {
    const auto& samples = CMcuView::Jobs().m_ExtraInfos;
    const auto at =
        std::lower_bound(samples.begin(), samples.end(), time,
                         [](const ExtraInfoRecord& a, std::uint64_t b) { return a.m_Time < b; });
    return at != samples.end() && at->m_Time == time ? &*at : nullptr;
}

const PDIInfo* LossAt(int job) {
    const McuJobList& jobs = CMcuView::Jobs();
    const int loss = jobs.GetPDIInfoIndex(job);
    return loss < 0 ? nullptr : &jobs.m_PDIInfos[static_cast<std::size_t>(loss)];
}

}  // namespace

bool CMcuView::InitToolTip() {
    if (m_ToolTip) return true;
    auto tip = std::make_unique<CToolTipCtrl>();
    if (!tip->Create(this, TTS_ALWAYSTIP)) return false;
    m_ToolInfo = TOOLINFO();
    m_ToolInfo.cbSize = sizeof(TOOLINFO);
    m_ToolInfo.hwnd = GetParent();
    m_ToolInfo.uId = this;
    tip->AddTool(m_ToolInfo);
    tip->SetMaxTipWidth(kMaxTipWidth);
    m_ToolTip = std::move(tip);
    return true;
}

void CMcuView::HideToolTip() {
    if (m_ToolTipShown == 0) return;
    if (m_ToolTip) m_ToolTip->TrackActivate(false);
    m_ToolTipShown = 0;
    m_ToolTipJob = McuJob();
}

void CMcuView::DisplayToolTip(CPoint point, CString& text) {
    CPoint screen = point;
    ClientToScreen(&screen);
    if (m_ToolTip) ShowToolTip(point, screen, text);
}

void CMcuView::ShowToolTip(CPoint point, CPoint anchor, const CString& text) {
    ClientToScreen(&point);
    m_ToolTip->UpdateTipText(text, this);
    m_ToolTip->SetAnchor(anchor);
    m_ToolTip->TrackPosition({point.x + kTipOffset, point.y});
    // Off and on, so that a tip that stands moves.
    m_ToolTip->TrackActivate(false);
    m_ToolTip->TrackActivate(true);
    m_ToolTipShown = 1;
}

void CMcuView::PlaceToolTip(CPoint point, const CString& text, int lines) {
    CPoint screen = point;
    ClientToScreen(&screen);
    const CClientDC dc(m_ToolTip.get());
    TEXTMETRIC metric;
    dc.GetTextMetrics(&metric);
    const int width = dc.GetTextExtent(text.Str()).cx;
    const CPoint place = PlaceOf(point, screen, width, std::int64_t{metric.tmHeight} * lines);
    ShowToolTip(place, screen, text);
}

void CMcuView::DisplayToolTip(CPoint point, int h, int left, int y0) {
    McuJob job;
    int index = 0;
    if (!m_ToolTip || !HitTest(point, h, left, y0, job, index)) return;
    CString text =
        vesk::JobTipText(job, Jobs().m_IsTQCNT, LossAt(index), SampleAt(job.m_StartTime));
    m_ToolTipJob = std::move(job);
    PlaceToolTip(point, text, kJobLines);
}

// The tip of calls has no job: it stays for as long as there are calls under the pointer.
void CMcuView::DisplayCustomJobToolTip(CPoint point, int h, int left, int y0) {
    if (!m_ToolTip) return;
    CString text;
    int lines = kCustomLines;
    if (m_ContextSwitch) {
        if (!HitTest_CustomJobCS(point, h, left, y0, text, lines)) return;
        m_ToolTipText = text;
    } else {
        McuJob job;
        std::uint64_t end = 0;
        if (!HitTest_CustomJob(point, h, left, y0, job, end)) return;
        std::string tip;
        vesk::AppendCustomTip(tip, job, end, Jobs().m_IsTQCNT);
        text = std::move(tip);
        m_ToolTipJob = std::move(job);
    }
    PlaceToolTip(point, text, lines);
}

void CMcuView::DisplaySourceMarkToolTip(CPoint point, int h, int left, int y0) {
    McuJob mark;
    if (!m_ToolTip || !HitTest_SourceMark(point, h, left, y0, mark)) return;
    const CString text = vesk::SourceMarkTipText(mark, Jobs().m_IsTQCNT);
    m_ToolTipJob = std::move(mark);
    PlaceToolTip(point, text, kJobLines);
}
