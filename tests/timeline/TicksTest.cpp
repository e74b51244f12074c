#include "timeline/Ticks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/Dice.h"

namespace vesk {

using testing::ElementsAre;

TEST(MinorTickStep, IsThePowerOfTwoThatIsAtLeastTwoPixelsWide) {
    const struct {
        float scale;
        std::uint64_t step;
    } cases[] = {{256.0f, 1},       {2.0f, 1},          {1.99f, 2},
                 {1.0f, 2},         {0.6f, 4},          {0.5f, 4},
                 {0x1p-15f, 65536}, {0x1p-16f, 131072}, {0x1p-40f, std::uint64_t{1} << 41}};
    for (const auto& c : cases) EXPECT_EQ(MinorTickStep(c.scale), c.step) << c.scale;
}

TEST(MajorTickStep, LeavesTenPixelsBetweenLabels) {
    const struct {
        const char* what;
        float scale;
        int width;
        std::uint64_t least;
        std::uint64_t unit;
        std::uint64_t step;
    } cases[] = {
        {"clock: the next multiple of 5", 2.0f, 21, 1, 5, 20},
        {"clock: exactly wide enough", 2.0f, 30, 1, 5, 20},
        {"clock: one pixel more", 2.0f, 31, 1, 5, 25},
        {"clock: a base above what the labels need", 2.0f, 7, 1000, 5, 1000},
        {"clock: labels wider than the base", 0.01f, 21, 1000, 5, 3105},
        {"clock: a minor step that is no multiple of 5", 0x1p-15f, 0, 65536, 5, 327680},
        {"time: a multiple of the minor step", 1.0f, 56, 2, 2, 66},
        {"time: rounded up to the minor step", 1.0f, 57, 2, 2, 68},
        {"time: the minor step is enough", 100.0f, 56, 1, 1, 1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(MajorTickStep(c.scale, c.width, c.least, c.unit), c.step) << c.what;
}

TEST(MajorTickStep, IsWhatCountingUpFinds) {
    Dice dice(7);
    for (int i = 0; i < 2000; ++i) {
        const float scale = static_cast<float>(dice.Between(1, 3000)) /
                            static_cast<float>(dice.Of({1, 10, 777, 4000}));
        const int width = dice.Between(0, 120);
        const std::uint64_t minor = MinorTickStep(scale);
        const std::uint64_t least = std::max<std::uint64_t>(minor, dice.Of({1u, 10u, 1000u}));
        const auto isWide = [&](std::uint64_t n) {
            return static_cast<double>(n) * scale >= width + 10;
        };
        std::uint64_t clock = least;
        while (!isWide(clock) || clock % 5 != 0) ++clock;
        std::uint64_t time = minor;
        while (!isWide(time)) time += minor;
        EXPECT_EQ(MajorTickStep(scale, width, least, 5), clock) << scale << ' ' << width;
        EXPECT_EQ(MajorTickStep(scale, width, minor, minor), time) << scale << ' ' << width;
    }
}

// Zooming out to the longest times takes no longer than any other zoom.
TEST(MajorTickStep, IsFoundAtAnyZoom) {
    EXPECT_EQ(MajorTickStep(0x1p-40f, 22, 1, 5), 35184372088835u);  // above 2^45
    EXPECT_GE(MajorTickStep(0x1p-120f, 22, 1, 5), std::uint64_t{1} << 62);
}

TEST(MinorTicks, BeginBehindTheFirstStepAndMayEndBehindTheLastTime) {
    // 2 pixels a step; the view begins within one.
    const TimeScale scale{101, 1.0f, 80};
    const MinorTicks ticks = FindMinorTicks(scale, 2, 109, 480);
    EXPECT_THAT(ticks.m_At, ElementsAre(83, 85, 87, 89));
    EXPECT_EQ(ticks.m_LineEnd, 89);
}

TEST(MinorTicks, StopAtTheRightEdge) {
    const MinorTicks ticks = FindMinorTicks({0, 1.0f, 80}, 2, 1000, 88);
    EXPECT_THAT(ticks.m_At, ElementsAre(84, 86, 88));
}

TEST(MinorTicks, WithoutATickTheLineGoesToTheNextStep) {
    const MinorTicks ticks = FindMinorTicks({0, 1.0f, 80}, 2, 1, 480);
    EXPECT_THAT(ticks.m_At, ElementsAre());
    EXPECT_EQ(ticks.m_LineEnd, 82);
}

TEST(MinorTicks, AddTheStepInSinglePrecision) {
    const float third = 1.0f / 3;
    const MinorTicks ticks = FindMinorTicks({0, third, 80}, 8, 800, 480);
    const double step = static_cast<double>(static_cast<float>(8.0 * third));
    double x = 80 + 8.0 * third;
    ASSERT_GT(ticks.m_At.size(), 90u);
    for (const int at : ticks.m_At) EXPECT_EQ(at, static_cast<int>(x += step));
}

std::vector<std::uint64_t> Times(const std::vector<MajorTick>& ticks) {
    std::vector<std::uint64_t> times;
    for (const MajorTick& tick : ticks) times.push_back(tick.m_Time);
    return times;
}

TEST(MajorTicks, StandAtMultiplesOfTheStep) {
    const std::vector<MajorTick> ticks = FindMajorTicks({101, 0.5f, 80}, 20, 165, 480);
    EXPECT_THAT(Times(ticks), ElementsAre(120, 140, 160));
    EXPECT_EQ(ticks[0].m_X, 89.5);
    EXPECT_EQ(ticks[2].m_X, 109.5);
}

TEST(MajorTicks, IncludeTheLeftEdgeAndLeaveTheRightEdgeOut) {
    EXPECT_THAT(Times(FindMajorTicks({100, 1.0f, 80}, 20, 140, 480)), ElementsAre(100, 120, 140));
    EXPECT_THAT(Times(FindMajorTicks({100, 1.0f, 80}, 20, 140, 120)), ElementsAre(100, 120));
}

TEST(SplitBase, TakesTensOut) {
    const struct {
        std::int32_t base;
        float value;
        std::int64_t exponent;
    } cases[] = {{1, 1, 0}, {10, 1, 1}, {1000, 1, 3}, {1000000000, 1, 9}, {250, 25, 1}, {7, 7, 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(SplitBase(c.base).m_Value, c.value) << c.base;
        EXPECT_EQ(SplitBase(c.base).m_Exponent, c.exponent) << c.base;
    }
}

}  // namespace vesk
