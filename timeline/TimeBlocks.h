#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "platform/Prefetch.h"
#include "timeline/ColumnRuns.h"
#include "timeline/NearSearch.h"
#include "timeline/TimeScale.h"

namespace vesk {

// The start of every 16th record of a sequence that ascends in start: a search looks at few, near
// numbers, and guesses the record from them. Half a byte a record.
//
// In all searches start(i) gives a reference to the start of record i.
class TimeBlocks {
public:
    static constexpr int kBlock = 16;

    void Reserve(std::size_t records) { m_Starts.reserve((records + kBlock - 1) / kBlock); }
    // Takes the start of the next record.
    void Add(std::uint64_t start) {
        if (m_Count++ % kBlock == 0) m_Starts.push_back(start);
    }
    int Count() const { return m_Count; }

    // The first of records [first, last) that starts at or after time; last if none does.
    template <class Start>
    int FirstFrom(int first, int last, std::uint64_t time, Start start) const {
        if (first >= last) return last;
        return FindRecord(GuessRecord(first, last, time, first / kBlock), time, start);
    }

    // Groups records [first, last) by pixel column, as FindColumnRuns does.
    template <class Start>
    void FindRuns(const TimeScale& scale, int first, int last, Start start,
                  std::vector<ColumnRun>& runs) const {
        runs.clear();
        if (first >= last) return;
        const std::int64_t x = scale.PixelAt(start(first));
        const std::int64_t end = scale.PixelAt(start(last - 1));
        const bool isDense = x >= 0 && end < INT32_MAX && (end - x + 1) * kBlock <= last - first;
        if (isDense) {
            FindDense(scale, first, last, {static_cast<int>(x), static_cast<int>(end)}, start,
                      runs);
        } else {
            FindSparse(scale, first, last, start, runs);
        }
    }

private:
    static constexpr int kAhead = 32;  // columns that are looked for at once
    static constexpr int kFar = 8;     // columns, ahead of the one that is guessed

    struct Columns {
        int m_First;
        int m_Last;  // inclusive
    };

    // Those about a place that is only guessed.
    void AskForBlocks(int near) const {
        constexpr int kGuess = 2;
        if (near < kGuess || near + kGuess >= static_cast<int>(m_Starts.size())) return;
        Prefetch(&m_Starts[static_cast<std::size_t>(near - kGuess)]);
        Prefetch(&m_Starts[static_cast<std::size_t>(near + kGuess)]);
    }

    std::uint64_t StartOf(int block) const { return m_Starts[static_cast<std::size_t>(block)]; }

    // Records are taken to follow each other evenly within a block.
    NearPlace GuessRecord(int first, int last, std::uint64_t time, int nearBlock) const {
        const int lastBlock = (last - 1) / kBlock;
        const int block = FindNear({first / kBlock + 1, lastBlock + 1, nearBlock},
                                   [&](int i) { return StartOf(i) < time; });
        const int before = (block - 1) * kBlock;
        const int low = std::max(first, before);
        if (block > lastBlock) return {low, last, low};
        const std::uint64_t from = StartOf(block - 1);
        const auto span = static_cast<double>(std::max<std::uint64_t>(StartOf(block) - from, 1));
        const auto part = static_cast<double>(time > from ? time - from : 0);
        return {low, block * kBlock, before + static_cast<int>(part * kBlock / span)};
    }

    template <class Start>
    static int FindRecord(const NearPlace& guess, std::uint64_t time, Start start) {
        return FindNear(guess, [&](int i) { return start(i) < time; });
    }

    // Many records a column: several ends are guessed and asked for before the first is looked at.
    template <class Start>
    void FindDense(const TimeScale& scale, int first, int last, const Columns& columns, Start start,
                   std::vector<ColumnRun>& runs) const {
        std::array<std::uint64_t, kAhead> times;
        std::array<NearPlace, kAhead> guesses;
        const int pace = (last - first) / (columns.m_Last - columns.m_First + 1) / kBlock;
        int block = first / kBlock;
        for (int x = columns.m_First; x <= columns.m_Last; x += kAhead) {
            const int count = std::min(kAhead, columns.m_Last - x + 1);
            for (int i = 0; i < count; ++i) {
                const auto at = static_cast<std::size_t>(i);
                times[at] = scale.FirstTimeAt(std::int64_t{x} + i + 1);
                guesses[at] = GuessRecord(first, last, times[at], block + pace);
                block = guesses[at].m_Low / kBlock;
                AskForBlocks(block + kFar * pace);
            }
            // All at once: each of them may have to wait for the page that it is on.
            for (int i = 0; i < count; ++i)
                Prefetch(&start(std::min(guesses[static_cast<std::size_t>(i)].m_Near, last - 1)));
            for (int i = 0; i < count; ++i)
                Prefetch(&start(
                    std::clamp(guesses[static_cast<std::size_t>(i)].m_Near - 1, first, last - 1)));
            for (int i = 0; i < count; ++i) {
                const auto at = static_cast<std::size_t>(i);
                const int end = FindRecord(guesses[at], times[at], start);
                if (end > first) runs.push_back({x + i, first, end});
                first = std::max(first, end);
            }
        }
    }

    template <class Start>
    void FindSparse(const TimeScale& scale, int first, int last, Start start,
                    std::vector<ColumnRun>& runs) const {
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

    std::vector<std::uint64_t> m_Starts;
    int m_Count = 0;
};

}  // namespace vesk
