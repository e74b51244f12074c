#include "timeline/SliceIndex.h"

#include <algorithm>
#include <tuple>

#include "log/McuJobList.h"
#include "platform/Prefetch.h"
#include "timeline/RecordOrder.h"

namespace vesk {

namespace {

constexpr std::size_t kAhead = 12;        // columns
constexpr std::size_t kManySlices = 6;    // more than a column needs
constexpr int kFewJobs = 64;              // not worth a look at their names
constexpr std::size_t kFewPieces = 4096;  // of a job, to be merged in a flat list

}  // namespace

// Only the last job would take the log's end for its own.
SliceIndex::SliceIndex(const McuJobList& list, JobStripIndex& jobs, CallOrder& order)
    : m_List(list), m_Jobs(jobs), m_Order(order) {
    m_IsOrdered = m_Order.IsAscending() && jobs.FollowEachOther() &&
                  (list.empty() || list.back().m_EndTime >= list.back().m_StartTime);
}

const McuJob& SliceIndex::JobAt(int index) const {
    return m_List[static_cast<std::size_t>(index)];
}

// Jobs of one start are merged together.
int SliceIndex::GroupStart(int job) const {
    if (job >= m_List.GetSize()) return job;
    while (job > 0 && JobAt(job - 1).m_StartTime == JobAt(job).m_StartTime) --job;
    return job;
}

const std::vector<Slice>& SliceIndex::Show(const CallView& view, SliceTexts& texts) {
    if (m_IsShown && m_View == view) return m_Slices;
    m_View = view;
    m_IsShown = true;
    m_Slices.clear();
    if (m_List.empty() || (m_IsOrdered && m_Order.IsEmpty())) return m_Slices;
    if (!m_IsOrdered) {
        MergeTangled();
        return m_Slices;
    }
    m_Jobs.Show(view.m_Scale, view.m_JobFirst, view.m_JobLast);
    AddJobs(GroupStart(view.m_JobFirst), view.m_JobFirst + m_Jobs.Leading());
    const std::vector<RecordColumn>& columns = m_Jobs.Columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        AskFor(columns[std::min(i + kAhead, columns.size() - 1)]);
        AddColumn(columns[i], texts);
    }
    int last = view.m_JobLast;
    while (last < m_List.GetSize() && JobAt(last).m_StartTime <= view.m_End) ++last;
    AddJobs(view.m_JobLast, last);
    return m_Slices;
}

// Asks for the memory of the jobs that AddColumn is going to look at.
void SliceIndex::AskFor(const RecordColumn& column) const {
    const int last = std::min(column.m_Last, m_List.GetSize() - 1);
    for (int job = std::max(column.m_Last - 1 - m_Enough, 0); job <= last; ++job)
        Prefetch(&JobAt(job).m_StartTime);
    m_Order.AskFor(m_View.m_Scale.TimeAt(std::min(column.m_X, INT32_MAX - 1) + 1));
}

void SliceIndex::AddJobs(int first, int last) {
    MergeJobs(first, last, m_Slices);
}

// The last job may reach into further columns: all of it is taken. Columns are much alike, so that
// as many jobs as sufficed for the last one are looked at first, and twice as many each time that
// they do not suffice.
void SliceIndex::AddColumn(const RecordColumn& column, SliceTexts& texts) {
    if (!column.m_IsSimple) return AddJobs(column.m_First, column.m_Last);
    m_Column.clear();
    int last = column.m_Last;
    for (int jobs = m_Enough; last > column.m_First;) {
        const int first = GroupStart(std::max(column.m_First, last - jobs));
        if (jobs > kFewJobs && MayRun(first, last)) {
            jobs = kFewJobs;
            continue;
        }
        if (jobs <= kFewJobs) {
            m_Part.clear();
            MergeJobs(first, last, m_Part);
            m_Column.insert(m_Column.begin(), m_Part.begin(), m_Part.end());
            if (IsEnough(column, texts)) {
                const bool isTooMuch = m_Column.size() > kManySlices;
                m_Enough = std::clamp((column.m_Last - first) / (isTooMuch ? 2 : 1), 1, kFewJobs);
                break;
            }
        }
        last = first;
        jobs = std::min(jobs, INT32_MAX / 2) * 2;
    }
    m_Slices.insert(m_Slices.end(), m_Column.begin(), m_Column.end());
}

