// The stepped curves of the extra values, and the values at the cursor.
#include "tests/timeline/PictureTest.h"
#include "tests/timeline/PlainJobs.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CurveTest : public PictureTest {
protected:
    static void Values(int count) {
        Log().m_ExtraInfoNum = count;
        Log().m_ExtraNames.assign(static_cast<std::size_t>(count), "value");
        Log().m_ExtraMax.assign(static_cast<std::size_t>(count), 0);
        Log().m_ExtraMin.assign(static_cast<std::size_t>(count), -1);
    }
    static void Sample(std::uint64_t time, std::vector<int> values) {
        std::string name = "A";
        Log().InsertExtraInfo(values, time, name);
    }
    std::vector<std::string> Curves() {
        return Steps([&](CDC* dc) { View().DrawExtraInfo(dc, 125, 80, 375); });
    }
    std::vector<std::uint32_t> AtCursor(std::uint64_t time) {
        View().m_CursorTime = time;
        Curves();
        return View().m_ExtraCursorValue;
    }
};

TEST_F(CurveTest, RunLevelAndThenStep) {
    Log().Insert("A", 0, 1000);
    Values(1);
    Sample(10, {100});
    Sample(60, {200});
    Sample(90, {150});
    OpenAt(0);
    EXPECT_THAT(
        Curves(),
        ElementsAre("line 90,500 > 140,500 solid 2 0000FF", "line 140,500 > 140,30 solid 2 0000FF",
                    "line 140,30 > 170,30 solid 2 0000FF", "line 170,30 > 170,265 solid 2 0000FF"));
}

TEST_F(CurveTest, LevelsPastTheViewEndAtItsEnd) {
    Log().Insert("A", 0, 5000);
    Values(1);
    Sample(10, {0});
    Sample(3000, {1});
    OpenAt(0);
    EXPECT_THAT(Curves(), ElementsAre("line 90,500 > 1080,500 solid 2 0000FF",
                                      "line 1080,500 > 1080,30 solid 2 0000FF"));
}

// With the least and greatest value one apart, or equal, the range is 1. A product past 32 bits
// wraps.
TEST_F(CurveTest, RowsComeFromUnsignedSteps) {
    struct Case {
        unsigned first, second;
        int firstRow, secondRow;
    };
    const Case cases[] = {
        {7, 7, 500, 500},
        {7, 8, 500, 30},
        {0, 4000000000, 500, 500 - static_cast<int>(4000000000u * 470u / 4000000000u)},
        {0xFFFFFFFF, 0xFFFFFFF0, 30, 500}};
    for (const Case& c : cases) {
        Log().Clear();
        Log().Insert("A", 0, 1000);
        Values(1);
        Sample(10, {static_cast<int>(c.first)});
        Sample(60, {static_cast<int>(c.second)});
        OpenAt(0);
        const std::vector<std::string> steps = Curves();
        ASSERT_EQ(steps.size(), 2u);
        EXPECT_EQ(steps[0].rfind("line 90," + std::to_string(c.firstRow) + " > 140,", 0), 0u)
            << steps[0];
        EXPECT_EQ(steps[1].rfind("line 140," + std::to_string(c.firstRow) + " > 140," +
                                     std::to_string(c.secondRow) + " ",
                                 0),
                  0u)
            << steps[1];
    }
}

TEST_F(CurveTest, OnlyStepsThatShowAreDrawn) {
    Log().Insert("A", 0, 100000);
    Values(2);
    for (std::uint64_t i = 0; i < 10000; ++i)
        Sample(i, {static_cast<int>(i % 100), static_cast<int>(i * 37 % 1000)});
    OpenAt(0, 1.0f / 16384);
    EXPECT_LT(Curves().size(), 200u);
    EXPECT_GT(Curves().size(), 4u);
}

// Values that change now and then only, wherever that may be.
TEST_F(CurveTest, NoStepIsLostAmongLevelSamples) {
    for (const int length : {1, 8, 15, 16, 17, 64, 128, 200}) {
        Log().Clear();
        Log().Insert("A", 0, 4000);
        Values(1);
        for (int i = 0; i < 2000; ++i) Sample(static_cast<std::uint64_t>(i), {i / length});
        OpenAt(0, 1.0f / 512);
        const Paper paper{{1110, 600}, {0, 0, 1110, 600}};
        EXPECT_TRUE(LooksTheSame(
            paper, [&](CDC* dc) { View().DrawExtraInfo(dc, 125, 80, 375); },
            [&](CDC* dc) { vesk::plain::DrawExtraInfo(View(), dc, 80); }))
            << "a step in " << length;
    }
}

