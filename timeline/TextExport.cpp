#include "timeline/TextExport.h"

#include <type_traits>

#include "timeline/PendingCalls.h"
#include "timeline/RecordOrder.h"

namespace vesk {

namespace {

// Asks now and then whether the work goes on.
class Pace {
public:
    Pace(std::size_t records, const OutputBuffer& out, const ProgressCallback& progress)
        : m_Total(static_cast<std::int64_t>(records)), m_Out(out), m_Progress(progress) {}

    // After each record; false ends the work.
    bool Step() { return (++m_Done & (kRecordsPerLook - 1)) != 0 || GoesOn(); }

    bool GoesOn() const {
        return m_Out.Error() == 0 && (!m_Progress || m_Progress(m_Done, m_Total));
    }

private:
    static constexpr std::int64_t kRecordsPerLook = 1 << 14;

    std::int64_t m_Done = 0;
    std::int64_t m_Total;
    const OutputBuffer& m_Out;
    const ProgressCallback& m_Progress;
};

// Texts, characters and numbers in their order. Times count as signed.
template <class... Parts>
void Put(OutputBuffer& out, const Parts&... parts) {
    const auto put = [&out](const auto& part) {
        using Part = std::decay_t<decltype(part)>;
        if constexpr (std::is_same_v<Part, std::uint64_t>)
            out.PutNumber(static_cast<std::int64_t>(part));
        else if constexpr (std::is_integral_v<Part> && !std::is_same_v<Part, char>)
            out.PutNumber(part);
        else
            out.Put(part);
    };
    (put(parts), ...);
}

// Text ends at its first zero byte.
std::string_view TextOf(const std::string& name) {
    return name.c_str();
}

bool PutJobs(const McuJobList& list, OutputBuffer& out, Pace& pace) {
    const std::string_view counter = list.m_IsTQCNT ? ",  TQCNT: " : ",  USCNT: ";
    for (std::size_t i = 0; i < list.size(); ++i) {
        const McuJob& job = list[i];
        Put(out, "JobName: ", TextOf(job.m_Name), "\n    FrameNo: ", job.m_TimeStamp, counter,
            job.m_TimeCount, ",  Start: ", job.m_StartTime,
            ",  End: ", EffectiveEnd(list, static_cast<int>(i), list.m_EndTime), '\n');
        if (!pace.Step()) return false;
    }
    out.Put('\n');
    return true;
}

void PutCall(OutputBuffer& out, const PendingCalls::Call& call, std::uint64_t end) {
    Put(out, "FunctionName: ", call.m_Name, "\n    Start: ", call.m_Start, ",  End: ", end,
        ", duration: ", end - call.m_Start, '\n');
}

bool PutCallsOfSegments(const McuJobList& list, OutputBuffer& out, Pace& pace) {
    const std::vector<McuJob>& segments = list.m_CustomJobs;
    PendingCalls calls;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        const McuJob& segment = segments[i];
        const std::string_view name = TextOf(segment.m_Name);
        if (segment.m_Flags & kBeganAtEntry) calls.Enter(name, segment.m_StartTime);
        if (segment.m_Flags & kClosedLastCall)
            calls.Leave(name, EffectiveEnd(segments, static_cast<int>(i), list.m_EndTime));
        for (; !calls.IsEmpty() && calls.First().m_Closed; calls.DropFirst())
            PutCall(out, calls.First(), calls.First().m_End);
        if (!pace.Step()) return false;
    }
    for (; !calls.IsEmpty(); calls.DropFirst())
        PutCall(out, calls.First(), calls.First().m_Closed ? calls.First().m_End : list.m_EndTime);
    return true;
}

}  // namespace

bool WriteJobText(const McuJobList& list, OutputBuffer& out, const ProgressCallback& progress) {
    Pace pace(list.size() + list.m_CustomJobs.size(), out, progress);
    return pace.GoesOn() && PutJobs(list, out, pace) && PutCallsOfSegments(list, out, pace) &&
           out.Error() == 0;
}

bool WriteExtraInfoText(const McuJobList& list, OutputBuffer& out,
                        const ProgressCallback& progress) {
    const std::vector<ExtraInfoRecord>& samples = list.m_ExtraInfos;
    Pace pace(samples.size(), out, progress);
    if (!pace.GoesOn()) return false;
    out.Put("TaskName, StartTime, EndTime");
    for (const CString& name : list.m_ExtraNames) Put(out, ", ", TextOf(name.Str()));
    out.Put('\n');
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (!pace.Step()) return false;
        const ExtraInfoRecord& sample = samples[i];
        if (sample.m_Name.empty()) continue;
        const std::uint64_t end = i + 1 < samples.size() ? samples[i + 1].m_Time : list.m_EndTime;
        Put(out, TextOf(sample.m_Name), ", ", sample.m_Time, ", ", end);
        for (const int value : sample.m_Values) Put(out, ", ", static_cast<std::uint32_t>(value));
        out.Put('\n');
    }
    return out.Error() == 0;
}

// A call whose end lies before its start has none.
bool WriteCallText(const McuJobList& list, OutputBuffer& out, const ProgressCallback& progress) {
    std::size_t total = 0;
    for (const auto& [name, calls] : list.m_CustomJobsCS) total += calls.size();
    Pace pace(total, out, progress);
    if (!pace.GoesOn()) return false;
    out.Put("Func\tStart\tEnd\tDuration\n");
    for (const auto& [name, calls] : list.m_CustomJobsCS) {
        for (const McuJob& call : calls) {
            const bool ended = call.m_EndTime >= call.m_StartTime;
            const std::uint64_t duration = ended ? call.m_EndTime - call.m_StartTime : 0;
            Put(out, TextOf(call.m_Name), '\t', call.m_StartTime, '\t', call.m_EndTime, '\t',
                duration, '\n');
            if (!pace.Step()) return false;
        }
    }
    return out.Error() == 0;
}

}  // namespace vesk
