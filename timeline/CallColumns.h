#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "timeline/CallOrder.h"
#include "timeline/TimeScale.h"

namespace vesk {

// The pixel columns of a view: where they begin in time, which functions have calls that start in
// them, and which of those have one that reaches out. Worked out once for the lanes of all
// functions.
class CallColumns {
public:
    // Turns to the columns from the scale's left edge to `right`. Costs nothing while they stay
    // the same.
    void Show(CallOrder&, const TimeScale&, int right);

    // Whether the column is one of those shown, and the calls of all functions are known.
    bool Has(std::int64_t x) const { return x >= m_Scale.m_Left && x < m_Right; }
    // The first time in column x or right of it.
    std::uint64_t StartOf(std::int64_t x) const {
        return Has(x) ? m_Starts[Place(x)] : m_Scale.FirstTimeAt(x);
    }
    // For a column shown.
    bool HasCalls(int x, int function) const { return IsIn(m_Present, x, function); }
    bool ReachOut(int x, int function) const { return IsIn(m_Reaching, x, function); }

private:
    void AddToReaching(std::size_t column);
    std::size_t Place(std::int64_t x) const { return static_cast<std::size_t>(x - m_Scale.m_Left); }
    bool IsIn(const std::vector<std::uint64_t>& sets, int x, int function) const {
        const auto bit = static_cast<std::size_t>(function);
        return (sets[Place(x) * m_Words + bit / 64] >> bit % 64 & 1) != 0;
    }

    const CallOrder* m_Order = nullptr;  // of the calls shown
    TimeScale m_Scale;
    int m_Right = INT32_MIN;  // the first column that is not known
    std::size_t m_Words = 1;
    std::vector<std::uint64_t> m_Starts;
    std::vector<std::uint64_t> m_Present;   // sets of functions, column by column
    std::vector<std::uint64_t> m_Reaching;  // the same
    std::vector<const TimedCall*> m_Open;
};

}  // namespace vesk
