#include "timeline/DigitPyramid.h"

#include <algorithm>
#include <utility>

namespace vesk {

namespace {

constexpr int kGroup = 16;

}  // namespace

std::uint8_t DigitsOf(std::int64_t number) {
    std::uint8_t digits = 1;
    while (number >= 10 || number <= -10) {
        number /= 10;
        ++digits;
    }
    return digits;
}

DigitPyramid::DigitPyramid(int size, std::function<std::uint8_t(int)> digits)
    : m_Size(size), m_Digits(std::move(digits)) {
    for (int groups = size; groups > 1;) {
        groups = (groups - 1) / kGroup + 1;
        m_Levels.emplace_back(static_cast<std::size_t>(groups));
    }
}

int DigitPyramid::FirstAtMost(int first, int last, int digits) {
    std::int64_t at = first;
    while (at < last) {
        // The widest group that begins here, ends in time and holds nothing short enough.
        std::int64_t span = 1;
        for (std::size_t level = 0; level < m_Levels.size(); ++level) {
            const std::int64_t wider = span * kGroup;
            if (at % wider != 0 || at + wider > last) break;
            if (Least(level, static_cast<int>(at / wider)) <= digits) break;
            span = wider;
        }
        if (span == 1 && m_Digits(static_cast<int>(at)) <= digits) return static_cast<int>(at);
        at += span;
    }
    return last;
}

std::uint8_t DigitPyramid::Least(std::size_t level, int group) {
    std::uint8_t& least = m_Levels[level][static_cast<std::size_t>(group)];
    if (least != 0) return least;
    const int below = level == 0 ? m_Size : static_cast<int>(m_Levels[level - 1].size());
    const int end =
        static_cast<int>(std::min<std::int64_t>(std::int64_t{group} * kGroup + kGroup, below));
    least = kNoNumber;
    for (int i = group * kGroup; i < end; ++i)
        least = std::min(least, level == 0 ? m_Digits(i) : Least(level - 1, i));
    return least;
}

}  // namespace vesk
