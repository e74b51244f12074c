#include <cmath>

#include "tests/support/Dice.h"
#include "tests/timeline/PaintTest.h"
#include "tests/timeline/PlainAxes.h"
#include "tests/timeline/RandomList.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

class AxesTest : public PaintTest {
protected:
    Drawing ClockAxis() {
        return [this](CDC* dc) { View().DrawXAxis_Clock(dc, kWidth, 80, kBottom); };
    }
    Drawing TimeAxis() {
        return [this](CDC* dc) { View().DrawXAxis_Time(dc, kWidth, 80, kBottom); };
    }
    Drawing CountAxis() {
        return [this](CDC* dc) { View().DrawXAxis_Count(dc, kWidth, 80, kBottom); };
    }
    Drawing FrameNo() {
        return [this](CDC* dc) { View().DrawFrameNo(dc, 80); };
    }
    void ShowFrames(bool numbers, bool dots) {
        View().m_ShowFrameNo = numbers;
        View().m_ShowDottedLine = dots;
    }
};

// --- QBit ----------------------------------------------------------------------------------------

// Labels of up to 3 characters, 21 pixels, need 31: every 35.
TEST_F(AxesTest, ClockLabelsStandAtMultiplesOfFive) {
    Job(0);
    Open();
    const std::vector<std::string> lines = Lines(ClockAxis());
    EXPECT_EQ(lines.front(), "line 80,300 > 480,300 solid 1 000000");
    EXPECT_THAT(lines, Contains("line 84,300 > 84,305 solid 1 000000"));
    EXPECT_THAT(lines, Not(Contains("line 82,300 > 82,305 solid 1 000000")));
    EXPECT_THAT(lines, Contains("line 80,297 > 80,310 solid 1 000000"));
    EXPECT_THAT(lines, Contains("text 77,310 \"0\" 000000"));
    EXPECT_THAT(lines, Contains("text 108,310 \"35\" 000000"));
    EXPECT_THAT(lines, Contains("text 455,310 \"385\" 000000"));
    EXPECT_THAT(lines, Contains("polygon 490,300 > 480,295 > 480,305 solid 1 000000 on 000000"));
    EXPECT_EQ(lines.back(), "text 417,330 \"QBit (x1)\" 000000");
}

TEST_F(AxesTest, ClockBaseDividesLabelsAndIsTheLeastStep) {
    Job(0);
    Open(0.5f).m_ClockBase = 100;
    EXPECT_THAT(Texts(ClockAxis()),
                ElementsAre("0", "1", "2", "3", "4", "5", "6", "7", "QBit (x100)"));
}

TEST_F(AxesTest, WideClockLabelsKeepAMultipleOfFive) {
    Job(0);
    Open(0.125f).m_ClockBase = 1000;
    LookFrom(12345678901000);
    // 10 or 11 characters: 87 pixels are 696 QBit, below the base; then the base counts.
    EXPECT_THAT(Texts(ClockAxis()), ElementsAre("12345678901", "12345678902", "12345678903",
                                                "12345678904", "QBit (x1000)"));
}

// --- Execution time ------------------------------------------------------------------------------

TEST_F(AxesTest, TimeLabelsAreMillisecondsTimesTheBase) {
    Job(0);
    Open().m_TimeBase = 1000;
    EXPECT_THAT(Texts(TimeAxis()), ElementsAre("0.000000", "73.846153", "147.692307", "221.538452",
                                               "295.384613", "Execute Time (x1/1.0E3 ms)"));
    View().m_TimeBase = 1;
    EXPECT_THAT(Texts(TimeAxis()), Contains("Execute Time (x1/1.0E0 ms)"));
}

// --- The target's counter ------------------------------------------------------------------------

