#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace vesk {

// Which rows of one pixel column later vertical strokes cover, so that the earlier ones that
// cannot be seen need not be drawn. A stroke up leaves another pixel out at its ends than one
// down, so a row counts as two halves: down from row a to b covers both halves of a to b - 1, up
// from b to a the second half of a to the first half of b. That holds at every scale from 1 up.
//
// Made for strokes that meet, as those of a curve do: what they cover is few stretches.
class StrokeCover {
public:
    // Rows outside [top, bottom) count as covered: nothing is painted there.
    StrokeCover(int top, int bottom);
    void Clear() { m_Solid.clear(); }
    bool IsEmpty() const { return m_Solid.empty(); }

    struct Rows {
        int m_Top;
        int m_Bottom;  // exclusive
    };

    // Covers what a stroke paints. False if all of it was covered before.
    bool Add(std::int64_t from, std::int64_t to);
    // What the last stroke added, in rows: exact where a row is a whole number of device pixels.
    const std::vector<Rows>& Fresh() const { return m_Fresh; }
    // Whether any stroke between two rows is covered.
    bool Holds(std::int64_t top, std::int64_t bottom) const {
        return top == bottom ||
               HoldsHalves(std::max(2 * top, m_First), std::min(2 * bottom + 1, m_Last));
    }

private:
    // Half rows, the last one exclusive.
    struct Stretch {
        std::int64_t m_First;
        std::int64_t m_Last;
    };

    // Within the rows that are painted.
    bool HoldsHalves(std::int64_t first, std::int64_t last) const {
        for (const Stretch& stretch : m_Solid)
            if (first >= stretch.m_First && last <= stretch.m_Last) return true;
        return first >= last;
    }
    void NoteFresh(std::int64_t first, std::int64_t last);

    std::int64_t m_First;  // half rows
    std::int64_t m_Last;
    std::vector<Stretch> m_Solid;  // from the top down, with gaps between them
    std::vector<Rows> m_Fresh;
};

}  // namespace vesk