// Of the column's slices the last one shows, and the last text.
bool SliceIndex::IsEnough(const RecordColumn& column, SliceTexts& texts) const {
    bool hasLast = false;
    for (auto slice = m_Column.rbegin(); slice != m_Column.rend(); ++slice) {
        const bool shows =
            slice->m_Start <= m_View.m_End && m_View.m_Scale.PixelAt(slice->m_Start) == column.m_X;
        if (!shows) continue;
        if (hasLast ? texts.HasDots(*slice) : texts.HasOnlyDots(*slice)) return true;
        hasLast = true;
    }
    return false;
}

// --- Merging -------------------------------------------------------------------------------------

void SliceIndex::FindCalls(int first, int last) {
    const std::uint64_t end = last < m_List.GetSize() ? JobAt(last).m_StartTime : UINT64_MAX;
    m_Order.FindOpen(JobAt(first).m_StartTime, end, m_Open);
    std::erase_if(m_Open, [this](const TimedCall* call) {
        const auto function = static_cast<std::size_t>(call->Function());
        return call->m_Index < m_View.m_First[function] || call->m_Index >= m_View.m_Last[function];
    });
}

// Whether a task with an open call has one of the jobs.
bool SliceIndex::MayRun(int first, int last) {
    FindCalls(first, last);
    if (m_Open.empty()) return false;
    m_Names.assign(m_Jobs.Names().Words(), 0);
    m_Jobs.Names().Collect(first, last, m_Names.data());
    return std::any_of(m_Open.begin(), m_Open.end(), [&](const TimedCall* call) {
        if (call->m_Job == TimedCall::kNoJob) return false;
        const auto name = static_cast<std::size_t>(m_Jobs.Names().At(call->m_Job));
        return (m_Names[name / 64] >> name % 64 & 1) != 0;
    });
}

// Whether a job of the name, from one on, starts before the call's end.
bool SliceIndex::RunsAgain(const TimedCall& call, int name, int job) const {
    if (job >= m_List.GetSize() || JobAt(job).m_StartTime >= call.m_End) return false;
    m_Names.assign(m_Jobs.Names().Words(), 0);
    m_Jobs.Names().Collect(job, LastBefore(m_List, call.m_End, job) + 1, m_Names.data());
    const auto bit = static_cast<std::size_t>(name);
    return (m_Names[bit / 64] >> bit % 64 & 1) != 0;
}

// Adds those pieces of a call that lie in jobs [first, last).
void SliceIndex::Cut(const TimedCall& call, int first, int last) {
    const int firstJob = call.m_Job;
    if (firstJob == TimedCall::kNoJob) return;
    const int name = m_Jobs.Names().At(firstJob);
    const std::size_t before = m_Pieces.size();
    for (int j = std::max(firstJob, first); j < last; ++j) {
        if (m_Jobs.Names().At(j) != name) continue;
        const McuJob& job = JobAt(j);
        if (job.m_StartTime >= call.m_End) break;
        const std::uint64_t from = std::max(job.m_StartTime, call.m_Start);
        const std::uint64_t to = std::max(std::min(job.m_EndTime, call.m_End), from);
        const std::uint8_t flags = j == firstJob ? kBeganAtEntry : 0;
        m_Pieces.push_back({{from, to, call.Function(), flags}, j, call.m_Index});
    }
    const bool ends = m_Pieces.size() > before && call.IsClosed() && !RunsAgain(call, name, last);
    if (ends) m_Pieces.back().m_Slice.m_Flags |= kClosedLastCall;
}