// Labels of 4 characters are 28 pixels wide. Jobs every 10 pixels find a free row for three labels,
// then none until the first row is free again.
TEST_F(AxesTest, CountLabelsTakeTurnsInThreeRows) {
    for (unsigned i = 1; i <= 5; ++i) Job(100 + i * 10 - 10, 0, 1110 + i);
    Open();
    std::vector<std::string> texts;
    for (const std::string& line : Lines(CountAxis()))
        if (line.starts_with("text")) texts.push_back(line);
    EXPECT_THAT(texts, ElementsAre("text 166,310 \"1111\" 000000", "text 176,325 \"1112\" 000000",
                                   "text 186,340 \"1113\" 000000", "text 196,310 \"1114\" 000000",
                                   "text 206,325 \"1115\" 000000"));
}

TEST_F(AxesTest, CountLabelsThatFitNoRowLeaveTheirTicks) {
    for (unsigned i = 0; i < 5; ++i) Job(100 + i, 0, 1000 + i);
    Open();
    EXPECT_THAT(Texts(CountAxis()), ElementsAre("1000", "1001", "1002"));
    const std::vector<std::string> lines = Lines(CountAxis());
    EXPECT_THAT(lines, Contains("line 183,297 > 183,310 solid 1 000000"));
    EXPECT_THAT(lines, Contains("line 184,297 > 184,310 solid 1 000000"));
}

// Room for one digit is left in the first row: of many jobs in the column the first short one gets
// it, not the first one.
TEST_F(AxesTest, OfManyCountsInAColumnTheFirstThatFitsIsShown) {
    const auto jobsAt = [](std::uint64_t start, std::initializer_list<unsigned> counts) {
        for (const unsigned count : counts) Job(start, 0, count);
    };
    jobsAt(100, {1111, 2222, 3333});
    jobsAt(119, {4444, 5, 66, 7, 8888, 9, 1});
    Open();
    EXPECT_THAT(Texts(CountAxis()), ElementsAre("1111", "2222", "3333", "5", "7", "9"));
}

TEST_F(AxesTest, TheCountAxisHasNoMarkAtTheLeftEdge) {
    Job(40, 0, 7);
    Job(50, 0, 8);
    Open();
    LookFrom(50);
    EXPECT_THAT(Lines(CountAxis()), ElementsAre("line 80,300 > 480,300 solid 1 000000"));
}

// --- Frame numbers and boundaries ----------------------------------------------------------------

TEST_F(AxesTest, FrameLinesStandWhereTheNumberChanges) {
    Job(0, 5);
    Job(50, 5);
    Job(60, 6);
    Job(70, 6);
    Open();
    ShowFrames(true, false);
    EXPECT_THAT(Lines(FrameNo()), UnorderedElementsAre("line 140,30 > 140,345 solid 2 963C32",
                                                       "text 137,355 \"6\" 963C32"));
}

// The second number starts at 146 and needs 2 pixels from the first one's end, 144.
TEST_F(AxesTest, ANumberThatDoesNotClearTheLastOneIsLeftOut) {
    Job(0, 5);
    Job(60, 6);
    Job(68, 7);
    Job(77, 8);
    Open();
    ShowFrames(true, false);
    EXPECT_THAT(Texts(FrameNo()), ElementsAre("6", "8"));
    EXPECT_THAT(Lines(FrameNo()), Contains("line 148,30 > 148,345 solid 2 963C32"));
}

TEST_F(AxesTest, TheFrameOfTheJobAtTheLeftEdgeIsNeverDrawn) {
    Job(0, 5);
    Job(50, 6);
    Job(60, 6);
    Open();
    ShowFrames(true, true);
    LookFrom(50);
    EXPECT_THAT(Lines(FrameNo()), ElementsAre("line 90,30 > 90,310 dot 1 B4B4B4"));
}

TEST_F(AxesTest, BoundariesKeepOneInTwoPixels) {
    for (unsigned i = 1; i <= 6; ++i) Job(i);
    Open();
    ShowFrames(false, true);
    EXPECT_THAT(Lines(FrameNo()),
                ElementsAre("line 81,30 > 81,310 dot 1 B4B4B4", "line 83,30 > 83,310 dot 1 B4B4B4",
                            "line 85,30 > 85,310 dot 1 B4B4B4"));
}

