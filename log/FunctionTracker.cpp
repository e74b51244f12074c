#include "log/FunctionTracker.h"

#include "log/McuJobList.h"
#include "log/Reserve.h"

namespace vesk {

namespace {

bool StartsBefore(const McuJob& a, const McuJob& b) {
    return a.m_StartTime < b.m_StartTime;
}

}  // namespace

FunctionName* FunctionTracker::Intern(const std::string& text) {
    auto& name = m_Functions[text];
    if (!name) name = std::make_unique<FunctionName>(text);
    return name.get();
}

void FunctionTracker::Enter(FunctionName& function, const RawRecord& record, std::uint64_t now) {
    ++function.m_Entries;
    if (m_List) function.m_OpenCalls.Begin(now);
    if (!function.m_WasEntered) m_Entered.push_back(&function);
    function.m_WasEntered = true;
    m_Stack.push_back(&function);
    function.m_Open = IsKnown(function) ? function.m_Open + 1 : 1;
    function.m_Epoch = m_Epoch;
    NextSegment(&function, kBeganAtEntry, nullptr, record, now);
}

bool FunctionTracker::Leave(FunctionName& function, const RawRecord& record, std::uint64_t now,
                            const JobName* running) {
    if (m_List) CloseCall(function, now, running);
    FunctionName* caller = nullptr;
    if (!m_Stack.empty()) {
        if (m_Stack.back() != &function) return false;
        m_Stack.pop_back();
        --function.m_Open;
        if (!m_Stack.empty()) caller = m_Stack.back();
    }
    NextSegment(caller, 0, &function, record, now);
    return true;
}

void FunctionTracker::Lose() {
    m_Stack.clear();
    ++m_Epoch;
}

void FunctionTracker::EndOpenCalls(std::uint64_t now) {
    for (FunctionName* function : m_Entered) {
        for (const std::uint64_t start : function->m_OpenCalls.TakeAll())
            StoreCall(*function, start, now, kBeganAtEntry);
        function->m_WasEntered = false;
    }
    m_Entered.clear();
}

void FunctionTracker::Finish(std::uint64_t now) {
    if (HasSegment()) StoreSegment(0, m_SegmentFlags, now);
    if (!m_List) return;
    for (auto& [text, function] : m_Functions) {
        for (const std::uint64_t start : function->m_OpenCalls.TakeAll())
            StoreCall(*function, start, 0, kBeganAtEntry);
        if (function->m_WasEntered) m_List->m_TmpCustomJobsCS[text];
        if (function->m_Calls) SortNearlySorted(*function->m_Calls, StartsBefore);
    }
}

void FunctionTracker::Count(LogCensus& census) const {
    census.m_Segments = m_Segments;
    for (const auto& [text, function] : m_Functions) census.m_Calls[text] = function->m_Entries;
}

void FunctionTracker::CloseCall(FunctionName& function, std::uint64_t now, const JobName* running) {
    std::uint64_t start = 0;
    if (function.m_OpenCalls.Take(*m_List, m_JobNames, running, start))
        StoreCall(function, start, now, kBeganAtEntry | kClosedLastCall);
}

void FunctionTracker::NextSegment(FunctionName* next, std::uint8_t flags,
                                  const FunctionName* leaving, const RawRecord& record,
                                  std::uint64_t now) {
    if (m_SegmentStart != 0 && HasSegment()) {
        std::uint8_t ended = m_SegmentFlags;
        const bool ends = leaving && leaving == m_Segment;
        if (ends) ended |= kEndedAtExit;
        if (ends && IsKnown(*leaving) && leaving->m_Open <= 0) ended |= kClosedLastCall;
        StoreSegment(ends ? now : 0, ended, now);
    }
    m_Segment = next;
    m_SegmentStart = now;
    m_SegmentFrame = record.m_Frame;
    m_SegmentCount = record.m_Count;
    m_SegmentFlags = flags;
}

void FunctionTracker::StoreSegment(std::uint64_t end, std::uint8_t flags, std::uint64_t now) {
    ++m_Segments;
    if (!m_List) return;
    McuJob& segment = m_Segment->m_Name.AppendTo(m_List->m_CustomJobs, m_SegmentStart, end);
    segment.m_TimeStamp = m_SegmentFrame;
    segment.m_TimeCount = m_SegmentCount;
    segment.m_Flags = flags;
    if (!m_Segment->m_Total) m_Segment->m_Total = &m_List->m_CustomNames[m_Segment->m_Name.Text()];
    *m_Segment->m_Total += now - m_SegmentStart;
}

void FunctionTracker::StoreCall(FunctionName& function, std::uint64_t start, std::uint64_t end,
                                std::uint8_t flags) {
    if (!function.m_Calls) {
        function.m_Calls = &m_List->m_CustomJobsCS[function.m_Name.Text()];
        if (m_Census) Reserve(*function.m_Calls, m_Census->m_Calls, function.m_Name.Text());
    }
    function.m_Name.AppendTo(*function.m_Calls, start, end).m_Flags = flags;
}

}  // namespace vesk
