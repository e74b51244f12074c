#include "timeline/SliceIndex.h"

#include <algorithm>
#include <utility>

#include "log/McuJobList.h"

namespace vesk {

namespace {

constexpr int kJobsAtOnce = 4096;  // keeps the maps of a merge small
// A view of so few needs no merge of the whole log.
constexpr int kFewJobs = 4096;
constexpr std::int64_t kFewCalls = 256;

bool StartsBefore(const McuJob& a, const McuJob& b) {
    return a.m_StartTime < b.m_StartTime;
}

constexpr int kNothing = -1;  // no slice of the job is known
constexpr int kInMap = -2;    // the job's slices are in the map

}  // namespace

SliceIndex::SliceIndex(const McuJobList& list, const NameColumn& jobNames,
                       std::vector<CallIndex*> lanes)
    : m_List(list), m_JobNames(jobNames), m_Lanes(std::move(lanes)) {
    m_IsOrdered = JobsFollowEachOther();
    for (const CallIndex* lane : m_Lanes) {
        const std::vector<McuJob>& calls = lane->Calls();
        m_IsOrdered = m_IsOrdered && std::is_sorted(calls.begin(), calls.end(), StartsBefore);
    }
}

// Jobs without a length may stand in between. Only the last one would take the log's end for its
// own.
bool SliceIndex::JobsFollowEachOther() const {
    std::uint64_t end = 0;
    for (const McuJob& job : m_List) {
        if (job.m_StartTime < end) return false;
        end = std::max(job.m_StartTime, job.m_EndTime);
    }
    return m_List.empty() || m_List.back().m_EndTime >= m_List.back().m_StartTime;
}

const McuJob& SliceIndex::JobAt(int index) const {
    return m_List[static_cast<std::size_t>(index)];
}

int SliceIndex::FirstJobFrom(int first, int last, std::uint64_t time) const {
    const auto found =
        std::partition_point(m_List.begin() + first, m_List.begin() + last,
                             [&](const McuJob& job) { return job.m_StartTime < time; });
    return static_cast<int>(found - m_List.begin());
}

int SliceIndex::GroupStart(int job) const {
    if (job >= m_List.GetSize()) return job;
    while (job > 0 && JobAt(job - 1).m_StartTime == JobAt(job).m_StartTime) --job;
    return job;
}

void SliceIndex::FindWithin(const CallView& view, int& first, int& last) const {
    std::uint64_t begin = view.m_Begin;
    std::uint64_t end = view.m_End;
    for (std::size_t k = 0; k < m_Lanes.size(); ++k) {
        const std::vector<McuJob>& calls = m_Lanes[k]->Calls();
        const auto next = static_cast<std::size_t>(view.m_Last[k]);
        begin = std::max(begin, m_Lanes[k]->LatestEnd(0, view.m_First[k]));
        if (next < calls.size()) end = std::min(end, calls[next].m_StartTime);
    }
    first = FirstJobFrom(0, m_List.GetSize(), begin);
    last = std::max(first, FirstJobFrom(0, m_List.GetSize(), end));
    while (last > first && JobAt(last - 1).m_EndTime > end) --last;
    last = std::max(first, GroupStart(last));
}

bool SliceIndex::IsSmall(const CallView& view, int jobs) const {
    std::int64_t calls = 0;
    for (std::size_t k = 0; k < m_Lanes.size(); ++k) calls += view.m_Last[k] - view.m_First[k];
    return jobs <= kFewJobs && calls <= kFewCalls;
}

void SliceIndex::Show(const CallView& view) {
    m_Left.clear();
    m_Right.clear();
    m_WithinFirst = m_WithinLast = 0;
    if (m_List.empty()) return;
    if (!m_IsOrdered) {
        MergeTangled(view, m_Left);
        return;
    }
    // Jobs that reach into the view, one that ends at its very begin included.
    int seenFirst = FirstJobFrom(0, m_List.GetSize(), view.m_Begin);
    while (seenFirst > 0 && JobAt(seenFirst - 1).m_EndTime >= view.m_Begin) --seenFirst;
    seenFirst = GroupStart(seenFirst);
    const int seenLast = view.m_End == UINT64_MAX
                             ? m_List.GetSize()
                             : FirstJobFrom(0, m_List.GetSize(), view.m_End + 1);
    int first = 0;
    int last = 0;
    FindWithin(view, first, last);
    if (first >= last || (!m_IsBuilt && IsSmall(view, seenLast - seenFirst))) {
        MergeJobs(view, seenFirst, seenLast, m_Left);
        return;
    }
    if (!m_IsBuilt) Build();
    MergeJobs(view, seenFirst, first, m_Left);
    MergeJobs(view, last, seenLast, m_Right);
    const auto place = [&](int job) {
        if (job >= m_List.GetSize()) return static_cast<int>(m_Starts.size());
        return static_cast<int>(
            std::lower_bound(m_Starts.begin(), m_Starts.end(), JobAt(job).m_StartTime) -
            m_Starts.begin());
    };
    m_WithinFirst = place(first);
    m_WithinLast = place(last);
}

Slice SliceIndex::At(int index) const {
    const auto i = static_cast<std::size_t>(index);
    return {m_Starts[i], m_Ends[i], static_cast<int>(m_Functions[i] >> 3),
            static_cast<std::uint8_t>(m_Functions[i] & 7)};
}

void SliceIndex::Build() {
    m_IsBuilt = true;
    const std::vector<std::int32_t> firsts(m_Lanes.size(), 0);
    std::vector<std::int32_t> lasts;
    for (const CallIndex* lane : m_Lanes)
        lasts.push_back(static_cast<std::int32_t>(lane->Calls().size()));
    const CallView all{firsts, lasts, 0, UINT64_MAX};
    std::vector<Slice> slices;
    const int jobs = m_List.GetSize();
    for (int first = 0; first < jobs;) {
        int last = jobs - first > kJobsAtOnce ? first + kJobsAtOnce : jobs;
        while (last < jobs && JobAt(last - 1).m_StartTime == JobAt(last).m_StartTime) ++last;
        slices.clear();
        m_Whole.assign(static_cast<std::size_t>(last - first), kNothing);
        MergeJobs(all, first, last, slices);
        for (const Slice& slice : slices) {
            m_Starts.push_back(slice.m_Start);
            m_Ends.push_back(slice.m_End);
            m_Functions.push_back(static_cast<std::uint32_t>(slice.m_Function) << 3 |
                                  slice.m_Flags);
        }
        first = last;
    }
    m_Whole.clear();
    m_Starts.shrink_to_fit();
    m_Ends.shrink_to_fit();
    m_Functions.shrink_to_fit();
}

void SliceIndex::MergeTangled(const CallView& view, std::vector<Slice>& slices) {
    std::pmr::unsynchronized_pool_resource memory;
    SliceMap merged(&memory);
    SliceMap pieces(&memory);
    std::map<std::uint64_t, McuJob> cut;
    for (std::size_t k = 0; k < m_Lanes.size(); ++k) {
        for (int i = view.m_First[k]; i < view.m_Last[k]; ++i) {
            const McuJob& call = m_Lanes[k]->Calls()[static_cast<std::size_t>(i)];
            const std::uint64_t end = m_Lanes[k]->EndOf(i);
            int running = 0;
            m_List.Search(call.m_StartTime, running);
            const McuJob& job = JobAt(running);
            if (end <= call.m_StartTime || call.m_StartTime < job.m_StartTime ||
                call.m_StartTime >= job.m_EndTime)
                continue;
            m_List.DurationTotalCustomJobCS(cut, job.m_Name, call.m_Name, call.m_StartTime, end,
                                            (call.m_Flags & kClosedLastCall) != 0);
            for (const auto& [start, piece] : cut)
                pieces[start] = {start, piece.m_EndTime, static_cast<int>(k), piece.m_Flags};
            MergeCall(merged, pieces, {view.m_Begin, view.m_End, true});
        }
    }
    for (const auto& [start, slice] : merged) slices.push_back(slice);
}

void SliceIndex::MergeJobs(const CallView& view, int first, int last, std::vector<Slice>& slices) {
    if (first >= last) return;
    std::pmr::unsynchronized_pool_resource memory;
    SliceMap merged(&memory);
    SliceMap pieces(&memory);
    const std::uint64_t begin = JobAt(first).m_StartTime;
    const std::uint64_t end = last < m_List.GetSize() ? JobAt(last).m_StartTime : UINT64_MAX;
    for (std::size_t k = 0; k < m_Lanes.size(); ++k) {
        const CallIndex& lane = *m_Lanes[k];
        const int calls = view.m_Last[k];
        for (int i = lane.FirstEndingFrom(view.m_First[k], calls, begin + 1); i < calls;
             i = lane.FirstEndingFrom(i + 1, calls, begin + 1)) {
            if (lane.Calls()[static_cast<std::size_t>(i)].m_StartTime >= end) break;
            Cut(k, i, first, last, merged, pieces);
            MergeCall(merged, pieces, {view.m_Begin, view.m_End, false});
        }
    }
    TakeOver(merged, first, slices);
}

void SliceIndex::TakeOver(const SliceMap& merged, int first, std::vector<Slice>& slices) {
    auto at = merged.begin();
    for (std::size_t i = 0; i < m_Whole.size(); ++i) {
        if (m_Whole[i] < 0) continue;
        const McuJob& job = JobAt(first + static_cast<int>(i));
        for (; at != merged.end() && at->first < job.m_StartTime; ++at)
            slices.push_back(at->second);
        slices.push_back({job.m_StartTime, job.m_EndTime, m_Whole[i], 0});
    }
    for (; at != merged.end(); ++at) slices.push_back(at->second);
}

// True if the piece is all of its job, has no flags and needs no map.
bool SliceIndex::KeepWhole(std::size_t lane, int index, const Slice& piece, int first,
                           SliceMap& merged) {
    if (m_Whole.empty()) return false;
    int& whole = m_Whole[static_cast<std::size_t>(index - first)];
    const McuJob& job = JobAt(index);
    const bool isAlone =
        (index == 0 || JobAt(index - 1).m_StartTime < job.m_StartTime) &&
        (index + 1 == m_List.GetSize() || JobAt(index + 1).m_StartTime > job.m_StartTime);
    const bool isWhole = isAlone && piece.m_Flags == 0 && piece.m_Start == job.m_StartTime &&
                         piece.m_End == job.m_EndTime && piece.m_End > piece.m_Start;
    if (isWhole && whole != kInMap) {
        if (whole == kNothing) whole = static_cast<int>(lane);
        return true;
    }
    if (whole >= 0)
        merged.emplace(job.m_StartTime, Slice{job.m_StartTime, job.m_EndTime, whole, 0});
    whole = kInMap;
    return false;
}

// The same as Search, within jobs [first, last) where the time allows.
int SliceIndex::LastBefore(std::uint64_t time, int first, int last) const {
    int index = 0;
    const bool isInside = time > JobAt(first).m_StartTime &&
                          (last >= m_List.GetSize() || time <= JobAt(last).m_StartTime);
    if (isInside) return FirstJobFrom(first, last, time) - 1;
    m_List.Search(time, index);
    return index;
}

// Those pieces of a call that lie in jobs [first, last).
void SliceIndex::Cut(std::size_t lane, int at, int first, int last, SliceMap& merged,
                     SliceMap& pieces) {
    const McuJob& call = m_Lanes[lane]->Calls()[static_cast<std::size_t>(at)];
    const std::uint64_t end = m_Lanes[lane]->EndOf(at);
    if (end <= call.m_StartTime) return;
    const int firstJob = LastBefore(call.m_StartTime, first, last);
    const McuJob& running = JobAt(firstJob);
    if (call.m_StartTime < running.m_StartTime || call.m_StartTime >= running.m_EndTime) return;
    const int name = m_JobNames.At(firstJob);
    int lastJob = LastBefore(end, first, last);
    while (m_JobNames.At(lastJob) != name) --lastJob;
    const bool isClosed = (call.m_Flags & kClosedLastCall) != 0;
    for (int j = std::max(firstJob, first); j <= lastJob && j < last; ++j) {
        if (m_JobNames.At(j) != name) continue;
        const std::uint64_t from = std::max(JobAt(j).m_StartTime, call.m_StartTime);
        const std::uint64_t to = std::max(std::min(JobAt(j).m_EndTime, end), from);
        const int flags =
            (j == firstJob ? kBeganAtEntry : 0) | (isClosed && j == lastJob ? kClosedLastCall : 0);
        const Slice piece{from, to, static_cast<int>(lane), static_cast<std::uint8_t>(flags)};
        if (!KeepWhole(lane, j, piece, first, merged)) pieces[from] = piece;
    }
}

}  // namespace vesk
