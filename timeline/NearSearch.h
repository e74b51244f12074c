#pragma once

#include <algorithm>

namespace vesk {

// The place looked for is one of [m_Low, m_High], most likely m_Near.
struct NearPlace {
    int m_Low;
    int m_High;
    int m_Near;
};

// The first place of [low, high) that is not before; high if all are. Doubling steps from the
// likely place, then halving.
template <class IsBefore>
int FindNear(NearPlace guess, IsBefore isBefore) {
    auto [low, high, near] = guess;
    if (low >= high) return high;
    near = std::clamp(near, low, high - 1);
    int step = 1;
    if (isBefore(near)) {
        low = near + 1;
        for (; step <= high - low && isBefore(low + step - 1); step *= 2) low += step;
        high = step <= high - low ? low + step - 1 : high;
    } else {
        high = near;
        for (; step <= high - low && !isBefore(high - step); step *= 2) high -= step;
        low = step <= high - low ? high - step + 1 : low;
    }
    while (low < high) {
        const int middle = low + (high - low) / 2;
        (isBefore(middle) ? low : high) = isBefore(middle) ? middle + 1 : middle;
    }
    return low;
}

}  // namespace vesk
