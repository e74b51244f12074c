#include "timeline/TimeScale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <vector>

#include "tests/support/Dice.h"
#include "timeline/ColumnRuns.h"
#include "timeline/TimeBlocks.h"

namespace vesk {
namespace {

constexpr std::uint64_t kLastTime = UINT64_MAX;

TEST(TimeScale, APixelIsTheTruncatedProductRightOfTheEdge) {
    const struct {
        const char* what;
        TimeScale scale;
        std::uint64_t time;
        std::int64_t x;
    } cases[] = {
        {"the edge", {100, 2.0f, 80}, 100, 80},
        {"before the edge", {100, 2.0f, 80}, 7, 80},
        {"two pixels a QBit", {100, 2.0f, 80}, 103, 86},
        {"parts of a pixel are dropped", {0, 0.375f, 80}, 5, 81},
        {"right of any canvas", {0, 256.0f, 80}, 1000000000000, 256000000000080},
        {"a difference with its top bit", {1, 0x1p-60f, 80}, (1ULL << 63) + 1, 88},
        {"a product past 63 bits", {0, 2.0f, 80}, kLastTime, INT64_MAX},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(c.scale.PixelAt(c.time), c.x);
    }
}

TEST(TimeScale, ALengthHasNoEdge) {
    EXPECT_EQ((TimeScale{500, 0.3f, 80}).Length(10), 3);  // 0.3f is a little above 0.3
    EXPECT_EQ((TimeScale{500, 0.1f, 80}).Length(9), 0);
    EXPECT_EQ((TimeScale{500, 2.0f, 80}).Length(kLastTime), INT64_MAX);
}

TEST(TimeScale, ATimeIsTheTruncatedQuotientBehindTheOffset) {
    EXPECT_EQ((TimeScale{100, 2.0f, 80}).TimeAt(80), 100u);
    EXPECT_EQ((TimeScale{100, 2.0f, 80}).TimeAt(83), 101u);
    EXPECT_EQ((TimeScale{100, 0.5f, 80}).TimeAt(83), 106u);
    EXPECT_EQ((TimeScale{100, 2.0f, 80}).TimeAt(20), 100u) << "left of the edge";
    EXPECT_EQ((TimeScale{kLastTime - 5, 0.5f, 80}).TimeAt(200), kLastTime);
}

TEST(TimeScale, TheFirstTimeOfAPixelIsWhereItBegins) {
    Dice dice(1);
    for (int i = 0; i < 20000; ++i) {
        TimeScale scale;
        scale.m_PixelsPerQbit =
            std::ldexp(1.0f + static_cast<float>(dice.Below(1000)) / 999.0f, dice.Between(-64, 8));
        scale.m_Offset = dice.Next() >> dice.Between(0, 63);
        const std::int64_t x = dice.Between(81, 4000);
        const std::uint64_t time = scale.FirstTimeAt(x);
        SCOPED_TRACE(testing::Message()
                     << scale.m_Offset << " " << scale.m_PixelsPerQbit << " " << x << " " << time);
        if (scale.PixelAt(kLastTime) < x) {
            ASSERT_EQ(time, kLastTime);
            continue;
        }
        ASSERT_GE(scale.PixelAt(time), x);
        ASSERT_GT(time, scale.m_Offset);
        ASSERT_LT(scale.PixelAt(time - 1), x);
    }
}

// The literal grouping: a new run wherever the pixel changes.
std::vector<ColumnRun> PlainRuns(const TimeScale& scale, int first, int last,
                                 const std::vector<std::uint64_t>& starts) {
    std::vector<ColumnRun> runs;
    for (int i = first; i < last; ++i) {
        const std::int64_t x = scale.PixelAt(starts[static_cast<std::size_t>(i)]);
        if (x > INT32_MAX) break;
        if (runs.empty() || runs.back().m_X != x) runs.push_back({static_cast<int>(x), i, i});
        runs.back().m_Last = i + 1;
    }
    return runs;
}

TEST(ColumnRuns, GroupRecordsByTheirPixel) {
    Dice dice(2);
    std::vector<ColumnRun> runs;
    for (int round = 0; round < 2000; ++round) {
        std::vector<std::uint64_t> starts(dice.Below(300));
        const std::uint32_t longest = dice.Of({1u, 4u, 100u, 4000000000u});
        std::uint64_t time = 0;
        for (std::uint64_t& start : starts) start = time += dice.Below(longest);
        const int size = static_cast<int>(starts.size());
        const int first = dice.Between(0, size);
        const int last = dice.Between(first, size);
        const TimeScale scale{time * dice.Below(4) / 4, std::ldexp(1.1f, dice.Between(-17, 7)), 80};
        FindColumnRuns(
            scale, first, last, [&](int i) { return starts[static_cast<std::size_t>(i)]; }, runs);
        const std::vector<ColumnRun> expected = PlainRuns(scale, first, last, starts);
        ASSERT_EQ(runs, expected);
        TimeBlocks blocks;
        for (const std::uint64_t start : starts) blocks.Add(start);
        blocks.FindRuns(
            scale, first, last,
            [&](int i) -> const std::uint64_t& { return starts[static_cast<std::size_t>(i)]; },
            runs);
        ASSERT_EQ(runs, expected);
    }
}

}  // namespace
}  // namespace vesk
