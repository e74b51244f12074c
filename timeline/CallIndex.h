#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "timeline/RecordOrder.h"

namespace vesk {

// What painting wants to know of the calls of one function, which ascend in start but may overlap:
// where a time lies among them, and how far any stretch of them reaches. Borrows the calls. About
// a byte a call.
class CallIndex {
public:
    // The function counts in map order.
    CallIndex(int function, const std::vector<McuJob>& calls, std::uint64_t logEnd);

    int Function() const { return m_Function; }

    const std::vector<McuJob>& Calls() const { return m_Calls; }
    bool IsAscending() const { return m_IsAscending; }
    std::uint64_t EndOf(int call) const { return EffectiveEnd(m_Calls, call, m_LogEnd); }

    // The first of calls [first, last) that starts at or after time; last if none does. For calls
    // that ascend.
    int FirstFrom(int first, int last, std::uint64_t time) const;
    // Whether none of calls [first, last) reaches beyond the start of the next.
    bool FollowEachOther(int first, int last) const;
    // The greatest recorded end of the calls before one, as far as it lies behind time; 0 if none
    // does.
    std::uint64_t LatestRecordedEnd(int before, std::uint64_t time) const;

    // Hands out those of calls [first, last) that end at or after time, in order, and before each
    // and behind the last one the greatest end of the others since. Stops where `take` says so.
    template <class Skip, class Take>
    bool Sweep(int first, int last, std::uint64_t time, Skip skip, Take take) const;

private:
    static constexpr int kGroup = 16;  // calls of a block, blocks of one in the next level

    void Add(int call);
    void BuildLevels();
    int FirstBlockFrom(int first, int last, std::uint64_t time) const;
    std::uint64_t LatestEnd(int first, int last) const;

    const int m_Function;
    const std::vector<McuJob>& m_Calls;
    std::uint64_t m_LogEnd;
    bool m_IsAscending = true;
    std::vector<std::uint64_t> m_Starts;               // of the first call of each block
    std::vector<std::uint64_t> m_Overlaps;             // a bit a block
    std::vector<std::vector<std::uint64_t>> m_Latest;  // the greatest end, level by level
};

template <class Skip, class Take>
bool CallIndex::Sweep(int first, int last, std::uint64_t time, Skip skip, Take take) const {
    std::uint64_t latest = 0;
    bool hasSkipped = false;
    for (int i = first; i < last;) {
        int size = 1;
        std::uint64_t end = 0;
        // The largest block that begins here and has no call to take.
        for (const std::vector<std::uint64_t>& level : m_Latest) {
            const int wider = size * kGroup;
            if (i % wider != 0 || wider > last - i) break;
            const std::uint64_t widerEnd = level[static_cast<std::size_t>(i / wider)];
            if (widerEnd >= time) break;
            size = wider;
            end = widerEnd;
        }
        if (size == 1) end = EndOf(i);
        if (end < time) {
            latest = end > latest ? end : latest;
            hasSkipped = true;
        } else {
            if (hasSkipped) skip(latest);
            if (!take(i)) return false;
            latest = 0;
            hasSkipped = false;
        }
        i += size;
    }
    if (hasSkipped) skip(latest);
    return true;
}

}  // namespace vesk
