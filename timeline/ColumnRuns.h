#pragma once

#include <cstdint>
#include <vector>

#include "timeline/TimeScale.h"

namespace vesk {

// Records of a time-sorted container that start in one pixel column: [m_First, m_Last), not empty.
struct ColumnRun {
    int m_X;
    int m_First;
    int m_Last;
    friend bool operator==(const ColumnRun&, const ColumnRun&) = default;
};

// Groups records [first, last) by the column that their visible start falls on, left to right.
// start(i) is the start time of record i, ascending; times before the left edge count as on it.
// Costs a few probes per column, however many records share it. Replaces `runs`.
template <class Start>
void FindColumnRuns(const TimeScale& scale, int first, int last, Start start,
                    std::vector<ColumnRun>& runs) {
    runs.clear();
    while (first < last) {
        const std::int64_t x = scale.PixelAt(start(first));
        if (x < 0 || x > INT32_MAX) return;
        const std::uint64_t end = scale.FirstTimeAt(x + 1);
        // Doubling steps, then halving: near ends are found at once.
        int low = first + 1;
        int step = 1;
        while (step <= last - low && start(low + step - 1) < end) {
            low += step;
            step *= 2;
        }
        int high = step <= last - low ? low + step - 1 : last;
        while (low < high) {
            const int middle = low + (high - low) / 2;
            if (start(middle) < end) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        runs.push_back({static_cast<int>(x), first, low});
        first = low;
    }
}

}  // namespace vesk