// Adds the slices of jobs [first, last), which are whole groups of jobs with one start.
void SliceIndex::MergeJobs(int first, int last, std::vector<Slice>& slices) {
    if (first >= last) return;
    FindCalls(first, last);
    m_Pieces.clear();
    for (const TimedCall* call : m_Open) Cut(*call, first, last);
    const auto order = [this](const Piece& piece) {
        return std::tuple(JobAt(piece.m_Job).m_StartTime, piece.m_Slice.m_Function, piece.m_Call,
                          piece.m_Job);
    };
    if (m_Pieces.size() > 1)
        std::sort(m_Pieces.begin(), m_Pieces.end(),
                  [&](const Piece& a, const Piece& b) { return order(a) < order(b); });
    for (std::size_t i = 0; i < m_Pieces.size();) {
        const std::uint64_t start = JobAt(m_Pieces[i].m_Job).m_StartTime;
        std::size_t end = i + 1;
        while (end < m_Pieces.size() && JobAt(m_Pieces[end].m_Job).m_StartTime == start) ++end;
        MergeGroup(i, end, slices);
        i = end;
    }
}

// Pieces [first, last), which lie in jobs of one start, in the order of merging.
void SliceIndex::MergeGroup(std::size_t first, std::size_t last, std::vector<Slice>& slices) {
    if (last - first == 1) {
        slices.push_back(m_Pieces[first].m_Slice);
    } else if (MayMergeFlat(first, last)) {
        m_Group.clear();
        for (std::size_t i = first; i < last; ++i) MergeSlice(m_Group, m_Pieces[i].m_Slice);
        slices.insert(slices.end(), m_Group.begin(), m_Group.end());
    } else {
        MergeInMaps(first, last, slices);
    }
}

bool SliceIndex::MayMergeFlat(std::size_t first, std::size_t last) const {
    if (last - first > kFewPieces) return false;
    for (std::size_t i = first; i < last; ++i) {
        const Slice& slice = m_Pieces[i].m_Slice;
        const bool isPlain = m_Pieces[i].m_Job == m_Pieces[first].m_Job &&
                             slice.m_Start < slice.m_End && slice.m_Start <= m_View.m_End &&
                             slice.m_End >= m_View.m_Scale.m_Offset;
        if (!isPlain) return false;
    }
    return true;
}

void SliceIndex::MergeInMaps(std::size_t first, std::size_t last, std::vector<Slice>& slices) {
    std::pmr::unsynchronized_pool_resource memory;
    SliceMap merged(&memory);
    SliceMap call(&memory);
    for (std::size_t i = first; i < last; ++i) {
        const Piece& piece = m_Pieces[i];
        call[piece.m_Slice.m_Start] = piece.m_Slice;
        const bool isLast = i + 1 == last || m_Pieces[i + 1].m_Call != piece.m_Call ||
                            m_Pieces[i + 1].m_Slice.m_Function != piece.m_Slice.m_Function;
        if (isLast) MergeCall(merged, call, {m_View.m_Scale.m_Offset, m_View.m_End, false});
    }
    for (const auto& [start, slice] : merged) slices.push_back(slice);
}

void SliceIndex::MergeTangled() {
    std::pmr::unsynchronized_pool_resource memory;
    SliceMap merged(&memory);
    SliceMap pieces(&memory);
    std::map<std::uint64_t, McuJob> cut;
    int function = 0;
    for (const auto& [name, calls] : m_List.m_CustomJobsCS) {
        const auto k = static_cast<std::size_t>(function);
        for (int i = m_View.m_First[k]; i < m_View.m_Last[k]; ++i) {
            const McuJob& call = calls[static_cast<std::size_t>(i)];
            const std::uint64_t end = EffectiveEnd(calls, i, m_List.m_EndTime);
            int running = 0;
            m_List.Search(call.m_StartTime, running);
            const McuJob& job = JobAt(running);
            if (end <= call.m_StartTime || call.m_StartTime < job.m_StartTime ||
                call.m_StartTime >= job.m_EndTime)
                continue;
            m_List.DurationTotalCustomJobCS(cut, job.m_Name, name, call.m_StartTime, end,
                                            (call.m_Flags & kClosedLastCall) != 0);
            for (const auto& [start, piece] : cut)
                pieces[start] = {start, piece.m_EndTime, function, piece.m_Flags};
            MergeCall(merged, pieces, {m_View.m_Scale.m_Offset, m_View.m_End, true});
        }
        ++function;
    }
    for (const auto& [start, slice] : merged) m_Slices.push_back(slice);
}

}  // namespace vesk
