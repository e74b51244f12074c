#include <algorithm>

#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "platform/CCmdUI.h"
#include "platform/UserInterface.h"
#include "timeline/CMcuView.h"
#include "timeline/MCUMarkerPairDialog.h"

namespace {

// No markers without a document.
const McuMarkerMap& Markers() {
    static const McuMarkerMap none;
    return global_vesk_doc_ptr ? global_vesk_doc_ptr->m_Markers : none;
}

struct Marker {
    std::int32_t m_Key = -1;  // -1: none
    std::uint64_t m_Time = 0;
};

// The nearest marker from a time on and the farthest before it, without the one selected. What
// lies a whole log's length ahead counts as none.
Marker NextMarker(std::uint64_t time, std::int32_t selected, std::uint64_t length) {
    Marker next, first;
    std::uint64_t nearest = length, farthest = 0;
    for (const auto& [key, at] : Markers()) {
        if (key == selected) continue;
        if (at >= time && at - time < nearest) nearest = at - time, next = {key, at};
        if (at < time && time - at > farthest) farthest = time - at, first = {key, at};
    }
    return next.m_Key >= 0 ? next : first;
}

// The mirror image: the nearest before it, else the farthest behind it.
Marker PreviousMarker(std::uint64_t time, std::int32_t selected, std::uint64_t length) {
    Marker previous, last;
    std::uint64_t nearest = length, farthest = 0;
    for (const auto& [key, at] : Markers()) {
        if (key == selected) continue;
        if (at < time && time - at < nearest) nearest = time - at, previous = {key, at};
        if (at >= time && at - time > farthest) farthest = at - time, last = {key, at};
    }
    return previous.m_Key >= 0 ? previous : last;
}

}  // namespace

// --- Markers -------------------------------------------------------------------------------------

void CMcuView::OnEditSetMarker() {
    if (!global_vesk_doc_ptr) return;
    if (!global_vesk_doc_ptr->m_Markers.AddMarker(m_CursorTime))
        vesk::CurrentUserInterface().ShowStatus("All markers are in use.");
    InvalidateView();
}
void CMcuView::OnUpdateEditSetMarker(CCmdUI* ui) {
    ui->Enable(global_vesk_doc_ptr != nullptr);
}

void CMcuView::RemoveSelectedMarker() {
    if (m_DragMarkerIndex < 0) return;
    if (global_vesk_doc_ptr) global_vesk_doc_ptr->m_Markers.RemoveMarker(m_DragMarkerIndex);
    m_DragMarkerIndex = -1;
    InvalidateView();
}

void CMcuView::GoToMarker(bool up) {
    const std::uint64_t time = Markers().GetMarkerTime(m_DragMarkerIndex);
    const auto find = up ? PreviousMarker : NextMarker;
    const Marker marker = find(time, m_DragMarkerIndex, Jobs().m_EndTime);
    if (marker.m_Key < 0)
        return vesk::CurrentUserInterface().ShowStatus("There is no other marker.");
    m_DragMarkerIndex = marker.m_Key;
    GoTo(marker.m_Time);
}

// --- Spans between markers -----------------------------------------------------------------------

bool CMcuView::OnEditExpandOpenDialog(std::uint64_t& start, std::uint64_t& end) {
    McuJobList* const jobs = vesk_dll_shared_data.m_pJobList;
    if (!jobs) return false;
    MCUMarkerPairDialog dialog(&Markers(), jobs->m_StatIncludeIdle, m_DurationFrom, m_DurationTo,
                               this);
    if (dialog.DoModal() != IDOK) return false;
    m_DurationFrom = dialog.m_StartKey;
    m_DurationTo = dialog.m_EndKey;
    jobs->m_StatIncludeIdle = dialog.m_IncludeIdle;
    start = m_DurationFrom >= 0 ? Markers().GetMarkerTime(m_DurationFrom) : jobs->m_BeginTime;
    end = m_DurationTo >= 0 ? Markers().GetMarkerTime(m_DurationTo) : jobs->m_EndTime;
    return true;
}

// The limits of the zoom commands don't hold here. A canvas without width has no ratio.
void CMcuView::OnEditExpand() {
    std::uint64_t start = 0, end = 0;
    if (!OnEditExpandOpenDialog(start, end)) return;
    const vesk::ShownSpan before = Shown();
    vesk::ShownSpan span = before;
    if (start != end && m_CanvasWidth > 0) {
        const auto length = static_cast<double>(std::max(start, end) - std::min(start, end));
        span = {std::min(start, end), static_cast<float>(m_CanvasWidth / (length * m_BaseScale))};
    }
    Show(span);
    Note(before, vesk::SpanChange::kJump);
}
