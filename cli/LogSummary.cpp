#include "cli/LogSummary.h"

#include <algorithm>

namespace vesk {

namespace {

void SortByTotal(std::vector<NameSummary>& names) {
    std::stable_sort(names.begin(), names.end(), [](const NameSummary& a, const NameSummary& b) {
        return a.m_Total > b.m_Total;
    });
}

// A short text lies within the string itself.
std::uint64_t HeapBytesOf(const std::string& text) {
    static const std::size_t shortCapacity = std::string().capacity();
    return text.size() > shortCapacity ? text.size() + 1 : 0;
}

std::uint64_t MemoryOf(const std::vector<McuJob>& records) {
    return records.capacity() * sizeof(McuJob);
}

std::uint64_t MemoryOf(const std::map<std::string, std::vector<McuJob>>& records) {
    std::uint64_t bytes = 0;
    for (const auto& [name, ofName] : records) bytes += MemoryOf(ofName);
    return bytes;
}

}  // namespace

std::vector<NameSummary> SummarizeJobs(const McuJobList& list) {
    std::map<std::string, std::uint64_t> totals;
    list.DurationTotal(totals, 0, list.m_EndTime);
    std::vector<NameSummary> names;
    for (const auto& [name, count] : list.m_JobNames)
        names.push_back({name, static_cast<std::uint64_t>(count), totals[name]});
    SortByTotal(names);
    return names;
}

std::vector<NameSummary> SummarizeFunctions(const McuJobList& list) {
    std::vector<NameSummary> names;
    for (const auto& [name, total] : list.m_CustomNames) {
        const auto calls = list.m_CustomJobsCS.find(name);
        const bool called = calls != list.m_CustomJobsCS.end();
        names.push_back({name, called ? calls->second.size() : 0, total});
    }
    SortByTotal(names);
    return names;
}

std::uint64_t CountAll(const std::map<std::string, std::vector<McuJob>>& records) {
    std::uint64_t count = 0;
    for (const auto& [name, ofName] : records) count += ofName.size();
    return count;
}

// By the names, not by the records: a walk over millions of them would take as long as a good part
// of the read. Only tasks and interrupts have names that are longer than a string holds by itself.
std::uint64_t MemoryOf(const McuJobList& list) {
    const std::vector<McuJob>& jobs = list;
    std::uint64_t bytes = MemoryOf(jobs) + MemoryOf(list.m_CustomJobs) +
                          MemoryOf(list.m_CustomJobsCS) + MemoryOf(list.m_SourceMarks) +
                          MemoryOf(list.m_HWJobs);
    for (const auto& [name, count] : list.m_JobNames)
        bytes += static_cast<std::uint64_t>(count) * HeapBytesOf(name);
    bytes += list.m_ExtraInfos.capacity() * sizeof(ExtraInfoRecord);
    bytes +=
        list.m_ExtraInfos.size() * static_cast<std::uint64_t>(list.m_ExtraInfoNum) * sizeof(int);
    return bytes;
}

}  // namespace vesk
