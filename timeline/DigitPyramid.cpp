#include "timeline/DigitPyramid.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

#include "timeline/Pyramid.h"

namespace vesk {

namespace {

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

void DigitPyramid::Finish(int places) {
    m_Places = places;
    while (m_Levels.back().size() > 1) {
        const std::vector<std::uint8_t>& below = m_Levels.back();
        std::vector<std::uint8_t> level((below.size() - 1) / kGroup + 1, kNoNumber);
        for (std::size_t i = 0; i < below.size(); ++i)
            level[i / kGroup] = std::min(level[i / kGroup], below[i]);
        m_Levels.push_back(std::move(level));
    }
}

int DigitPyramid::FirstAtMost(int first, int last, int digits) const {
    const Pyramid shape{m_Places, kGroup, kGroup, static_cast<int>(m_Levels.size()), true};
    return FirstHit(
        shape, first, last,
        [&](int level, int group) {
            return m_Levels[static_cast<std::size_t>(level)][static_cast<std::size_t>(group)] <=
                   digits;
        },
        [&](int place) { return m_DigitsAt(place) <= digits; });
}

bool DigitPyramid::HasAtMost(int first, int last, int digits) const {
    constexpr int kFewGroups = 16;
    const int group = (first + kGroup - 1) / kGroup;
    const int end = std::min(last / kGroup, group + kFewGroups);
    for (int i = group; i < end; ++i)
        if (m_Levels[0][static_cast<std::size_t>(i)] <= digits) return true;
    return FirstAtMost(first, last, digits) < last;
}

}  // namespace vesk
