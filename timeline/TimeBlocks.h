#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "timeline/ColumnRuns.h"
#include "timeline/TimeScale.h"

namespace vesk {

// The start of every 64th record of a sequence that ascends in start: a search looks at few, near
// numbers instead of at records far apart.
class TimeBlocks {
public:
    static constexpr int kBlock = 64;

    // Takes the start of the next record.
    void Add(std::uint64_t start) {
        if (m_Count++ % kBlock == 0) m_Starts.push_back(start);
    }
    int Count() const { return m_Count; }

    // The first of records [first, last) that starts at or after time; last if none does.
    // start(i) is the start of record i.
    template <class Start>
    int FirstFrom(int first, int last, std::uint64_t time, Start start) const {
        if (first >= last) return last;
        const int block = FirstBlockFrom(first / kBlock + 1, (last - 1) / kBlock + 1, time);
        int low = std::max(first, (block - 1) * kBlock);
        int high = block <= (last - 1) / kBlock ? block * kBlock : last;
        while (low < high) {
            const int middle = low + (high - low) / 2;
            if (start(middle) < time) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        return low;
    }

    // The same as FindColumnRuns.
    template <class Start>
    void FindRuns(const TimeScale& scale, int first, int last, Start start,
                  std::vector<ColumnRun>& runs) const {
        runs.clear();
        while (first < last) {
            const std::int64_t x = scale.PixelAt(start(first));
            if (x < 0 || x > INT32_MAX) return;
            const int end = first + 1 == last || scale.PixelAt(start(first + 1)) > x
                                ? first + 1
                                : FirstFrom(first + 1, last, scale.FirstTimeAt(x + 1), start);
            runs.push_back({static_cast<int>(x), first, end});
            first = end;
        }
    }

private:
    // Doubling steps, then halving: near ends are found at once.
    int FirstBlockFrom(int first, int last, std::uint64_t time) const {
        int step = 1;
        while (first + step <= last && StartOf(first + step - 1) < time) {
            first += step;
            step *= 2;
        }
        const int most = std::min(last, first + step);
        const auto begin = m_Starts.begin();
        return static_cast<int>(
            std::lower_bound(begin + std::min(first, most), begin + most, time) - begin);
    }
    std::uint64_t StartOf(int block) const { return m_Starts[static_cast<std::size_t>(block)]; }

    std::vector<std::uint64_t> m_Starts;
    int m_Count = 0;
};

}  // namespace vesk
