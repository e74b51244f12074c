#pragma once

#include <algorithm>
#include <cstdint>

namespace vesk {

// Groups over a row of places: blocks of places at level 0, and so many groups of a level in one
// of the next. The last group of a level may be cut off.
struct Pyramid {
    int m_Count;  // places
    int m_Block;
    int m_FanOut;
    int m_Levels;
    // Whether groups cost nothing to ask for. If not, those that reach over the range asked for
    // are not: they could be far wider than it.
    bool m_IsKnown;
};

// The first of places [first, last) that is a hit, else last. mayHold(level, group) says of a group
// that it could hold one; groups that can't are passed over as a whole.
template <class MayHold, class IsHit>
int FirstHit(const Pyramid& pyramid, int first, int last, MayHold mayHold, IsHit isHit) {
    for (std::int64_t at = first; at < last;) {
        std::int64_t next = at;
        std::int64_t width = pyramid.m_Block;
        for (int level = 0; level < pyramid.m_Levels; ++level, width *= pyramid.m_FanOut) {
            const bool beginsHere = at % width == 0 || (pyramid.m_IsKnown && at == first);
            if (!beginsHere || mayHold(level, static_cast<int>(at / width))) break;
            next = (at / width + 1) * width;
        }
        if (next == at && isHit(static_cast<int>(at))) return static_cast<int>(at);
        at = std::max(next, at + 1);
    }
    return last;
}

// The last of them, else first - 1.
template <class MayHold, class IsHit>
int LastHit(const Pyramid& pyramid, int first, int last, MayHold mayHold, IsHit isHit) {
    for (std::int64_t end = last; end > first;) {
        std::int64_t next = end;
        std::int64_t width = pyramid.m_Block;
        for (int level = 0; level < pyramid.m_Levels; ++level, width *= pyramid.m_FanOut) {
            const bool endsHere =
                end % width == 0 || end == pyramid.m_Count || (pyramid.m_IsKnown && end == last);
            const std::int64_t group = (end - 1) / width;
            if (!endsHere || mayHold(level, static_cast<int>(group))) break;
            next = group * width;
        }
        if (next == end && isHit(static_cast<int>(end - 1))) return static_cast<int>(end - 1);
        end = std::min(next, end - 1);
    }
    return first - 1;
}

}  // namespace vesk
