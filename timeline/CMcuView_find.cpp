#include <algorithm>

#include "log/McuJobList.h"
#include "platform/UserInterface.h"
#include "timeline/CMcuView.h"
#include "timeline/CustomIndex.h"
#include "timeline/FrameIndex.h"
#include "timeline/JobStripIndex.h"
#include "timeline/RecordSearch.h"
#include "timeline/TimelineIndex.h"

// Going to a time, a frame number or a name. A search starts at the cursor, not at what is shown.

namespace {

// What the find dialog calls its targets, and the view's last search.
constexpr std::int32_t kTask = 0;
constexpr std::int32_t kFunction = 1;
constexpr std::int32_t kSourceMark = 2;

void Say(const CString& text) {
    vesk::CurrentUserInterface().ShowStatus(text);
}

void SayNotFound(const CString& name) {
    Say(name.IsEmpty() ? "Nothing more was found." : "\"" + name + "\" was not found.");
}

// The next call of one function, or -1.
int NextCall(const vesk::RecordSearch& calls, int start, std::uint64_t time, bool up) {
    return up ? calls.LastBefore(start, time) : calls.FirstAfter(start, time);
}

}  // namespace

// --- Times and frame numbers ---------------------------------------------------------------------

void CMcuView::GoTo(std::uint64_t time) {
    const McuJobList& jobs = Jobs();
    m_CursorTime = std::max(std::min(time, jobs.m_EndTime), jobs.m_BeginTime);
    if (!IsInView(m_CursorTime)) {
        const vesk::ShownSpan before = Shown();
        const std::uint64_t half = m_VisibleQbits / 2;
        const bool fits = m_CursorTime > jobs.m_BeginTime + half;
        m_TimeOffset = fits ? m_CursorTime - half : jobs.m_BeginTime;
        Cal_HScrollPos();
        Note(before, vesk::SpanChange::kJump);
    }
    InvalidateView();
}

void CMcuView::GoTo_FrameNo(std::int32_t frame) {
    const McuJobList& jobs = Jobs();
    if (m_JobFirst < 0 || m_JobFirst >= jobs.GetSize()) return;
    const auto at = [&](int i) -> const McuJob& { return jobs[static_cast<std::size_t>(i)]; };
    int found = 0;
    if (at(m_JobFirst).m_TimeStamp >= frame) {
        found = Index().Frames().LastBelow(m_JobFirst, frame) + 1;
    } else {
        found = Index().Frames().FirstFrom(m_JobFirst + 1, frame);
        if (found == jobs.GetSize() || at(found).m_TimeStamp != frame) --found;
    }
    GoTo(at(found).m_StartTime);
    CString text;
    text.Format("Frame number %d was not found. The cursor stands where it belongs.", frame);
    if (at(found).m_TimeStamp != frame) Say(text);
}

void CMcuView::OnEditGoto() {
    CMcuGotoDlg dialog(this);
    dialog.m_Value = m_GotoDlg.m_Value;
    dialog.m_Kind = m_GotoDlg.m_Kind;
    if (dialog.DoModal() != IDOK) return;
    if (dialog.m_Kind == 0) GoTo(dialog.m_Value);
    if (dialog.m_Kind == 1) GoTo_FrameNo(static_cast<std::int32_t>(dialog.m_Value));
    m_GotoDlg.m_Value = dialog.m_Value;
    m_GotoDlg.m_Kind = dialog.m_Kind;
}

// --- Names ---------------------------------------------------------------------------------------

void CMcuView::OnEditFind() {
    CMcuFindDlg dialog(this);
    dialog.m_Target = m_FindDlg.m_Target;
    dialog.m_Direction = m_FindDlg.m_Direction;
    dialog.m_Text = m_FindDlg.m_Text;
    if (dialog.DoModal() != IDOK) return;
    m_FindText = dialog.m_Text;
    m_FindKind = dialog.m_Target;
    Find(m_FindText, m_FindKind, dialog.m_Direction == 0);
    m_FindDlg.m_Target = dialog.m_Target;
    m_FindDlg.m_Direction = dialog.m_Direction;
    m_FindDlg.m_Text = dialog.m_Text;
}

