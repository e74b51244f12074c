#pragma once

#include <cstdint>
#include <memory_resource>
#include <vector>

#include "timeline/CallIndex.h"
#include "timeline/NameColumn.h"
#include "timeline/SliceMerge.h"

class McuJobList;

namespace vesk {

// The calls that a view looks at, [first, last) of each function in map order, and its span of
// time, both ends included.
struct CallView {
    const std::vector<std::int32_t>& m_First;
    const std::vector<std::int32_t>& m_Last;
    std::uint64_t m_Begin;
    std::uint64_t m_End;
};

// The calls of all functions, cut into slices and merged, as a view shows them.
//
// Jobs follow each other, and a slice lies within one job, so what is merged within one job has
// nothing to do with the others. A job that lies within the view, and all of whose calls the view
// looks at, is merged alike in every such view: that is done once for the whole log, on first use,
// and kept in 20 bytes a slice, which holds start, end, function and flags and nothing of the calls
// they came from. Only the jobs at the view's edges are merged for each view. Where jobs overlap,
// which no reader leaves, every view is merged by itself.
class SliceIndex {
public:
    // All are borrowed; the lanes are those of all functions in map order.
    SliceIndex(const McuJobList&, const NameColumn& jobNames, std::vector<CallIndex*> lanes);

    void Show(const CallView&);

    // What the view shows, in three parts that follow each other in time.
    const std::vector<Slice>& Left() const { return m_Left; }
    const std::vector<Slice>& Right() const { return m_Right; }
    int WithinFirst() const { return m_WithinFirst; }
    int WithinLast() const { return m_WithinLast; }
    Slice At(int index) const;
    std::uint64_t StartOf(int index) const { return m_Starts[static_cast<std::size_t>(index)]; }

private:
    bool JobsFollowEachOther() const;
    const McuJob& JobAt(int index) const;
    int FirstJobFrom(int first, int last, std::uint64_t time) const;
    int GroupStart(int job) const;
    // Jobs [first, last) that lie within the view and all of whose calls it looks at.
    void FindWithin(const CallView&, int& first, int& last) const;
    bool IsSmall(const CallView&, int jobs) const;

    void Build();
    void MergeTangled(const CallView&, std::vector<Slice>& slices);
    // The slices of jobs [first, last), which are whole groups of jobs with one start.
    void MergeJobs(const CallView&, int first, int last, std::vector<Slice>& slices);
    void Cut(std::size_t lane, int call, int first, int last, SliceMap& merged, SliceMap& pieces);
    bool KeepWhole(std::size_t lane, int job, const Slice& piece, int first, SliceMap& merged);
    void TakeOver(const SliceMap& merged, int first, std::vector<Slice>& slices);
    int LastBefore(std::uint64_t time, int first, int last) const;

    const McuJobList& m_List;
    const NameColumn& m_JobNames;
    const std::vector<CallIndex*> m_Lanes;
    bool m_IsOrdered;
    bool m_IsBuilt = false;
    std::vector<std::uint64_t> m_Starts;
    std::vector<std::uint64_t> m_Ends;
    std::vector<std::uint32_t> m_Functions;  // times 8, with the flags
    std::vector<Slice> m_Left;
    std::vector<Slice> m_Right;
    int m_WithinFirst = 0;
    int m_WithinLast = 0;
    // While all of the log is merged, per job at hand: the function whose slice is all of the job
    // and has no flags. Calls that last for many jobs mostly have such slices, and of equal ones
    // the first stays; that needs no map.
    std::vector<int> m_Whole;
};

}  // namespace vesk
