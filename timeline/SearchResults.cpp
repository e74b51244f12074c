#include "timeline/SearchResults.h"

#include <algorithm>

#include "log/McuJobList.h"
#include "timeline/NameColumn.h"

namespace vesk {

namespace {

bool StartsBefore(const McuJob* a, const McuJob* b) {
    return a->m_StartTime < b->m_StartTime;
}

}  // namespace

SearchResults::SearchResults(const McuJobList& list, SearchTarget target, const Fits& fits) {
    switch (target) {
        case SearchTarget::kJobs:
            AddRecords(list, fits);
            break;
        case SearchTarget::kSegments:
            AddRecords(list.m_CustomJobs, fits);
            break;
        case SearchTarget::kCalls:
            AddCalls(list, fits);
            break;
        case SearchTarget::kMarks:
            AddRecords(list.m_SourceMarks, fits);
            break;
    }
    Sort();
}

int SearchResults::FirstFrom(std::uint64_t time) const {
    const auto hit =
        std::lower_bound(m_Hits.begin(), m_Hits.end(), time,
                         [](const McuJob* job, std::uint64_t t) { return job->m_StartTime < t; });
    return static_cast<int>(hit - m_Hits.begin());
}

void SearchResults::AddRecords(const std::vector<McuJob>& records, const Fits& fits) {
    NameColumn names;
    names.Reserve(records.size());
    names.Add(records);
    names.Finish();
    const std::vector<std::uint64_t> set = names.SetOf(fits);
    const auto count = static_cast<int>(records.size());
    for (int i = names.FirstOf(set.data(), 0, count); i < count;
         i = names.FirstOf(set.data(), i + 1, count))
        m_Hits.push_back(&records[static_cast<std::size_t>(i)]);
}

void SearchResults::AddCalls(const McuJobList& list, const Fits& fits) {
    for (const auto& [function, calls] : list.m_CustomJobsCS) {
        if (!fits(function)) continue;
        for (const McuJob& call : calls) m_Hits.push_back(&call);
    }
}

// Records as a log yields them ascend already, those of several lanes one lane at a time.
void SearchResults::Sort() {
    if (!std::is_sorted(m_Hits.begin(), m_Hits.end(), StartsBefore))
        std::stable_sort(m_Hits.begin(), m_Hits.end(), StartsBefore);
}

}  // namespace vesk
