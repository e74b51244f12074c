// The strip of all jobs with their names, and the source marks above it.
#include "tests/timeline/PictureTest.h"
#include "tests/timeline/PlainJobs.h"
#include "timeline/MeasuredText.h"
#include "timeline/NameColumn.h"
#include "timeline/TextFit.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class JobStripTest : public PictureTest {
protected:
    // Every name in one colour.
    void Paint(COLORREF color) {
        Color();
        for (auto& [key, value] : Document().m_JobColor.m_Colors) value = color;
    }
    std::vector<std::string> Strip() {
        return Steps([&](CDC* dc) { View().DrawJobList(dc, 100, 80, 300); });
    }
    std::vector<std::string> Marks() {
        return Steps([&](CDC* dc) { View().DrawSourceMarkList(dc, 80, 110); });
    }
};

TEST_F(JobStripTest, BlocksAreFilledAndNamedInTheirMiddle) {
    Log().Insert("MAIN", 10, 110);
    Log().Insert("L1", 110, 150);
    Paint(0xFFFFFF);
    OpenAt(0);
    EXPECT_THAT(Strip(), ElementsAre("fill 90,200 100x100 FFFFFF", "text 126,240 \"MAIN\" 000000",
                                     "fill 190,200 40x100 FFFFFF", "text 203,240 \"L1\" 000000"));
}

TEST_F(JobStripTest, BlocksAreCutAtBothEdgesOfTheCanvas) {
    Log().Insert("MAIN", 0, 600);
    Log().Insert("TASK", 600, 5000);
    Paint(0xFFFFFF);
    OpenAt(500);
    EXPECT_THAT(Strip(),
                ElementsAre("fill 80,200 100x100 FFFFFF", "text 116,240 \"MAIN\" 000000",
                            "fill 180,200 900x100 FFFFFF", "text 616,240 \"TASK\" 000000"));
}

TEST_F(JobStripTest, JobsWithoutAnEndRunToTheNextOneOrToTheEndOfTheLog) {
    Log().Insert("MAIN", 0, 0);
    Log().Insert("TASK", 100, 0);
    Log().m_EndTime = 300;
    Paint(0xFFFFFF);
    OpenAt(0);
    EXPECT_THAT(Strip(),
                ElementsAre("fill 80,200 100x100 FFFFFF", "text 116,240 \"MAIN\" 000000",
                            "fill 180,200 200x100 FFFFFF", "text 266,240 \"TASK\" 000000"));
}

TEST_F(JobStripTest, NamesThatDoNotFitAreShortenedAtTheBlocksLeft) {
    Log().Insert("MAINTASK", 0, 45);
    Log().Insert("MAINTASK", 45, 46);
    Paint(0xFFFFFF);
    OpenAt(0);
    EXPECT_THAT(Strip(), ElementsAre("fill 80,200 45x100 FFFFFF", "text 80,240 \"MAI...\" 000000",
                                     "fill 125,200 1x100 FFFFFF", "text 125,240 \"...\" 000000"));
}

TEST_F(JobStripTest, OfManyJobsInOneColumnTheLastNameShows) {
    for (std::uint64_t i = 0; i < 1000; ++i) Log().Insert("MAIN", i, i + 1);
    Log().Insert("", 1000, 1001);
    Paint(0x112233);
    OpenAt(0, 1.0f / 2048);
    const auto dots = "text 80,240 \"...\" FFFFFF";
    EXPECT_THAT(Strip(), testing::Contains(dots).Times(1));
    EXPECT_LT(Strip().size(), 4u);
}

TEST(BlockText, StandsOutFromItsBlock) {
    const std::pair<COLORREF, COLORREF> cases[] = {{0x8080FF, 0xFFFFFF}, {0x818181, 0},
                                                   {0x808080, 0xFFFFFF}, {0xFFFFFF, 0},
                                                   {0, 0xFFFFFF},        {0xFF8180, 0xFFFFFF}};
    for (const auto& [block, text] : cases)
        EXPECT_EQ(vesk::TextColorOn(block), text) << std::hex << block;
}

