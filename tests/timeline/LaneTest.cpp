// The square waves of tasks, interrupts and hardware events, the ticks of marks, and their order.
#include "tests/timeline/PictureTest.h"
#include "tests/timeline/PlainJobs.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class LaneTest : public PictureTest {
protected:
    // The pixels of a lane with its low level at y 95 as columns of text, 20 to a picture: "_" low,
    // "-" high, "|" both, "." none.
    std::string Wave(const char* name) {
        const Paper paper{{1110, 200}, {0, 0, 1110, 200}};
        return Levels(Pixels(paper, [&](CDC* dc) { View().DrawJob(dc, name, 80, 100); }));
    }
    std::string Events(const char* name, int first, int last) {
        const Paper paper{{1110, 200}, {0, 0, 1110, 200}};
        return Levels(
            Pixels(paper, [&](CDC* dc) { View().DrawHWJob(dc, name, 80, 100, first, last); }));
    }
    std::string Ticks(const char* name) {
        const Paper paper{{1110, 200}, {0, 0, 1110, 200}};
        return Levels(Pixels(paper, [&](CDC* dc) { View().DrawSourceMark(dc, name, 80, 100); }));
    }

    // The texts in the margin, from the bottom up, as far as the lanes go.
    std::vector<std::string> Labels() {
        std::vector<std::string> names;
        for (const std::string& step : Steps([&](CDC* dc) { View().DrawJobList(dc, 80, 500); })) {
            if (step.rfind("text ", 0) != 0) continue;
            const std::size_t quote = step.find('"');
            names.push_back(step.substr(quote + 1, step.rfind('"') - quote - 1));
        }
        return names;
    }

private:
    static std::string Levels(const std::vector<std::uint32_t>& pixels) {
        std::string levels;
        for (std::size_t x = 80; x < 100; ++x) {
            const bool low = pixels[95 * 1110 + x] != 0xFFFFFFFF;
            const bool high = pixels[85 * 1110 + x] != 0xFFFFFFFF;
            const bool between = pixels[90 * 1110 + x] != 0xFFFFFFFF;
            levels += between ? '|' : low && high ? '=' : low ? '_' : high ? '-' : '.';
        }
        return levels;
    }
};

TEST_F(LaneTest, LevelsRiseAndFallWithTheJobsOfTheName) {
    Log().Insert("A", 3, 6);
    Log().Insert("B", 6, 10);
    Log().Insert("A", 10, 10);
    Log().Insert("A", 12, 2000);
    OpenAt(0);
    EXPECT_EQ(Wave("A"), "___|--|___|-|-------");
    EXPECT_EQ(Wave("B"), "______|---|_________");
    EXPECT_EQ(Wave("C"), "____________________");
}

TEST_F(LaneTest, JobsThatRunAtTheLeftEdgeHaveNoRisingEdge) {
    Log().Insert("A", 0, 105);
    Log().Insert("B", 105, 5000);
    OpenAt(100);
    EXPECT_EQ(Wave("A"), "-----|______________");
}

TEST_F(LaneTest, JobsAcrossTheRightEdgeDoNotFall) {
    Log().Insert("A", 10, 9000);
    OpenAt(0);
    const auto steps = Steps([&](CDC* dc) { View().DrawJob(dc, "A", 80, 100); });
    EXPECT_THAT(steps, testing::Contains(testing::HasSubstr("line 90,85 > 1080,85 ")));
    EXPECT_THAT(steps,
                testing::Not(testing::Contains(testing::HasSubstr("line 1080,85 > 1080,95"))));
}

TEST_F(LaneTest, JobsWithoutAPixelAreSpikes) {
    for (std::uint64_t i = 0; i < 4096; ++i) Log().Insert(i == 2050 ? "A" : "B", i, i + 1);
    OpenAt(0, 1.0f / 1024);
    EXPECT_EQ(Wave("A"), "__|_________________");
    EXPECT_EQ(Wave("B"), "||||________________");
}

TEST_F(LaneTest, EventsWithoutAnEndRunToTheNextOneOfTheirLane) {
    Log().Insert("A", 0, 15);
    Log().InsertHWJob({"DMA", 2, 0});
    Log().InsertHWJob({"DMA", 5, 8});
    Log().InsertHWJob({"DMA", 11, 0});
    OpenAt(0);
    EXPECT_EQ(Events("DMA", 0, 3), "__|--|--|__|---|____");
    EXPECT_EQ(Events("DMA", 1, 2), "_____|--|___________");
    EXPECT_EQ(Events("none", 0, 0), "....................");
}

