#include <algorithm>

#include "log/McuJobList.h"
#include "timeline/CMcuView.h"

// Which records are visible: from the one that the left edge lies in to the first one that starts
// at or right of the right edge. All containers ascend in start time, so that one is found by
// halving. That holds for hardware events too, though they are stored when they end: an event that
// starts while another of its name is open ends that one first.

namespace {

using JobVector = std::vector<McuJob>;

std::uint64_t StartOf(const McuJob& job) {
    return job.m_StartTime;
}
std::uint64_t StartOf(const ExtraInfoRecord& record) {
    return record.m_Time;
}

// The range that begins at an index and ends at the first record that starts at or behind a time.
template <class Sequence>
std::int32_t EndOfRange(const Sequence& sequence, std::int32_t first, std::uint64_t time) {
    const auto end =
        std::partition_point(sequence.begin() + first, sequence.end(),
                             [&](const auto& record) { return StartOf(record) < time; });
    return static_cast<std::int32_t>(end - sequence.begin());
}

}  // namespace

void CMcuView::Cal_VisibleIndex() {
    const McuJobList& list = Jobs();
    const bool hasWidth = m_CanvasWidth > 0;
    const std::uint64_t edge = hasWidth ? Scale().FirstTimeAt(CanvasRight()) : 0;
    const auto lastFrom = [&](const auto& sequence, std::int32_t first) {
        return hasWidth ? EndOfRange(sequence, first, edge) : first;
    };
    const auto findLanes = [&](const std::map<std::string, JobVector>& lanes, auto& firsts,
                               auto& lasts) {
        firsts.assign(lanes.size(), 0);
        lasts.assign(lanes.size(), 0);
        std::size_t lane = 0;
        for (const auto& [name, jobs] : lanes) {
            list.SearchOtherJob(m_TimeOffset, firsts[lane], &jobs);
            lasts[lane] = lastFrom(jobs, firsts[lane]);
            ++lane;
        }
    };
    list.Search(m_TimeOffset, m_JobFirst);
    list.SearchOtherJob(m_TimeOffset, m_CustomFirst, &list.m_CustomJobs);
    list.SearchOtherJob(m_TimeOffset, m_MarkFirst, &list.m_SourceMarks);
    list.SearchExtraInfo(m_TimeOffset, m_ExtraFirst);
    m_JobLast = lastFrom(list, m_JobFirst);
    m_CustomLast = lastFrom(list.m_CustomJobs, m_CustomFirst);
    m_MarkLast = lastFrom(list.m_SourceMarks, m_MarkFirst);
    m_ExtraLast = lastFrom(list.m_ExtraInfos, m_ExtraFirst);
    findLanes(list.m_CustomJobsCS, m_CustomCSFirst, m_CustomCSLast);
    findLanes(list.m_HWJobs, m_HWFirst, m_HWLast);
}