TEST(BlockText, IsShortenedToAWidth) {
    vesk::RecordingSurface surface({100, 100});
    const CDC dc(&surface);
    const std::tuple<const char*, int, const char*> cases[] = {
        {"", 0, ""},           {"", -5, ""},
        {"ABCD", 28, "ABCD"},  {"ABCD", 27, "..."},
        {"ABCDE", 28, "A..."}, {"ABCD", 20, "..."},
        {"ABCD", 0, "..."},    {"ABCD", -9, "..."},
        {"A", 6, "..."},       {"ABCDEFGH", 55, "ABCD..."}};
    for (const auto& [text, width, fitted] : cases)
        EXPECT_EQ(vesk::FitText(dc, text, width), fitted) << text << " in " << width;
    for (const char* text : {"", "A", "ABCDEFGH"}) {
        vesk::MeasuredText measured(dc, text);
        for (int width = -1; width < 60; ++width)
            EXPECT_EQ(measured.Fit(width), vesk::FitText(dc, text, width)) << width;
    }
}

TEST_F(JobStripTest, MarksPointDownAndThoseBeforeTheEdgeAreLeftOut) {
    Log().Insert("MAIN", 0, 2000);
    for (const std::uint64_t time : {20u, 100u, 100u, 150u})
        Log().InsertSourceMark({"M", time, time});
    OpenAt(50);
    EXPECT_THAT(Marks(),
                ElementsAre("polygon 130,110 > 128,100 > 132,100 solid 1 5D009E on 5D009E",
                            "polygon 180,110 > 178,100 > 182,100 solid 1 5D009E on 5D009E"));
}

TEST_F(JobStripTest, AnEmptyLogDrawsNothing) {
    OpenAt(0);
    EXPECT_THAT(Strip(), IsEmpty());
    EXPECT_THAT(Marks(), IsEmpty());
}

TEST_F(JobStripTest, LooksLikeEveryRecordDrawnInOrder) {
    vesk::Dice dice(1);
    for (std::uint64_t seed = 0; seed < 200; ++seed) {
        OpenRandom(seed, dice);
        for (int look = 0; look < 6; ++look) {
            vesk::LookSomewhere(View(), dice);
            const Paper paper = RandomPaper(dice);
            EXPECT_TRUE(LooksTheSame(
                paper, [&](CDC* dc) { View().DrawJobList(dc, 60, 80, 150); },
                [&](CDC* dc) { vesk::plain::DrawJobList(View(), dc, 60, 80, 150); }))
                << "seed " << seed << " look " << look;
            EXPECT_TRUE(LooksTheSame(
                paper, [&](CDC* dc) { View().DrawSourceMarkList(dc, 80, 70); },
                [&](CDC* dc) { vesk::plain::DrawSourceMarkList(View(), dc, 80, 70); }))
                << "marks of seed " << seed << " look " << look;
        }
    }
}

TEST(NameColumn, KnowsTheNamesOfEveryStretch) {
    vesk::Dice dice(7);
    for (const std::uint32_t names : {1u, 63u, 64u, 65u, 257u, 70000u}) {
        const int count = names > 1000 ? 70000 : 9000;
        vesk::NameColumn column;
        std::vector<std::string> texts;
        std::vector<McuJob> records;
        for (int i = 0; i < count; ++i) {
            const auto number = names > 1000 ? static_cast<std::uint32_t>(i) : dice.Below(names);
            texts.push_back("function name of some length " + std::to_string(number));
            records.emplace_back(texts.back(), 0, 0);
        }
        column.Add(records);
        column.Finish();
        for (int query = 0; query < 50; ++query) {
            const int first = dice.Between(0, count);
            const int last = dice.OnceIn(2) ? dice.Between(first, count)
                                            : std::min(count, first + dice.Between(0, 300));
            std::vector<std::uint64_t> expected(column.Words());
            for (int i = first; i < last; ++i) {
                const int name = column.Find(texts[static_cast<std::size_t>(i)]);
                ASSERT_EQ(column.At(i), name);
                expected[static_cast<std::size_t>(name / 64)] |= std::uint64_t{1} << name % 64;
            }
            std::vector<std::uint64_t> found(column.Words());
            column.Collect(first, last, found.data());
            ASSERT_EQ(found, expected) << names << " names, " << first << " to " << last;
        }
        EXPECT_EQ(column.Find("other"), -1);
    }
}

}  // namespace
