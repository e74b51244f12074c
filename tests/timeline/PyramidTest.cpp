#include "timeline/Pyramid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "tests/support/Dice.h"

namespace vesk {

namespace {

constexpr int kCount = 3000;
constexpr int kBlock = 4;
constexpr int kFanOut = 4;
constexpr int kLevels = 5;

// Which places are hits, and which groups were asked for.
struct Row {
    std::vector<bool> m_Hits = std::vector<bool>(kCount);
    std::int64_t m_Left = kCount;  // of the outermost groups asked for
    std::int64_t m_Right = 0;

    bool MayHold(int level, int group) {
        const std::int64_t width = std::int64_t{kBlock} << 2 * level;
        const std::int64_t end = std::min<std::int64_t>(width * (group + 1), kCount);
        m_Left = std::min(m_Left, width * group);
        m_Right = std::max(m_Right, end);
        for (std::int64_t i = width * group; i < end; ++i)
            if (m_Hits[static_cast<std::size_t>(i)]) return true;
        return false;
    }
};

TEST(Pyramid, FindsWhatAWalkFinds) {
    Dice dice(3);
    for (int round = 0; round < 500; ++round) {
        Row row;
        const std::uint32_t rare = dice.Of({2u, 30u, 2000u, 100000u});
        for (int i = 0; i < kCount; ++i)
            row.m_Hits[static_cast<std::size_t>(i)] = dice.OnceIn(rare);
        const Pyramid pyramid{kCount, kBlock, kFanOut, kLevels, dice.Chance(50)};
        const int from = dice.Between(0, kCount);
        const int to = dice.Between(from, kCount);
        const auto mayHold = [&](int level, int group) { return row.MayHold(level, group); };
        const auto isHit = [&](int i) -> bool { return row.m_Hits[static_cast<std::size_t>(i)]; };
        int first = from;
        while (first < to && !isHit(first)) ++first;
        int last = to - 1;
        while (last >= from && !isHit(last)) --last;
        EXPECT_EQ(FirstHit(pyramid, from, to, mayHold, isHit), first);
        // A group that has to be worked out for the question lies behind its start.
        EXPECT_TRUE(pyramid.m_IsKnown || row.m_Left >= from);
        row.m_Right = 0;
        EXPECT_EQ(LastHit(pyramid, from, to, mayHold, isHit), last);
        EXPECT_TRUE(pyramid.m_IsKnown || row.m_Right <= to);
    }
}

}  // namespace

}  // namespace vesk
