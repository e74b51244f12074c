#include "tests/timeline/RandomList.h"
#include "tests/timeline/ViewTest.h"

namespace {

// 500 QBit are in view, from x 80 to 1080.
TEST_F(ViewTest, TheVisibleRangeEndsAtTheFirstStartRightOfTheCanvas) {
    for (const std::uint64_t start : {10, 100, 200, 599, 600, 600, 700})
        Log().Insert("job", start, start + 5);
    Log().m_EndTime = 5000;
    const struct {
        const char* what;
        std::uint64_t offset;
        int first, last;
    } cases[] = {
        {"before the first job", 0, 0, 3},
        {"the job before a job at the edge", 100, 0, 4},
        {"just behind a start", 101, 1, 6},
        {"between jobs", 650, 5, 7},
        {"behind the last job: the end is later", 800, 6, 7},
    };
    Open();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        GoTo(c.offset);
        EXPECT_EQ(View().m_JobFirst, c.first);
        EXPECT_EQ(View().m_JobLast, c.last);
        ExpectConsistent(View());
    }
}

TEST_F(ViewTest, WithoutWidthNothingIsVisible) {
    Log().Insert("job", 0, 5);
    Log().Insert("job", 5, 10);
    Log().InsertHWJob({"event", 0, 5});
    const CMcuView& view = Open(110);
    EXPECT_EQ(view.m_JobFirst, view.m_JobLast);
    EXPECT_EQ(view.m_HWFirst[0], view.m_HWLast[0]);
}

TEST_F(ViewTest, VisibleRangesAreThoseOfAWalkOverAllRecords) {
    for (std::uint64_t seed = 1; seed <= 60; ++seed) {
        vesk::FillRandomList(Log(), seed, 300);
        vesk::Dice dice(seed);
        Open(dice.Between(120, 1500), dice.Between(0, 900));
        for (int look = 0; look < 40; ++look) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", look " << look);
            vesk::LookSomewhere(View(), dice);
            ExpectRangesOfScan(View());
            if (HasFailure()) return;
        }
    }
}

}  // namespace