// Columns of many samples that go over all rows, next to such that do not.
TEST_F(CurveTest, CoveredColumnsLookLikeEveryRecordDrawnInOrder) {
    vesk::Dice dice(17);
    for (int round = 0; round < 60; ++round) {
        Log().Clear();
        Log().Insert("A", 0, 40000);
        const int count = dice.Between(1, 3);
        Values(count);
        const int range = dice.Of({0, 1, 2, 40, 1000});
        const int quiet = dice.Of({0, 3, 40, 97});  // per cent of the stretches
        std::vector<int> values(static_cast<std::size_t>(count));
        bool isQuiet = false;
        for (std::uint64_t time = 0; time < 20000; ++time) {
            if (time % 50 == 0) isQuiet = dice.Chance(quiet);
            for (int& value : values)
                if (!isQuiet || dice.OnceIn(100)) value = dice.Between(0, range);
            Sample(time, values);
        }
        OpenAt(static_cast<std::uint64_t>(dice.Between(0, 100)), 1.0f / 512);
        const Paper paper = RandomPaper(dice);
        EXPECT_TRUE(LooksTheSame(
            paper, [&](CDC* dc) { View().DrawExtraInfo(dc, 125, 80, 375); },
            [&](CDC* dc) { vesk::plain::DrawExtraInfo(View(), dc, 80); }))
            << "round " << round << " scale " << paper.m_Scale;
    }
}

TEST_F(CurveTest, TheCursorReadsTheSampleThatItLiesIn) {
    Log().Insert("A", 0, 1000);
    Values(2);
    Sample(10, {1, 2});
    Sample(20, {3, 4});
    Sample(20, {5, 6});
    Sample(30, {7, 8});
    OpenAt(0);
    const std::pair<std::uint64_t, std::vector<std::uint32_t>> cases[] = {
        {0, {1, 2}},  {9, {1, 2}},  {10, {1, 2}}, {19, {1, 2}},
        {20, {5, 6}}, {29, {5, 6}}, {30, {7, 8}}, {900, {7, 8}}};
    for (const auto& [time, values] : cases) EXPECT_EQ(AtCursor(time), values) << time;
}

TEST_F(CurveTest, HiddenValuesHaveNoCurveAndAreReadOutsideOfTheSamplesOnly) {
    Log().Insert("A", 0, 1000);
    Values(1);
    Sample(10, {1});
    Sample(20, {3});
    Sample(30, {5});
    OpenAt(0);
    View().m_ExtraShown = {false};
    EXPECT_THAT(Curves(), IsEmpty());
    EXPECT_THAT(AtCursor(900), ElementsAre(5));
    EXPECT_THAT(AtCursor(25), ElementsAre(5));
    EXPECT_THAT(AtCursor(3), ElementsAre(1));
}

TEST_F(CurveTest, WithoutSamplesTheReadOutStays) {
    Log().Insert("A", 0, 1000);
    Values(1);
    OpenAt(0);
    View().m_ExtraCursorValue = {9};
    EXPECT_THAT(Curves(), IsEmpty());
    EXPECT_THAT(AtCursor(25), ElementsAre(9));
}

TEST_F(CurveTest, LooksLikeEveryRecordDrawnInOrder) {
    vesk::Dice dice(3);
    for (std::uint64_t seed = 0; seed < 250; ++seed) {
        OpenRandom(seed, dice);
        for (int look = 0; look < 6; ++look) {
            vesk::LookSomewhere(View(), dice);
            for (auto shown : View().m_ExtraShown) shown = dice.Chance(80);
            const Paper paper = RandomPaper(dice);
            std::vector<std::uint32_t> values;
            const std::vector<std::uint32_t> before = View().m_ExtraCursorValue;
            const auto draw = [&](CDC* dc) {
                View().DrawExtraInfo(dc, 50, 80, 150);
                values.swap(View().m_ExtraCursorValue);
                View().m_ExtraCursorValue = before;
            };
            const auto plain = [&](CDC* dc) { vesk::plain::DrawExtraInfo(View(), dc, 80); };
            EXPECT_TRUE(LooksTheSame(paper, draw, plain))
                << "seed " << seed << " look " << look << " scale " << paper.m_Scale;
            EXPECT_EQ(values, View().m_ExtraCursorValue) << "seed " << seed << " look " << look;
        }
    }
}

}  // namespace
