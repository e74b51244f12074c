#include "timeline/FrameIndex.h"

#include <algorithm>

namespace vesk {

namespace {

constexpr int kGroup = 64;

}  // namespace

FrameIndex::FrameIndex(const std::vector<McuJob>& jobs) : m_Jobs(jobs) {
    for (std::size_t groups = jobs.size(); groups > 1;) {
        groups = (groups - 1) / kGroup + 1;
        m_Levels.emplace_back(groups);
    }
}

int FrameIndex::LastBelow(int before, std::int32_t frame) {
    return LastHit(
        Shape(), 0, before, [&](int level, int group) { return Of(level, group).m_Least < frame; },
        [&](int job) { return m_Jobs[static_cast<std::size_t>(job)].m_TimeStamp < frame; });
}

int FrameIndex::FirstFrom(int first, std::int32_t frame) {
    return FirstHit(
        Shape(), first, static_cast<int>(m_Jobs.size()),
        [&](int level, int group) { return Of(level, group).m_Greatest >= frame; },
        [&](int job) { return m_Jobs[static_cast<std::size_t>(job)].m_TimeStamp >= frame; });
}

Pyramid FrameIndex::Shape() const {
    return {static_cast<int>(m_Jobs.size()), kGroup, kGroup, static_cast<int>(m_Levels.size()),
            false};
}

void FrameIndex::Range::Add(const Range& other) {
    m_Least = std::min(m_Least, other.m_Least);
    m_Greatest = std::max(m_Greatest, other.m_Greatest);
}

const FrameIndex::Range& FrameIndex::Of(int level, int group) {
    const auto l = static_cast<std::size_t>(level);
    Range& range = m_Levels[l][static_cast<std::size_t>(group)];
    if (range.m_Least <= range.m_Greatest) return range;
    const std::size_t places = level == 0 ? m_Jobs.size() : m_Levels[l - 1].size();
    const std::int64_t first = std::int64_t{group} * kGroup;
    const auto end = std::min(first + kGroup, static_cast<std::int64_t>(places));
    for (auto place = first; place < end; ++place) range.Add(Below(level, static_cast<int>(place)));
    return range;
}

// What a place of a level's row stands for: a job, or a group of the level below.
FrameIndex::Range FrameIndex::Below(int level, int place) {
    if (level > 0) return Of(level - 1, place);
    const std::int32_t frame = m_Jobs[static_cast<std::size_t>(place)].m_TimeStamp;
    return {frame, frame};
}

}  // namespace vesk
