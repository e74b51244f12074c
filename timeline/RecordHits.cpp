#include "timeline/RecordHits.h"

#include "timeline/RecordOrder.h"

namespace vesk {

namespace {

constexpr std::size_t BlocksOf(std::size_t count, int size) {
    return (count + static_cast<std::size_t>(size) - 1) / static_cast<std::size_t>(size);
}

}  // namespace

RecordHits::RecordHits(const std::vector<McuJob>& records, std::uint64_t logEnd)
    : m_Records(records), m_LogEnd(logEnd) {
    auto below = static_cast<int>(records.size());
    std::uint64_t start = 0;
    for (std::size_t level = 0; level == 0 || below > kGroup; ++level) {
        std::vector<std::uint64_t> ends(BlocksOf(static_cast<std::size_t>(below), kGroup));
        for (int i = 0; i < below; ++i) {
            std::uint64_t& end = ends[static_cast<std::size_t>(i / kGroup)];
            end = std::max(end, At(level, i));
            if (level > 0) continue;
            const std::uint64_t next = records[static_cast<std::size_t>(i)].m_StartTime;
            if (next < start) m_IsAscending = false;
            start = next;
        }
        below = static_cast<int>(ends.size());
        m_Levels.push_back(std::move(ends));
    }
}

std::uint64_t RecordHits::At(std::size_t level, int place) const {
    if (level == 0) return EffectiveEnd(m_Records, place, m_LogEnd);
    return m_Levels[level - 1][static_cast<std::size_t>(place)];
}

}  // namespace vesk
