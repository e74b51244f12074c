#pragma once

#include <cstdint>
#include <vector>

#include "timeline/TimeBlocks.h"

class McuJobList;

namespace vesk {

// Times and extra values of all samples side by side, and the least and greatest of each value over
// stretches of samples, so that a column's samples need not be looked at one by one. Eight and a
// half bytes a sample, and four and a half for each of its values.
class CurveIndex {
public:
    struct Range {
        std::uint32_t m_Least = UINT32_MAX;
        std::uint32_t m_Greatest = 0;
        void Widen(const Range& other) {
            m_Least = std::min(m_Least, other.m_Least);
            m_Greatest = std::max(m_Greatest, other.m_Greatest);
        }
    };

    explicit CurveIndex(const McuJobList&);  // borrowed

    // Whether the samples ascend in time, as they do after a read.
    bool IsAscending() const { return m_IsAscending; }
    const TimeBlocks& Times() const { return m_Blocks; }
    const std::uint64_t& TimeAt(int sample) const {
        return m_SampleTimes[static_cast<std::size_t>(sample)];
    }

    std::size_t Values() const { return m_Values; }  // of a sample
    // The values of a sample; 0 for those that it lacks.
    const std::uint32_t* ValuesAt(int sample) const {
        return m_SampleValues.data() + static_cast<std::size_t>(sample) * m_Values;
    }

    // --- Stretches -----------------------------------------------------------------------------

    // Stretch i of a level holds the steps from samples [i * StepsAt, (i + 1) * StepsAt) to the
    // ones behind them. Level 0 has the shortest stretches.
    static constexpr int StepsAt(int level) { return kLeaf << 3 * level; }
    int Levels() const { return static_cast<int>(m_Levels.size()); }
    Range RangeOf(int level, int stretch, int value) const {
        return m_Levels[static_cast<std::size_t>(
            level)][static_cast<std::size_t>(stretch) * m_Values + static_cast<std::size_t>(value)];
    }

    // Of a value, in all samples.
    Range RangeOfAll(int value) const;

private:
    static constexpr int kLeaf = 16;
    static constexpr std::size_t kFanOut = 8;

    void AddSamples(const McuJobList&);
    void AddLevel();

    std::size_t m_Values;
    bool m_IsAscending = true;
    TimeBlocks m_Blocks;
    std::vector<std::uint64_t> m_SampleTimes;   // of all samples
    std::vector<std::uint32_t> m_SampleValues;  // their values
    std::vector<std::vector<Range>> m_Levels;   // per stretch one of each value
};

}  // namespace vesk
