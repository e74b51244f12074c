#include "tests/timeline/PlainText.h"

#include <strings.h>

#include <cinttypes>
#include <list>

#include "platform/Text.h"

namespace vesk {

namespace {

struct Call {
    std::string m_Name;
    std::uint64_t m_Start, m_End;
    bool m_Closed;
};

std::int64_t Signed(std::uint64_t time) {
    return static_cast<std::int64_t>(time);
}

std::uint64_t End(const std::vector<McuJob>& records, std::size_t i, std::uint64_t logEnd) {
    if (records[i].m_EndTime > records[i].m_StartTime) return records[i].m_EndTime;
    return i + 1 == records.size() ? logEnd : records[i + 1].m_StartTime;
}

std::string Print(const Call& call, std::uint64_t end) {
    return FormatText("FunctionName: %s\n", call.m_Name.c_str()) +
           FormatText("    Start: %" PRId64 ",  End: %" PRId64 ", ", Signed(call.m_Start),
                      Signed(end)) +
           FormatText("duration: %" PRId64 "\n", Signed(end - call.m_Start));
}

Call* FindOpen(std::list<Call>& calls, const std::string& name) {
    for (Call& call : calls)
        if (!call.m_Closed && strcasecmp(call.m_Name.c_str(), name.c_str()) == 0) return &call;
    return nullptr;
}

std::string PrintSegments(const McuJobList& list) {
    const std::vector<McuJob>& segments = list.m_CustomJobs;
    std::list<Call> calls;
    std::string text;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        const McuJob& segment = segments[i];
        if ((segment.m_Flags & 1) && !FindOpen(calls, segment.m_Name))
            calls.push_back({segment.m_Name, segment.m_StartTime, 0, false});
        if (!(segment.m_Flags & 4)) continue;
        if (Call* const call = FindOpen(calls, segment.m_Name)) {
            call->m_End = End(segments, i, list.m_EndTime);
            call->m_Closed = true;
        }
        for (; !calls.empty() && calls.front().m_Closed; calls.pop_front())
            text += Print(calls.front(), calls.front().m_End);
    }
    for (const Call& call : calls) text += Print(call, call.m_Closed ? call.m_End : list.m_EndTime);
    return text;
}

}  // namespace

std::string PlainJobText(const McuJobList& list) {
    std::string text;
    McuJob job;
    for (int i = 0; list.GetJob(i, job); ++i) {
        text += FormatText("JobName: %s\n", job.m_Name.c_str());
        text +=
            list.m_IsTQCNT
                ? FormatText("    FrameNo: %d,  TQCNT: %u,  ", job.m_TimeStamp, job.m_TimeCount)
                : FormatText("    FrameNo: %d,  USCNT: %u,  ", job.m_TimeStamp, job.m_TimeCount);
        const std::uint64_t end = End(list, static_cast<std::size_t>(i), list.m_EndTime);
        text += FormatText("Start: %" PRId64 ",  End: %" PRId64 "\n", Signed(job.m_StartTime),
                           Signed(end));
    }
    return text + "\n" + PrintSegments(list);
}

std::string PlainExtraInfoText(const McuJobList& list) {
    std::string text = "TaskName, StartTime, EndTime";
    for (const CString& name : list.m_ExtraNames) text += FormatText(", %s", name.Str().c_str());
    text += "\n";
    for (std::size_t k = 0; k < list.m_ExtraInfos.size(); ++k) {
        const ExtraInfoRecord& sample = list.m_ExtraInfos[k];
        if (sample.m_Name.empty()) continue;
        const bool isLast = k + 1 == list.m_ExtraInfos.size();
        const std::uint64_t end = isLast ? list.m_EndTime : list.m_ExtraInfos[k + 1].m_Time;
        text += FormatText("%s, %" PRId64 ", %" PRId64, sample.m_Name.c_str(),
                           Signed(sample.m_Time), Signed(end));
        for (const int value : sample.m_Values)
            text += FormatText(", %u", static_cast<unsigned>(value));
        text += "\n";
    }
    return text;
}

std::string PlainCallText(const McuJobList& list) {
    std::string text = "Func\tStart\tEnd\tDuration\n";
    for (const auto& [lane, calls] : list.m_CustomJobsCS) {
        for (const McuJob& call : calls) {
            text += FormatText("%s\t", call.m_Name.c_str());
            if (call.m_EndTime < call.m_StartTime)
                text += FormatText("%" PRId64 "\t%" PRId64 "\t%u\n", Signed(call.m_StartTime),
                                   Signed(call.m_EndTime), 0U);
            else
                text +=
                    FormatText("%" PRId64 "\t%" PRId64 "\t%" PRId64 "\n", Signed(call.m_StartTime),
                               Signed(call.m_EndTime), Signed(call.m_EndTime - call.m_StartTime));
        }
    }
    return text;
}

}  // namespace vesk
