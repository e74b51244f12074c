#include "timeline/SliceMerge.h"

#include <algorithm>
#include <iterator>

#include "log/McuJob.h"

namespace vesk {

namespace {

// Merges slices of one call one after the other.
class CallMerge {
public:
    CallMerge(SliceMap& merged, SliceMap& call, const SliceWindow& window)
        : m_Merged(merged), m_Call(call), m_Window(window) {}

    void Run() {
        for (auto at = m_Call.begin(); at != m_Call.end();) {
            m_New = at->second;
            if (m_New.m_Start <= m_Window.m_End && m_New.m_End >= m_Window.m_Begin) Compare();
            at = m_Call.upper_bound(m_New.m_Start);
        }
        for (const auto& [start, slice] : m_Call) m_Merged.emplace(start, slice);
        m_Call.clear();
    }

private:
    using Place = SliceMap::iterator;

    static void Enter(SliceMap& slices, Slice of, std::uint64_t start, std::uint64_t end,
                      int mask) {
        of.m_Start = start;
        of.m_End = end;
        of.m_Flags = static_cast<std::uint8_t>(of.m_Flags & mask);
        slices.emplace(start, of);
    }

    void Compare() {
        m_HasLeft = false;
        bool mayJump = !m_Window.m_IsTangled;
        for (Place at = m_Merged.begin(); at != m_Merged.end() && !m_HasLeft;) {
            if (mayJump && at->first >= m_Window.m_Begin) {
                at = FirstToMeet(at);
                mayJump = false;
            }
            const Slice& old = at->second;
            if (old.m_Start >= m_New.m_End) return;
            at = old.m_End > m_New.m_Start ? Settle(at) : std::next(at);
        }
    }

    // The last slice that starts no later than the new one, but none before `at`.
    Place FirstToMeet(Place at) {
        if (at->first >= m_New.m_Start) return at;
        return std::prev(m_Merged.upper_bound(m_New.m_Start));
    }

    // The two overlap. Gives the place of the next slice to compare.
    Place Settle(Place at) {
        const Slice old = at->second;
        if (old.m_Start < m_New.m_Start) return CutOldEnd(at, old);
        if (old.m_End > m_New.m_End) {
            const Place next = m_Merged.erase(at);
            Enter(m_Merged, old, m_New.m_End, old.m_End, kAll);
            return next;
        }
        if (old.m_Start == m_New.m_Start && old.m_End == m_New.m_End) return SettleEqual(at, old);
        CutNew(old);
        return std::next(at);
    }

    Place CutOldEnd(Place at, const Slice& old) {
        const bool isCutInTwo = old.m_End > m_New.m_End;
        const Place next = m_Merged.erase(at);
        Enter(m_Merged, old, old.m_Start, m_New.m_Start, isCutInTwo ? kBeganAtEntry : kAll);
        if (isCutInTwo) Enter(m_Merged, old, m_New.m_End, old.m_End, kClosedLastCall);
        return next;
    }

    Place SettleEqual(Place at, const Slice& old) {
        if (old.m_Flags == 0 && m_New.m_Flags != 0) return m_Merged.erase(at);
        m_Call.erase(m_New.m_Start);
        m_HasLeft = true;
        return at;
    }

    // The old slice lies within the new one.
    void CutNew(const Slice& old) {
        const Slice whole = m_New;
        m_Call.erase(whole.m_Start);
        if (old.m_Start == whole.m_Start) {
            m_New.m_Start = old.m_End;
        } else if (old.m_End == whole.m_End) {
            m_New.m_End = old.m_Start;
        } else {
            m_New.m_Start = old.m_End;
            m_New.m_Flags &= kClosedLastCall;
            Enter(m_Call, m_New, m_New.m_Start, m_New.m_End, kAll);
            Enter(m_Call, whole, whole.m_Start, old.m_Start, kBeganAtEntry);
            return;
        }
        Enter(m_Call, m_New, m_New.m_Start, m_New.m_End, kAll);
    }

    static constexpr int kAll = 255;

    SliceMap& m_Merged;
    SliceMap& m_Call;
    const SliceWindow& m_Window;
    Slice m_New;
    bool m_HasLeft = false;
};

// The old slice holds the new one.
void CutInTwo(std::vector<Slice>& merged, std::vector<Slice>::iterator old, const Slice& slice) {
    Slice right = *old;
    right.m_Start = slice.m_End;
    right.m_Flags &= kClosedLastCall;
    old->m_End = slice.m_Start;
    old->m_Flags &= kBeganAtEntry;
    merged.insert(old + 1, {slice, right});
}

}  // namespace

void MergeCall(SliceMap& merged, SliceMap& call, const SliceWindow& window) {
    CallMerge(merged, call, window).Run();
}

void MergeSlice(std::vector<Slice>& merged, Slice slice) {
    auto at = std::partition_point(merged.begin(), merged.end(),
                                   [&](const Slice& old) { return old.m_End <= slice.m_Start; });
    for (; at != merged.end() && at->m_Start < slice.m_End; ++at) {
        if (at->m_Start < slice.m_Start) {
            if (at->m_End > slice.m_End) {
                CutInTwo(merged, at, slice);
                return;
            }
            at->m_End = slice.m_Start;
        } else if (at->m_End > slice.m_End) {
            at->m_Start = slice.m_End;
            break;
        } else if (at->m_Start == slice.m_Start && at->m_End == slice.m_End) {
            if (at->m_Flags == 0 && slice.m_Flags != 0) *at = slice;
            return;
        } else if (at->m_Start == slice.m_Start) {
            slice.m_Start = at->m_End;
        } else if (at->m_End == slice.m_End) {
            slice.m_End = at->m_Start;
            break;
        } else {
            Slice left = slice;
            left.m_End = at->m_Start;
            left.m_Flags &= kBeganAtEntry;
            slice.m_Start = at->m_End;
            slice.m_Flags &= kClosedLastCall;
            at = merged.insert(at, left) + 1;
        }
    }
    merged.insert(at, slice);
}

}  // namespace vesk
