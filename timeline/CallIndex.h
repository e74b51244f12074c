#pragma once

#include <cstdint>
#include <vector>

#include "timeline/RecordOrder.h"

namespace vesk {

// What painting wants to know of the calls of one function, which ascend in start but may overlap:
// their columns, and the greatest effective end in any stretch of them. Borrows the calls. Less
// than a byte a call.
class CallIndex {
public:
    CallIndex(const std::vector<McuJob>& calls, std::uint64_t logEnd);

    const std::vector<McuJob>& Calls() const { return m_Calls; }
    RecordOrder& Order() { return m_Order; }
    bool IsAscending() const { return m_IsAscending; }
    std::uint64_t EndOf(int call) const { return EffectiveEnd(m_Calls, call, m_LogEnd); }

    // The greatest end of calls [first, last); 0 for none.
    std::uint64_t LatestEnd(int first, int last) const;
    // The greatest recorded end of the calls before one, as far as it lies behind time; 0 if none
    // does.
    std::uint64_t LatestRecordedEnd(int before, std::uint64_t time) const;
    // The first of calls [first, last) that ends at or after time; last if none does.
    int FirstEndingFrom(int first, int last, std::uint64_t time) const;

private:
    static constexpr int kGroup = 16;  // calls of a block, blocks of one in the next level

    std::uint64_t LatestOf(std::size_t level, int first, int last) const;
    int FirstFrom(std::size_t level, int first, int last, std::uint64_t time) const;
    // Level 0 are the calls themselves.
    std::uint64_t At(std::size_t level, int place) const;

    const std::vector<McuJob>& m_Calls;
    std::uint64_t m_LogEnd;
    RecordOrder m_Order;
    bool m_IsAscending = true;
    std::vector<std::vector<std::uint64_t>> m_Levels;  // the first one over blocks of calls
};

}  // namespace vesk
