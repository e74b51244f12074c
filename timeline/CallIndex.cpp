#include "timeline/CallIndex.h"

#include <algorithm>

namespace vesk {

namespace {

bool StartsBefore(const McuJob& a, const McuJob& b) {
    return a.m_StartTime < b.m_StartTime;
}

}  // namespace

CallIndex::CallIndex(const std::vector<McuJob>& calls, std::uint64_t logEnd)
    : m_Calls(calls), m_LogEnd(logEnd), m_Order(calls) {
    m_Order.AddAll();
    m_IsAscending = std::is_sorted(calls.begin(), calls.end(), StartsBefore);
    auto below = static_cast<int>(calls.size());
    for (std::size_t level = 0; below > kGroup; ++level) {
        std::vector<std::uint64_t> ends(static_cast<std::size_t>((below + kGroup - 1) / kGroup));
        for (int i = 0; i < below; ++i) {
            std::uint64_t& end = ends[static_cast<std::size_t>(i / kGroup)];
            end = std::max(end, At(level, i));
        }
        below = static_cast<int>(ends.size());
        m_Levels.push_back(std::move(ends));
    }
}

std::uint64_t CallIndex::At(std::size_t level, int place) const {
    return level == 0 ? EndOf(place) : m_Levels[level - 1][static_cast<std::size_t>(place)];
}

std::uint64_t CallIndex::LatestEnd(int first, int last) const {
    return LatestOf(0, first, last);
}

// An end that was not recorded is taken from the next start, so it does not lie behind a time that
// the next calls start before.
std::uint64_t CallIndex::LatestRecordedEnd(int before, std::uint64_t time) const {
    const auto last = static_cast<std::size_t>(before);
    if (m_IsAscending && last < m_Calls.size() && m_Calls[last].m_StartTime <= time) {
        const std::uint64_t latest = LatestEnd(0, before);
        return latest > time ? latest : 0;
    }
    std::uint64_t latest = 0;
    for (std::size_t i = 0; i < last; ++i)
        if (m_Calls[i].m_EndTime > time) latest = std::max(latest, m_Calls[i].m_EndTime);
    return latest;
}

int CallIndex::FirstEndingFrom(int first, int last, std::uint64_t time) const {
    return FirstFrom(0, first, last, time);
}

std::uint64_t CallIndex::LatestOf(std::size_t level, int first, int last) const {
    std::uint64_t latest = 0;
    const auto look = [&](int from, int to) {
        for (int i = from; i < to; ++i) latest = std::max(latest, At(level, i));
    };
    const int firstGroup = (first + kGroup - 1) / kGroup;
    const int lastGroup = last / kGroup;
    if (level >= m_Levels.size() || firstGroup >= lastGroup) {
        look(first, last);
        return latest;
    }
    look(first, firstGroup * kGroup);
    latest = std::max(latest, LatestOf(level + 1, firstGroup, lastGroup));
    look(lastGroup * kGroup, last);
    return latest;
}

int CallIndex::FirstFrom(std::size_t level, int first, int last, std::uint64_t time) const {
    const auto look = [&](int from, int to) {
        while (from < to && At(level, from) < time) ++from;
        return from;
    };
    const int firstGroup = (first + kGroup - 1) / kGroup;
    const int lastGroup = last / kGroup;
    if (level >= m_Levels.size() || firstGroup >= lastGroup) return look(first, last);
    const int found = look(first, firstGroup * kGroup);
    if (found < firstGroup * kGroup) return found;
    const int group = FirstFrom(level + 1, firstGroup, lastGroup, time);
    return look(group * kGroup, last);
}

}  // namespace vesk
