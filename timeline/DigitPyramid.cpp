#include "timeline/DigitPyramid.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace vesk {

namespace {

constexpr int kGroup = 16;

constexpr std::array<std::uint64_t, 20> kPowers = [] {
    std::array<std::uint64_t, 20> powers{};
    std::uint64_t power = 1;
    for (std::uint64_t& entry : powers) {
        entry = power;
        power *= 10;
    }
    powers[0] = 0;
    return powers;
}();

}  // namespace

std::uint8_t DigitsOf(std::int64_t number) {
    const auto bits = static_cast<std::uint64_t>(number);
    const std::uint64_t size = number < 0 ? 0 - bits : bits;
    // Binary digits tell the decimal ones but for one.
    const auto atLeast = static_cast<std::size_t>(std::bit_width(size | 1) * 1233 >> 12);
    return static_cast<std::uint8_t>(atLeast + (size >= kPowers[atLeast] ? 1 : 0));
}

DigitPyramid::DigitPyramid(int size, LeastDigits leastDigits)
    : m_Size(size), m_LeastDigits(std::move(leastDigits)) {
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
        const auto place = static_cast<int>(at);
        if (span == 1 && m_LeastDigits(place, place + 1) <= digits) return place;
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
    if (level == 0) return least = m_LeastDigits(group * kGroup, end);
    least = kNoNumber;
    for (int i = group * kGroup; i < end; ++i) least = std::min(least, Least(level - 1, i));
    return least;
}

}  // namespace vesk
