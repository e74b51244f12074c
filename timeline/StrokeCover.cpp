#include "timeline/StrokeCover.h"

#include <algorithm>

namespace vesk {

// A stroke up to the row above the first one ends with that row's second half, outside.
StrokeCover::StrokeCover(int top, int bottom)
    : m_First(2 * std::int64_t{top} - 2), m_Last(2 * std::int64_t{bottom} + 2) {}

bool StrokeCover::Add(std::int64_t from, std::int64_t to) {
    const bool down = to > from;
    const std::int64_t first = std::max(down ? 2 * from : 2 * to + 1, m_First);
    const std::int64_t last = std::min(down ? 2 * to : 2 * from + 1, m_Last);
    if (from == to || HoldsHalves(first, last)) return false;
    m_Fresh.clear();
    auto begin = m_Solid.begin();
    while (begin != m_Solid.end() && begin->m_Last < first) ++begin;
    Stretch merged{first, last};
    std::int64_t seen = first;
    auto end = begin;
    for (; end != m_Solid.end() && end->m_First <= last; ++end) {
        NoteFresh(seen, end->m_First);
        seen = end->m_Last;
        merged = {std::min(merged.m_First, end->m_First), std::max(merged.m_Last, end->m_Last)};
    }
    NoteFresh(seen, last);
    if (begin == end) {
        m_Solid.insert(begin, merged);
    } else {
        *begin = merged;
        m_Solid.erase(begin + 1, end);
    }
    return true;
}

// The first half of a row holds all of its pixels there. Even numbers are first halves.
void StrokeCover::NoteFresh(std::int64_t first, std::int64_t last) {
    const auto top = static_cast<int>((first + 1) >> 1);
    const auto bottom = static_cast<int>((last + 1) >> 1);
    if (top < bottom) m_Fresh.push_back({top, bottom});
}

}  // namespace vesk
