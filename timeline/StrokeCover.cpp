#include "timeline/StrokeCover.h"

#include <algorithm>
#include <bit>

namespace vesk {

namespace {

// Calls visit(word, mask) for the words that hold bits [first, last), until it returns false.
template <class Visit>
bool EachWord(std::int64_t first, std::int64_t last, Visit visit) {
    for (std::int64_t at = first; at < last;) {
        const std::int64_t end = std::min(last, (at | 63) + 1);
        const std::uint64_t mask = (~std::uint64_t{0} >> (64 - (end - at))) << (at & 63);
        if (!visit(static_cast<std::size_t>(at >> 6), mask)) return false;
        at = end;
    }
    return true;
}

}  // namespace

// A stroke up to the row above the first one ends with that row's second half, outside.
StrokeCover::StrokeCover(int top, int bottom)
    : m_First(2 * std::int64_t{top} - 2), m_Last(std::max(m_First, 2 * std::int64_t{bottom} + 2)) {
    m_Covered.resize(static_cast<std::size_t>((m_Last - m_First + 63) / 64));
}

void StrokeCover::Clear() {
    std::fill(m_Covered.begin(), m_Covered.end(), 0);
    m_SolidFirst = m_SolidLast = 0;
}

bool StrokeCover::Add(std::int64_t from, std::int64_t to) {
    if (from == to) return false;
    const bool down = to > from;
    const std::int64_t first = std::max(down ? 2 * from : 2 * to + 1, m_First);
    const std::int64_t last = std::min(down ? 2 * to : 2 * from + 1, m_Last);
    if (HoldsHalves(first, last)) return false;
    m_Fresh.clear();
    EachWord(first - m_First, last - m_First, [&](std::size_t word, std::uint64_t mask) {
        NoteFresh(word, mask & ~m_Covered[word]);
        m_Covered[word] |= mask;
        return true;
    });
    // Strokes of a curve meet, so that one stretch soon holds nearly all of them.
    if (m_SolidFirst == m_SolidLast) {
        m_SolidFirst = first;
        m_SolidLast = last;
    } else if (first <= m_SolidLast && last >= m_SolidFirst) {
        m_SolidFirst = std::min(m_SolidFirst, first);
        m_SolidLast = std::max(m_SolidLast, last);
    }
    return true;
}

// The first half of a row holds all of its pixels there. Even bits are first halves.
void StrokeCover::NoteFresh(std::size_t word, std::uint64_t halves) {
    const auto wordTop = static_cast<int>(m_First / 2 + static_cast<std::int64_t>(word) * 32);
    std::uint64_t rows = halves & 0x5555555555555555;
    while (rows != 0) {
        const int begin = std::countr_zero(rows);
        const int length = std::countr_one((rows | rows << 1) >> begin);
        const int top = wordTop + begin / 2;
        if (m_Fresh.empty() || m_Fresh.back().m_Bottom != top) m_Fresh.push_back({top, top});
        m_Fresh.back().m_Bottom = top + (length + 1) / 2;
        if (begin + length >= 64) return;
        rows = rows >> (begin + length) << (begin + length);
    }
}

bool StrokeCover::Holds(std::int64_t top, std::int64_t bottom) const {
    if (top == bottom) return true;
    return HoldsHalves(std::max(2 * top, m_First), std::min(2 * bottom + 1, m_Last));
}

bool StrokeCover::HoldsHalves(std::int64_t first, std::int64_t last) const {
    if (first >= m_SolidFirst && last <= m_SolidLast) return true;
    return EachWord(first - m_First, last - m_First, [&](std::size_t word, std::uint64_t mask) {
        return (m_Covered[word] & mask) == mask;
    });
}

}  // namespace vesk
