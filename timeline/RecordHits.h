#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "log/McuJob.h"

namespace vesk {

// Which records of one sequence can lie under a point of time, so that a walk over the visible ones
// need not look at each of them. Built in one pass; an eighth of a byte a record. Borrows the
// records.
class RecordHits {
public:
    RecordHits(const std::vector<McuJob>& records, std::uint64_t logEnd);

    // Whether the starts ascend. Where they do not, only a walk over all records is right.
    bool IsAscending() const { return m_IsAscending; }

    // The first of records [first, last) whose start is not passed; last if all are. Once a start
    // is not passed, no later one is.
    template <class IsPassed>
    int FirstStart(int first, int last, IsPassed isPassed) const {
        const auto begin = m_Records.begin();
        const auto at =
            std::partition_point(begin + first, begin + std::max(first, last),
                                 [&](const McuJob& job) { return isPassed(job.m_StartTime); });
        return static_cast<int>(at - begin);
    }

    // The first of records [first, last) whose effective end is reached; last if none is. If an end
    // is reached, so are all later times.
    template <class IsReached>
    int FirstEnd(int first, int last, IsReached isReached) const {
        return Find(0, first, last, isReached);
    }

private:
    static constexpr int kGroup = 64;  // records of a block, blocks of one in the next level

    // Level 0 are the records themselves.
    std::uint64_t At(std::size_t level, int place) const;

    template <class IsReached>
    int Find(std::size_t level, int first, int last, IsReached isReached) const {
        const auto look = [&](int from, int to) {
            while (from < to && !isReached(At(level, from))) ++from;
            return from;
        };
        const int firstGroup = (first + kGroup - 1) / kGroup;
        const int lastGroup = last / kGroup;
        if (level >= m_Levels.size() || firstGroup >= lastGroup) return look(first, last);
        const int found = look(first, firstGroup * kGroup);
        if (found < firstGroup * kGroup) return found;
        return look(Find(level + 1, firstGroup, lastGroup, isReached) * kGroup, last);
    }

    const std::vector<McuJob>& m_Records;
    std::uint64_t m_LogEnd;
    bool m_IsAscending = true;
    std::vector<std::vector<std::uint64_t>> m_Levels;  // latest ends, first over blocks of records
};

}  // namespace vesk