TEST_F(LaneTest, MarksAreTicksOfTheirOwnName) {
    Log().Insert("A", 0, 2000);
    for (const std::uint64_t time : {100u, 103u, 110u})
        Log().InsertSourceMark({time == 110 ? "N" : "M", time, time});
    OpenAt(100);
    EXPECT_EQ(Ticks("M"), "___|________________");
    EXPECT_EQ(Ticks("N"), "__________|_________");
}

TEST_F(LaneTest, LanesStandInGroupsFromTheBottomUp) {
    Log().Insert("T1", 0, 10);
    Log().Insert("IRQ2", 10, 20);
    Log().InsertSourceMark({"M", 5, 5});
    Log().InsertHWJob({"H", 5, 6});
    OpenAt(0);
    EXPECT_THAT(Labels(), ElementsAre("T1", "IRQ2", "M", "H"));
    const std::pair<int, std::vector<std::string>> cases[] = {
        {1, {"IRQ2", "M", "H"}}, {2, {"M", "H"}}, {3, {"H"}}, {4, {}}};
    for (const auto& [offset, names] : cases) {
        View().m_LaneOffset = offset;
        EXPECT_EQ(Labels(), names) << offset;
    }
}

// A group counts with its hidden lanes for those above it, and passes over shown lanes alone.
TEST_F(LaneTest, HiddenLanesTakeNoRoom) {
    Log().Insert("T1", 0, 10);
    for (const char* name : {"M1", "M2", "M3"}) Log().InsertSourceMark({name, 5, 5});
    Log().InsertHWJob({"H", 5, 6});
    Log().m_SourceMarkShown = {true, false, true};
    OpenAt(0);
    EXPECT_THAT(Labels(), ElementsAre("T1", "M1", "M3", "H"));
    View().m_LaneOffset = 2;
    EXPECT_THAT(Labels(), ElementsAre("M3", "H"));
    View().m_LaneOffset = 5;
    EXPECT_THAT(Labels(), IsEmpty());
}

TEST_F(LaneTest, LanesStopBelowTheTopOfTheCanvas) {
    for (int i = 10; i < 60; ++i) Log().Insert("T" + std::to_string(i), 0, 10);
    OpenAt(0);
    EXPECT_EQ(Labels().size(), 23u);  // from y 495 up to y 55
    View().m_LaneOffset = 40;
    EXPECT_EQ(Labels().size(), 10u);
}

TEST_F(LaneTest, LooksLikeEveryRecordDrawnInOrder) {
    vesk::Dice dice(2);
    for (std::uint64_t seed = 0; seed < 200; ++seed) {
        OpenRandom(seed, dice);
        for (int look = 0; look < 3; ++look) {
            vesk::LookSomewhere(View(), dice);
            const Paper paper = RandomPaper(dice);
            const auto draw = [&](CDC* dc) {
                int y = 20;
                for (const auto& [name, count] : Log().m_JobNames)
                    if ((y += 14) < 180) View().DrawJob(dc, name, 80, y);
                for (const auto& [name, marks] : Log().m_SourceMarkNames)
                    View().DrawSourceMark(dc, name, 80, y += 14);
                std::size_t k = 0;
                for (const auto& [name, events] : Log().m_HWJobs) {
                    View().DrawHWJob(dc, name, 80, y += 14, View().m_HWFirst[k],
                                     View().m_HWLast[k]);
                    ++k;
                }
            };
            const auto plain = [&](CDC* dc) {
                int y = 20;
                for (const auto& [name, count] : Log().m_JobNames)
                    if ((y += 14) < 180) vesk::plain::DrawJob(View(), dc, name, 80, y);
                for (const auto& [name, marks] : Log().m_SourceMarkNames)
                    vesk::plain::DrawSourceMark(View(), dc, name, 80, y += 14);
                std::size_t k = 0;
                for (const auto& [name, events] : Log().m_HWJobs) {
                    vesk::plain::DrawHWJob(View(), dc, name, 80, y += 14, View().m_HWFirst[k],
                                           View().m_HWLast[k]);
                    ++k;
                }
            };
            EXPECT_TRUE(LooksTheSame(paper, draw, plain)) << "seed " << seed << " look " << look;
        }
    }
}

}  // namespace
