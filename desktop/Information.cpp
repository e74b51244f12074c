#include "desktop/Information.h"

#include "log/McuJobList.h"
#include "log/TimeText.h"
#include "platform/Text.h"

namespace vesk {

namespace {

using Count = unsigned long long;

std::string Plural(std::uint64_t count, const char* what) {
    return FormatText("%llu %s%s", static_cast<Count>(count), what, count == 1 ? "" : "s");
}

std::string FormOf(const ReadReport& report) {
    if (report.m_Form == LogForm::kHeaderless) return "without a header";
    return FormatText(
        "%s, version %d",
        report.m_Form == LogForm::kPackets ? "packets behind a header" : "with a header",
        report.m_Version);
}

std::string FilesText(const LogFiles& files, const std::string& target) {
    std::string text = "Log: " + files.m_Log + '\n';
    if (!files.m_Header.empty()) text += "Header of: " + files.m_Header + '\n';
    return text + "Target description: " + (target.empty() ? "none" : target) + '\n';
}

std::string ContentsText(const McuJobList& log) {
    const ReadReport& report = log.Report();
    return "Kind: " + FormOf(report) + ", " + (log.m_IsTQCNT ? "TQCNT" : "USCNT") + '\n' +
           FormatText("Span: %llu QBit (%s ms)\n", static_cast<Count>(log.m_EndTime),
                      MillisecondsText(log.m_EndTime).c_str()) +
           FormatText("Bytes read: %lld to %lld\n", static_cast<long long>(report.m_RangeStart),
                      static_cast<long long>(report.m_RangeEnd)) +
           Plural(report.m_Records, "record") + ", " + Plural(log.size(), "job") + '\n';
}

// What went wrong in the log, as far as anything did.
std::string DamageText(const McuJobList& log) {
    const ReadReport& report = log.Report();
    std::uint64_t lost = 0;
    for (const PDIInfo& loss : log.m_PDIInfos) lost += loss.m_LostSize;
    std::string text;
    const auto line = [&](std::uint64_t count, const char* what, const std::string& more) {
        if (count > 0) text += Plural(count, what) + more + '\n';
    };
    line(log.m_PDIInfos.size(), "gap", ", " + Plural(lost, "byte") + " lost");
    line(report.m_DroppedPackets, "packet", " out of sequence");
    line(report.m_IgnoredRecords, "record", " of an unknown kind");
    line(report.m_UnmatchedExits, "function exit", " out of place");
    line(report.m_CutOffBytes, "byte", " of a record that the file's end cuts off");
    return text.empty() ? "No damage was found.\n" : text;
}

}  // namespace

std::string InformationText(const LogFiles& files, const std::string& target,
                            const McuJobList* log) {
    std::string text = "veskview " VESK_VERSION
                       "\nViewer and analyser for the execution log of a modem's "
                       "microcontroller.\n\n";
    if (!log) return text + "No log is open.";
    return text + FilesText(files, target) + '\n' + ContentsText(*log) + '\n' + DamageText(*log);
}

}  // namespace vesk
