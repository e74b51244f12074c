#include "host/SummaryContent.h"

#include <algorithm>

#include "host/McuColorMap.h"
#include "log/McuJobList.h"
#include "log/TimeText.h"
#include "platform/Text.h"

namespace vesk {

namespace {

std::string TimeText(std::uint64_t qbits) {
    return GroupedNumber(qbits) + " QBit (" + MillisecondsText(qbits) + " ms)";
}

std::string FormText(const ReadReport& report) {
    if (report.m_Form == LogForm::kHeaderless) return "without header";
    const char* const form =
        report.m_Form == LogForm::kPackets ? "packets behind a header" : "with header";
    return FormatText("%s, version %d", form, report.m_Version);
}

std::string IdleText(const McuJobList& jobs) {
    if (jobs.m_EndTime == 0) return "0.0 %";
    const auto idle = static_cast<double>(jobs.m_IdleTotal);
    return FormatText("%.1f %%", idle / static_cast<double>(jobs.m_EndTime) * 100);
}

std::string LossText(const McuJobList& jobs) {
    if (jobs.m_PDIInfos.empty()) return "none";
    std::uint64_t bytes = 0;
    for (const PDIInfo& loss : jobs.m_PDIInfos) bytes += loss.m_LostSize;
    return GroupedNumber(jobs.m_PDIInfos.size()) + " (" + GroupedNumber(bytes) + " bytes)";
}

std::uint64_t CountEvents(const McuJobList& jobs) {
    std::uint64_t count = 0;
    for (const auto& [name, events] : jobs.m_HWJobs) count += events.size();
    return count;
}

SummaryGroup Facts(const McuJobList& jobs) {
    const std::string& path = jobs.m_FileName.Str();
    SummaryGroup group{path.substr(path.find_last_of("/\\") + 1), SummaryColors::kNone, {}};
    const auto add = [&](const char* name, std::string value) {
        group.m_Entries.push_back({name, std::move(value)});
    };
    add("Form", FormText(jobs.Report()));
    add("Counter", jobs.m_IsTQCNT ? "TQCNT, 16 bits within a frame" : "USCNT, 32 bits");
    add("Time span", TimeText(jobs.m_EndTime));
    add("Idle", IdleText(jobs));
    add("Jobs", GroupedNumber(jobs.size()));
    add("Function segments", GroupedNumber(jobs.m_CustomJobs.size()));
    add("Source marks", GroupedNumber(jobs.m_SourceMarks.size()));
    add("Hardware events", GroupedNumber(CountEvents(jobs)));
    add("Losses", LossText(jobs));
    if (jobs.Report().m_Outcome == ReadOutcome::kPartial) add("Read", "in part, up to an error");
    return group;
}

// One entry per name of a map, with what value() makes of its element.
template <class Map, class Value>
SummaryGroup Names(const char* title, SummaryColors colors, const Map& names, Value value) {
    SummaryGroup group{title, colors, {}};
    group.m_Entries.reserve(names.size());
    for (const auto& [name, element] : names)
        group.m_Entries.push_back({name, value(element), ColorKey(name)});
    return group;
}

// A value that no sample holds has its greatest below its smallest.
std::string RangeText(int min, int max) {
    const auto low = static_cast<std::uint32_t>(min);
    const auto high = static_cast<std::uint32_t>(max);
    if (low > high) return "no samples";
    return GroupedNumber(low) + " .. " + GroupedNumber(high);
}

SummaryGroup ExtraValues(const McuJobList& jobs) {
    SummaryGroup group{"Extra values", SummaryColors::kExtraValues, {}};
    const std::size_t count =
        std::min({jobs.m_ExtraNames.size(), jobs.m_ExtraMin.size(), jobs.m_ExtraMax.size()});
    for (std::size_t i = 0; i < count; ++i)
        group.m_Entries.push_back({jobs.m_ExtraNames[i].Str(),
                                   RangeText(jobs.m_ExtraMin[i], jobs.m_ExtraMax[i]),
                                   static_cast<std::int32_t>(i)});
    return group;
}

}  // namespace

std::string GroupedNumber(std::uint64_t number) {
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3;) text.insert(at -= 3, 1, ',');
    return text;
}

std::vector<SummaryGroup> Summarize(const McuJobList& jobs) {
    const auto count = [](int n) { return GroupedNumber(static_cast<std::uint64_t>(n)); };
    const auto duration = [](std::uint64_t qbits) { return MillisecondsText(qbits) + " ms"; };
    const auto size = [](const std::vector<McuJob>& events) {
        return GroupedNumber(events.size());
    };
    std::vector<SummaryGroup> groups = {
        Facts(jobs),
        Names("Tasks and interrupts", SummaryColors::kJobs, jobs.m_JobNames, count),
        Names("Functions", SummaryColors::kFunctions, jobs.m_CustomNames, duration),
        ExtraValues(jobs),
        Names("Source marks", SummaryColors::kNone, jobs.m_SourceMarkNames, count),
        Names("Hardware events", SummaryColors::kNone, jobs.m_HWJobs, size),
    };
    std::erase_if(groups, [](const SummaryGroup& group) { return group.m_Entries.empty(); });
    return groups;
}

}  // namespace vesk
