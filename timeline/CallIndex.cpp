#include "timeline/CallIndex.h"

#include <algorithm>

namespace vesk {

CallIndex::CallIndex(int function, const std::vector<McuJob>& calls, std::uint64_t logEnd)
    : m_Function(function), m_Calls(calls), m_LogEnd(logEnd) {
    const std::size_t blocks = (calls.size() + kGroup - 1) / kGroup;
    m_Starts.reserve(blocks);
    m_Overlaps.assign(blocks / 64 + 1, 0);
    m_Latest.emplace_back(blocks);
    for (int i = 0; i < static_cast<int>(calls.size()); ++i) Add(i);
    BuildLevels();
}

void CallIndex::Add(int call) {
    const auto at = static_cast<std::size_t>(call);
    const auto block = static_cast<std::size_t>(call / kGroup);
    if (call % kGroup == 0) m_Starts.push_back(m_Calls[at].m_StartTime);
    const std::uint64_t end = EndOf(call);
    m_Latest[0][block] = std::max(m_Latest[0][block], end);
    if (at + 1 == m_Calls.size()) return;
    const std::uint64_t next = m_Calls[at + 1].m_StartTime;
    if (next < m_Calls[at].m_StartTime) m_IsAscending = false;
    if (next < end) m_Overlaps[block / 64] |= std::uint64_t{1} << block % 64;
}

void CallIndex::BuildLevels() {
    while (m_Latest.back().size() > kGroup) {
        const std::vector<std::uint64_t>& lower = m_Latest.back();
        std::vector<std::uint64_t> level((lower.size() + kGroup - 1) / kGroup);
        for (std::size_t i = 0; i < lower.size(); ++i)
            level[i / kGroup] = std::max(level[i / kGroup], lower[i]);
        m_Latest.push_back(std::move(level));
    }
}

int CallIndex::FirstFrom(int first, int last, std::uint64_t time) const {
    if (first >= last) return last;
    const int block = FirstBlockFrom(first / kGroup + 1, (last - 1) / kGroup + 1, time);
    const int low = std::max(first, (block - 1) * kGroup);
    const int high = block <= (last - 1) / kGroup ? block * kGroup : last;
    const auto found =
        std::partition_point(m_Calls.begin() + low, m_Calls.begin() + high,
                             [&](const McuJob& call) { return call.m_StartTime < time; });
    return static_cast<int>(found - m_Calls.begin());
}

// Doubling steps, then halving: near ends are found at once.
int CallIndex::FirstBlockFrom(int first, int last, std::uint64_t time) const {
    const auto startOf = [this](int block) { return m_Starts[static_cast<std::size_t>(block)]; };
    int step = 1;
    while (step <= last - first && startOf(first + step - 1) < time) {
        first += step;
        step *= 2;
    }
    const auto begin = m_Starts.begin();
    const auto found =
        std::lower_bound(begin + first, begin + std::min(last, first + step - 1), time);
    return static_cast<int>(found - begin);
}

bool CallIndex::FollowEachOther(int first, int last) const {
    if (first >= last) return true;
    const auto from = static_cast<std::size_t>(first / kGroup);
    const auto to = static_cast<std::size_t>((last - 1) / kGroup);
    for (std::size_t word = from / 64; word <= to / 64; ++word) {
        std::uint64_t bits = m_Overlaps[word];
        if (word == from / 64) bits &= UINT64_MAX << from % 64;
        if (word == to / 64) bits &= UINT64_MAX >> (63 - to % 64);
        if (bits != 0) return false;
    }
    return true;
}

std::uint64_t CallIndex::LatestEnd(int first, int last) const {
    std::uint64_t latest = 0;
    const auto note = [&](std::uint64_t end) { latest = std::max(latest, end); };
    const auto take = [&](int call) {
        note(EndOf(call));
        return true;
    };
    Sweep(first, last, UINT64_MAX, note, take);
    return latest;
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

}  // namespace vesk
