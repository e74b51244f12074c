#include "timeline/RecordSearch.h"

#include <algorithm>

#include "platform/TextOrder.h"
#include "timeline/CallIndex.h"
#include "timeline/JobStripIndex.h"

namespace vesk {

RecordSearch::RecordSearch(const JobStripIndex& strip, const std::string& name)
    : m_Records(strip.Records()), m_IsAscending(strip.IsAscending()) {
    if (name.empty()) return;
    m_Names = &strip.Names();
    m_Set =
        m_Names->SetOf([&](const std::string& other) { return CompareFolded(other, name) == 0; });
}

RecordSearch::RecordSearch(const CallIndex& calls)
    : m_Records(calls.Calls()), m_IsAscending(calls.IsAscending()) {}

int RecordSearch::FirstAfter(int from, std::uint64_t time) const {
    if (m_IsAscending) {
        const auto later =
            std::partition_point(m_Records.begin() + from, m_Records.end(),
                                 [=](const McuJob& job) { return job.m_StartTime <= time; });
        return FirstOf(static_cast<int>(later - m_Records.begin()), Count());
    }
    int record = FirstOf(from, Count());
    while (record >= 0 && StartOf(record) <= time) record = FirstOf(record + 1, Count());
    return record;
}

int RecordSearch::LastBefore(int last, std::uint64_t time) const {
    if (m_IsAscending) {
        const auto end =
            std::partition_point(m_Records.begin(), m_Records.begin() + last + 1,
                                 [=](const McuJob& job) { return job.m_StartTime < time; });
        return LastOf(0, static_cast<int>(end - m_Records.begin()));
    }
    int record = LastOf(0, last + 1);
    while (record >= 0 && StartOf(record) >= time) record = LastOf(0, record);
    return record;
}

int RecordSearch::FirstOf(int first, int last) const {
    const int found = m_Names ? m_Names->FirstOf(m_Set.data(), first, last) : first;
    return found < last ? found : -1;
}

int RecordSearch::LastOf(int first, int last) const {
    const int found = m_Names ? m_Names->LastOf(m_Set.data(), first, last) : last - 1;
    return found >= first ? found : -1;
}

}  // namespace vesk
