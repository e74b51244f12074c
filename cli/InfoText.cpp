#include "cli/InfoText.h"

#include <algorithm>

#include "cli/LogSummary.h"
#include "cli/TextEncoding.h"
#include "log/TimeText.h"
#include "platform/Text.h"

namespace vesk {

namespace {

using Count = unsigned long long;

void Line(OutputBuffer& out, const char* what, const std::string& text) {
    out.Put(FormatText("%-10s  ", what));
    out.Put(PrintableText(text));
    out.Put('\n');
}

std::string Plural(std::uint64_t count, const char* what) {
    return FormatText("%llu %s%s", static_cast<Count>(count), what, count == 1 ? "" : "s");
}

std::string TimeText(std::uint64_t qbits) {
    return FormatText("%llu QBit (%s ms)", static_cast<Count>(qbits),
                      MillisecondsText(qbits).c_str());
}

std::string MemoryText(std::uint64_t bytes) {
    const double kilobytes = static_cast<double>(bytes) / 1024;
    return kilobytes < 1024 ? FormatText("%.1f KB", kilobytes)
                            : FormatText("%.1f MB", kilobytes / 1024);
}

std::string FormText(const ReadReport& report) {
    if (report.m_Form == LogForm::kHeaderless) return "headerless";
    return FormatText(
        "%s, version %d",
        report.m_Form == LogForm::kPackets ? "packets behind a header" : "with header",
        report.m_Version);
}

std::string ClockText(const McuJobList& list) {
    if (list.m_IsTQCNT) return "TQCNT, 16-bit counts with a frame length";
    const HeaderInfo& layout = list.Report().m_Info;
    return FormatText("USCNT, 32-bit counts that wrap at %u, %g counts per QBit", layout.m_Wrap,
                      static_cast<double>(layout.m_Ratio));
}

void WriteFile(OutputBuffer& out, const LogInfo& info) {
    const McuJobList& list = info.m_Log.List();
    const ReadReport& report = list.Report();
    Line(out, "log", info.m_Path);
    Line(out, "target", info.m_Log.m_TargetPath.empty() ? "none" : info.m_Log.m_TargetPath);
    Line(out, "form", FormText(report));
    Line(out, "clock", ClockText(list));
    Line(out, "records",
         FormatText("%s of %u bytes, from byte %lld to %lld",
                    Plural(report.m_Records, "record").c_str(), report.m_Info.m_JobSize,
                    static_cast<long long>(report.m_RangeStart),
                    static_cast<long long>(report.m_RangeEnd)));
}

void WriteContents(OutputBuffer& out, const McuJobList& list) {
    Line(out, "duration", TimeText(list.m_EndTime));
    Line(out, "idle", TimeText(list.m_IdleTotal));
    Line(out, "jobs", Plural(list.size(), "job") + ", " + Plural(list.m_JobNames.size(), "name"));
    Line(out, "functions",
         Plural(list.m_CustomJobs.size(), "segment") + ", " +
             Plural(CountAll(list.m_CustomJobsCS), "call") + ", " +
             Plural(list.m_CustomNames.size(), "name"));
    Line(out, "marks",
         Plural(list.m_SourceMarks.size(), "mark") + ", " +
             Plural(list.m_SourceMarkNames.size(), "name"));
    Line(out, "hardware",
         Plural(CountAll(list.m_HWJobs), "event") + ", " + Plural(list.m_HWJobs.size(), "name"));
    if (list.m_TaskOverhead != 0 || list.m_FunctionOverhead != 0)
        Line(out, "overhead",
             FormatText("task %d, function %d QBit", list.m_TaskOverhead, list.m_FunctionOverhead));
    Line(out, "memory", MemoryText(MemoryOf(list)));
}

void WriteExtraValues(OutputBuffer& out, const McuJobList& list) {
    if (list.m_ExtraInfoNum <= 0) return;
    Line(out, "extra", Plural(list.m_ExtraInfos.size(), "sample"));
    for (std::size_t i = 0; i < list.m_ExtraNames.size(); ++i)
        Line(out, "",
             FormatText("%s from %u to %u", Latin1ToUtf8(list.m_ExtraNames[i].Str()).c_str(),
                        static_cast<unsigned>(list.m_ExtraMin[i]),
                        static_cast<unsigned>(list.m_ExtraMax[i])));
}

// What went wrong in the log, as far as anything did.
void WriteDamage(OutputBuffer& out, const LogInfo& info) {
    const McuJobList& list = info.m_Log.List();
    const ReadReport& report = list.Report();
    std::uint64_t lost = 0;
    for (const PDIInfo& loss : list.m_PDIInfos) lost += loss.m_LostSize;
    const auto line = [&](std::uint64_t count, const char* what, const std::string& more = {}) {
        if (count > 0) Line(out, "damage", Plural(count, what) + more);
    };
    line(list.m_PDIInfos.size(), "gap",
         ", " + Plural(report.m_LossPackets, "packet") + ", " + Plural(lost, "byte") + " lost");
    line(report.m_DroppedPackets, "packet", " out of sequence");
    line(report.m_IgnoredRecords, "record", " of an unknown kind");
    line(report.m_UnmatchedExits, "function exit", " out of place");
    line(report.m_CutOffBytes, "byte", " of a record that the file's end cuts off");
    if (!info.m_Log.m_Error.empty())
        Line(out, info.m_Log.m_Ok ? "warning" : "error", info.m_Log.m_Error);
    for (const std::string& message : info.m_Messages) Line(out, "message", message);
}

void WriteBusiest(OutputBuffer& out, const McuJobList& list) {
    constexpr std::size_t kShown = 10;
    const std::vector<NameSummary> names = SummarizeJobs(list);
    if (names.empty()) return;
    out.Put("\n   share       time/ms       jobs  task or interrupt\n");
    for (std::size_t i = 0; i < std::min(kShown, names.size()); ++i) {
        const NameSummary& name = names[i];
        const double share = list.m_EndTime == 0 ? 0
                                                 : static_cast<double>(name.m_Total) /
                                                       static_cast<double>(list.m_EndTime) * 100;
        out.Put(FormatText("%6.2f %%  %12s  %9llu  ", share, MillisecondsText(name.m_Total).c_str(),
                           static_cast<Count>(name.m_Count)));
        out.Put(PrintableText(Latin1ToUtf8(name.m_Name)) + '\n');
    }
    if (names.size() > kShown)
        out.Put(
            FormatText("%32s  and %s more\n", "", Plural(names.size() - kShown, "name").c_str()));
}

}  // namespace

void WriteInfoText(OutputBuffer& out, const LogInfo& info) {
    const McuJobList& list = info.m_Log.List();
    WriteFile(out, info);
    WriteContents(out, list);
    WriteExtraValues(out, list);
    WriteDamage(out, info);
    WriteBusiest(out, list);
}

}  // namespace vesk
