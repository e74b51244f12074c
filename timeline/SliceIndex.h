#pragma once

#include <cstdint>
#include <vector>

#include "timeline/CallOrder.h"
#include "timeline/JobStripIndex.h"
#include "timeline/SliceMerge.h"
#include "timeline/TimeScale.h"

class McuJobList;

namespace vesk {

// What a view looks at: jobs [first, last), the calls of each function in map order, and the span
// of time from the scale's offset to the end, included.
struct CallView {
    TimeScale m_Scale;
    std::uint64_t m_End = 0;
    int m_JobFirst = 0;
    int m_JobLast = 0;
    std::vector<std::int32_t> m_First;
    std::vector<std::int32_t> m_Last;
    friend bool operator==(const CallView&, const CallView&) = default;
};

// What the texts of slices leave where they have no room.
class SliceTexts {
public:
    virtual ~SliceTexts() = default;
    // Of a slice without a pixel of its own, anything at all.
    virtual bool HasDots(const Slice&) = 0;
    // No more than that.
    virtual bool HasOnlyDots(const Slice&) = 0;
};

// The calls of all functions, cut into slices and merged, as a view shows them.
//
// Jobs follow each other, and a slice lies within one job, so what is merged within one job has
// nothing to do with the others. So only the jobs that show are merged: of those that share a
// pixel column the last ones, until what shows is found. Where jobs overlap, which no reader
// leaves, all that the view looks at is merged.
class SliceIndex {
public:
    // Borrows all.
    SliceIndex(const McuJobList&, JobStripIndex& jobs, CallOrder&);

    // Whether no slice reaches beyond the start of the next.
    bool FollowEachOther() const { return m_IsOrdered; }

    // The slices of a view by start. Left out are slices without a length in pixels whose dots are
    // covered by those of a later one in their column.
    const std::vector<Slice>& Show(const CallView&, SliceTexts&);

private:
    // A slice before it is merged.
    struct Piece {
        Slice m_Slice;
        int m_Job;
        std::int32_t m_Call;  // among the function's
    };

    const McuJob& JobAt(int index) const;
    int GroupStart(int job) const;

    void MergeTangled();
    void AddJobs(int first, int last);
    void AskFor(const RecordColumn&) const;
    void AddColumn(const RecordColumn&, SliceTexts&);
    bool IsEnough(const RecordColumn&, SliceTexts&) const;

    void MergeJobs(int first, int last, std::vector<Slice>& slices);
    bool MayRun(int first, int last);
    void FindCalls(int first, int last);
    bool RunsAgain(const TimedCall&, int name, int job) const;
    void Cut(const TimedCall&, int first, int last);
    void MergeGroup(std::size_t first, std::size_t last, std::vector<Slice>& slices);
    bool MayMergeFlat(std::size_t first, std::size_t last) const;
    void MergeInMaps(std::size_t first, std::size_t last, std::vector<Slice>& slices);

    const McuJobList& m_List;
    JobStripIndex& m_Jobs;
    CallOrder& m_Order;
    bool m_IsOrdered;
    CallView m_View;
    bool m_IsShown = false;
    std::vector<Slice> m_Slices;
    int m_Enough = 1;  // jobs at a column's end that gave enough slices the last time
    // Reused from job to job.
    std::vector<const TimedCall*> m_Open;
    std::vector<Piece> m_Pieces;
    std::vector<Slice> m_Group;
    std::vector<Slice> m_Column;
    std::vector<Slice> m_Part;
    mutable std::vector<std::uint64_t> m_Names;
};

}  // namespace vesk