void CMcuView::OnVkFind() {
    Find(m_FindText, m_FindKind, false);
}

void CMcuView::OnVkFindUp() {
    Find(m_FindText, m_FindKind, true);
}

void CMcuView::Find(const CString& name, std::int32_t kind, bool up) {
    if (kind == kTask) GoTo_Task(name, up);
    if (kind == kFunction && m_ContextSwitch) GoTo_FunctionCS(name, up);
    if (kind == kFunction && !m_ContextSwitch) GoTo_Function(name, up);
    if (kind == kSourceMark) GoTo_SourceMark(name, up);
}

void CMcuView::GoTo_Task(CString name, bool up) {
    GoToNext(Index().Jobs(), name, up, false);
}

void CMcuView::GoTo_Function(CString name, bool up) {
    GoToNext(Index().Custom().Segments().Strip(), name, up, false);
}

void CMcuView::GoTo_SourceMark(CString name, bool up) {
    GoToNext(Index().Marks(), name, up, true);
}

// Upwards, what follows after the wrap may end with the record that the search started from.
void CMcuView::GoToNext(const vesk::JobStripIndex& strip, const CString& name, bool up,
                        bool wrapsToStart) {
    int start = 0;
    if (!Jobs().SearchOtherJob(m_CursorTime, start, &strip.Records())) return SayNotFound(name);
    const vesk::RecordSearch search(strip, name.Str());
    int found =
        up ? search.LastBefore(start, m_CursorTime) : search.FirstAfter(start, m_CursorTime);
    const bool isWrapped = found < 0;
    if (isWrapped && up) found = search.LastOf(wrapsToStart ? start : start + 1, search.Count());
    if (isWrapped && !up) found = search.FirstOf(0, start);
    if (found < 0) return SayNotFound(name);
    GoToFind(search.StartOf(found), up, isWrapped);
}

void CMcuView::GoTo_FunctionCS(CString name, bool up) {
    if (name.IsEmpty()) {
        GoToNextCallOfAny(up);
    } else {
        GoToNextCall(name.Str(), up);
    }
}

void CMcuView::GoToNextCall(const std::string& function, bool up) {
    const vesk::CallIndex* const lane = Index().Custom().Calls(function);
    int start = 0;
    if (!lane || !Jobs().SearchOtherJob(m_CursorTime, start, &lane->Calls()))
        return SayNotFound(function);
    const vesk::RecordSearch calls(*lane);
    int found = NextCall(calls, start, m_CursorTime, up);
    const bool isWrapped = found < 0;
    if (isWrapped) found = up ? calls.Count() - 1 : 0;
    GoToFind(calls.StartOf(found), up, isWrapped);
}

// The nearest call of all functions. A single lane that the cursor is behind ends the search.
void CMcuView::GoToNextCallOfAny(bool up) {
    std::uint64_t best = m_CursorTime;
    bool isFound = false;
    for (const auto& [function, records] : Jobs().m_CustomJobsCS) {
        int start = 0;
        if (!Jobs().SearchOtherJob(m_CursorTime, start, &records)) return SayNotFound("");
        const vesk::RecordSearch calls(*Index().Custom().Calls(function));
        const int found = NextCall(calls, start, m_CursorTime, up);
        if (found < 0) continue;
        const std::uint64_t time = calls.StartOf(found);
        if (!isFound || (up ? time > best : time < best)) best = time;
        isFound = true;
    }
    GoToFind(best, up, false);
    if (!isFound) SayNotFound("");
}

void CMcuView::GoToFind(std::uint64_t time, bool up, bool isWrapped) {
    GoTo(time);
    const char* const wrapped = up ? "Search continued at the end of the log."
                                   : "Search continued at the begin of the log.";
    Say(isWrapped ? wrapped : "");
}