TEST_F(AxesTest, NeitherSwitchMeansNoLines) {
    for (unsigned i = 1; i <= 6; ++i) Job(i, static_cast<int>(i));
    Open();
    ShowFrames(false, false);
    EXPECT_THAT(Lines(FrameNo()), IsEmpty());
}

// However many jobs share a column, there are few drawing calls for it.
TEST_F(AxesTest, ManyJobsInAColumnCostNoMoreThanOne) {
    for (unsigned i = 0; i < 40000; ++i) Job(i, static_cast<int>(i / 30), i);
    Open(0.01f);
    ShowFrames(true, true);
    ASSERT_EQ(View().m_JobLast, 40000);
    EXPECT_LE(Lines(CountAxis()).size(), 2u * kWidth);
    EXPECT_LE(Lines(FrameNo()).size(), 1u * kWidth);
}

// --- Against the plain walk ----------------------------------------------------------------------

// Digits of unequal width: what fits cannot be told from their number alone.
class UnevenGlyphs : public vesk::FixedGlyphs {
public:
    int Advance(std::uint8_t character) const override {
        return character == '1' ? 3 : character == '-' ? 2 : character % 2 == 0 ? 7 : 9;
    }
    int DeviceAdvance(std::uint8_t character, double scale) const override {
        return static_cast<int>(std::lround(Advance(character) * scale));
    }
};

class PlainAxesTest : public AxesTest, public testing::WithParamInterface<int> {
protected:
    // Numbers of all lengths; with few long runs of long ones.
    static void GiveNumbers(vesk::Dice& dice) {
        const int style = dice.Between(0, 3);
        int frame = dice.Between(-3, 3);
        for (McuJob& job : Jobs()) {
            if (style == 0) return;
            const auto limit = dice.Of({10u, 1000u, 100000u, 4294967295u});
            job.m_TimeCount = style == 1 || dice.OnceIn(40) ? dice.Below(limit) : 1234567890u;
            if (dice.OnceIn(style == 2 ? 2 : 200)) frame = dice.Between(-2000000, 2000000);
            if (dice.OnceIn(30)) frame = dice.Between(-9, 9);
            job.m_TimeStamp = frame;
        }
    }

    void ExpectSame(const Drawing& drawn, const Drawing& plain, double scale) {
        static const UnevenGlyphs uneven;
        EXPECT_EQ(Differences(drawn, plain, scale), 0);
        EXPECT_EQ(Differences(drawn, plain, scale, uneven), 0);
    }
};

TEST_P(PlainAxesTest, ThePictureIsThatOfEveryJobInItsTurn) {
    const int seed = GetParam();
    vesk::Dice dice(static_cast<std::uint64_t>(seed));
    vesk::FillRandomList(Jobs(), static_cast<std::uint64_t>(seed), dice.Of({0, 3, 60, 900, 6000}));
    GiveNumbers(dice);
    CMcuView& view = Open();
    const double scale = dice.Of({1.0, 1.0, 0.75, 1.5, 2.0});
    for (int i = 0; i < 4; ++i) {
        vesk::LookSomewhere(view, dice);
        view.m_ClockBase = dice.Of({1, 10, 1000, 1000000});
        view.m_TimeBase = dice.Of({1, 10, 1000, 1000000});
        ShowFrames(dice.Chance(80), dice.Chance(80));
        SCOPED_TRACE(testing::Message()
                     << "offset " << view.m_TimeOffset << " scale " << view.m_PixelsPerQbit);
        ExpectSame(
            CountAxis(), [&](CDC* dc) { vesk::PlainCountAxis(view, dc); }, scale);
        ExpectSame(
            FrameNo(), [&](CDC* dc) { vesk::PlainFrameNo(view, dc); }, scale);
        ExpectSame(
            ClockAxis(), [&](CDC* dc) { vesk::PlainClockAxis(view, dc); }, scale);
        ExpectSame(
            TimeAxis(), [&](CDC* dc) { vesk::PlainTimeAxis(view, dc); }, scale);
    }
}

INSTANTIATE_TEST_SUITE_P(Logs, PlainAxesTest, testing::Range(0, 30));
