#include "platform/CBrush.h"
#include "platform/CPen.h"
#include "tests/support/Dice.h"
#include "tests/timeline/PaintTest.h"
#include "tests/timeline/RandomList.h"

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class PaintCycleTest : public PaintTest {
protected:
    // A log with something of every kind in view.
    CMcuView& OpenFullLog() {
        McuJobList& jobs = Jobs();
        McuJob job("MAIN", 10, 100);
        jobs.Insert(job);
        job = McuJob("MAIN", 100, 200);
        job.m_TimeStamp = 2;
        job.m_TimeCount = 4321;
        jobs.Insert(job);
        job.m_StartTime = 200;
        job.m_EndTime = 300;
        jobs.Insert(job);
        McuJob call("Function", 20, 90);
        call.m_Flags = kBeganAtEntry | kEndedAtExit | kClosedLastCall;
        jobs.InsertCustomJob(call, 90);
        jobs.InsertCustomJobCS(call);
        jobs.InsertSourceMark({"Mark", 40, 40});
        jobs.InsertHWJob({"Engine", 50, 60});
        Extra("load", 0, 100);
        jobs.m_ExtraInfos = {{0, {0}, "MAIN"}, {200, {50}, "MAIN"}};
        jobs.m_EndTime = 300;
        CMcuView& view = Open();
        view.m_ShowFrameNo = view.m_ShowDottedLine = true;
        return view;
    }

    Drawing WholePaint() {
        return [this](CDC* dc) { View().OnDraw(dc); };
    }

    // Where a line that begins so stands in the recording; one behind the last if it does not.
    static std::ptrdiff_t PlaceOf(const std::vector<std::string>& lines, const std::string& text) {
        return std::find_if(
                   lines.begin(), lines.end(),
                   [&](const std::string& line) { return line.find(text) != std::string::npos; }) -
               lines.begin();
    }

    static void ExpectInOrder(const std::vector<std::string>& lines,
                              const std::vector<std::string>& marks) {
        std::ptrdiff_t last = -1;
        for (const std::string& mark : marks) {
            const std::ptrdiff_t place = PlaceOf(lines, mark);
            EXPECT_LT(place, std::ssize(lines)) << mark << " is missing";
            EXPECT_GT(place, last) << mark;
            last = place;
        }
    }
};

// Curves, frame lines, cursor, y axis, x axis, status line.
const std::vector<std::string> kOverlays = {"dot 1 B4B4B4", "solid 1 0000FF", "\"Job\"", "\"4321\"",
                                            "Ratio of Idle Time"};

std::vector<std::string> Joined(std::vector<std::string> first,
                                const std::vector<std::string>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

TEST_F(PaintCycleTest, StripsLieBelowFrameLinesBelowTheCursorBelowTheAxes) {
    OpenFullLog();
    const std::vector<std::string> lines = Lines(WholePaint());
    EXPECT_EQ(lines.front().substr(0, 8), "fill 0,0");
    ExpectInOrder(lines, Joined({"\"MAIN\"", "\"Function\"", "5D009E", "solid 2 "}, kOverlays));
}

TEST_F(PaintCycleTest, LanesLieBelowFrameLinesBelowTheCursorBelowTheAxes) {
    OpenFullLog().m_Outlook = OUTLOOK_RELATIVE;
    ExpectInOrder(Lines(WholePaint()),
                  Joined({"\"MAIN\"", "\"Function\"", "\"Mark\"", "\"Engine\""}, kOverlays));
}

TEST_F(PaintCycleTest, TheSwitchHidesFunctions) {
    OpenFullLog().m_ShowCustomLogging = false;
    for (const OUTLOOKTYPE outlook : {OUTLOOK_PURE, OUTLOOK_RELATIVE}) {
        View().m_Outlook = outlook;
        EXPECT_THAT(Texts(WholePaint()), Not(Contains("Function")));
    }
}

TEST_F(PaintCycleTest, TheUnitChoosesTheAxis) {
    OpenFullLog();
    const struct {
        TIMEUNITTYPE unit;
        bool clock;
        bool time;
    } cases[] = {{TIMEUNIT_CLOCK, true, false},
                 {TIMEUNIT_TIME, false, true},
                 {TIMEUNIT_COUNT, false, false}};
    for (const auto& c : cases) {
        View().m_TimeUnit = c.unit;
        const std::vector<std::string> texts = Texts(WholePaint());
        EXPECT_EQ(std::count(texts.begin(), texts.end(), "QBit (x1)"), c.clock ? 1 : 0);
        EXPECT_EQ(std::count(texts.begin(), texts.end(), "Execute Time (x1/1.0E0 ms)"),
                  c.time ? 1 : 0);
    }
}

TEST_F(PaintCycleTest, ACanvasWithoutWidthShowsTheMarginsOnly) {
    OpenFullLog();
    View().MoveWindow(0, 0, 100, WindowSize().cy);
    View().OnSize(SIZE_RESTORED, 100, WindowSize().cy);
    ASSERT_LE(View().m_CanvasWidth, 0);
    for (const TIMEUNITTYPE unit : {TIMEUNIT_CLOCK, TIMEUNIT_TIME, TIMEUNIT_COUNT}) {
        View().m_TimeUnit = unit;
        View().m_Outlook = OUTLOOK_RELATIVE;
        const std::vector<std::string> lines = Lines(WholePaint());
        EXPECT_THAT(Texts(WholePaint()), Contains("Job"));
        EXPECT_EQ(PlaceOf(lines, "B4B4B4"), std::ssize(lines));
        EXPECT_EQ(PlaceOf(lines, "QBit"), std::ssize(lines));
        EXPECT_EQ(PlaceOf(lines, "Execute Time"), std::ssize(lines));
    }
}

TEST_F(PaintCycleTest, EveryStepLeavesPenBrushAndTextColourAsTheyWere) {
    OpenFullLog();
    global_vesk_doc_ptr->m_Markers[1] = 50;
    const struct {
        const char* what;
        Drawing draw;
    } steps[] = {
        {"strip", [this](CDC* dc) { View().DrawJobList(dc, 75, 80, 225); }},
        {"lanes", [this](CDC* dc) { View().DrawJobList(dc, 80, kBottom); }},
        {"functions", [this](CDC* dc) { View().DrawCustomJobList(dc, 50, 80, 120); }},
        {"calls", [this](CDC* dc) { View().DrawCustomJobListCS(dc, 50, 80, 120); }},
        {"function", [this](CDC* dc) { View().DrawCustomJob(dc, "Function", 80, 200); }},
        {"call lane", [this](CDC* dc) { View().DrawCustomJobCS(dc, "Function", 80, 200, 0, 1); }},
        {"marks", [this](CDC* dc) { View().DrawSourceMarkList(dc, 80, 70); }},
        {"curves", [this](CDC* dc) { View().DrawExtraInfo(dc, 75, 80, 225); }},
        {"frames", [this](CDC* dc) { View().DrawFrameNo(dc, 80); }},
        {"cursor", [this](CDC* dc) { View().DrawCurTime(dc, 270, 80, kBottom); }},
        {"y axis", [this](CDC* dc) { View().DrawYAxis(dc, 270, 80, kBottom); }},
        {"clock", [this](CDC* dc) { View().DrawXAxis_Clock(dc, kWidth, 80, kBottom); }},
        {"count", [this](CDC* dc) { View().DrawXAxis_Count(dc, kWidth, 80, kBottom); }},
        {"time", [this](CDC* dc) { View().DrawXAxis_Time(dc, kWidth, 80, kBottom); }},
        {"status", [this](CDC* dc) { View().DrawIdleRatio(dc, 10, 380); }},
    };
    CPen pen(PS_SOLID, 3, 0x010203);
    CBrush brush(0x040506);
    for (const auto& step : steps) {
        vesk::RecordingSurface surface(WindowSize());
        CDC dc(&surface);
        dc.SelectObject(&pen);
        dc.SelectObject(&brush);
        dc.SetTextColor(0x070809);
        step.draw(&dc);
        EXPECT_FALSE(surface.Lines().empty()) << step.what;
        EXPECT_EQ(dc.SelectObject(static_cast<CPen*>(nullptr)), &pen) << step.what;
        EXPECT_EQ(dc.SelectObject(static_cast<CBrush*>(nullptr)), &brush) << step.what;
        EXPECT_EQ(dc.GetTextColor(), 0x070809u) << step.what;
    }
}

// Painting in pieces gives the picture of one paint.
TEST_F(PaintCycleTest, APartPaintedAloneEqualsThatPartOfTheWhole) {
    for (std::uint64_t seed = 0; seed < 12; ++seed) {
        vesk::Dice dice(seed);
        vesk::FillRandomList(Jobs(), seed, 300);
        CMcuView& view = Open();
        vesk::LookSomewhere(view, dice);
        view.m_Outlook = dice.Of({OUTLOOK_PURE, OUTLOOK_RELATIVE});
        view.m_TimeUnit = dice.Of({TIMEUNIT_CLOCK, TIMEUNIT_TIME, TIMEUNIT_COUNT});
        view.m_ShowFrameNo = view.m_ShowDottedLine = true;
        const CSize size = WindowSize();
        const int x = dice.Between(1, size.cx - 1);
        const int y = dice.Between(1, size.cy - 1);
        const CRect parts[] = {
            {0, 0, x, y}, {x, 0, size.cx, y}, {0, y, x, size.cy}, {x, y, size.cx, size.cy}};
        const Drawing inPieces = [&](CDC* dc) {
            for (const CRect& part : parts) {
                dc->SetClipBox(part);
                view.OnDraw(dc);
            }
        };
        EXPECT_EQ(Differences(WholePaint(), inPieces, dice.Of({1.0, 1.5})), 0) << seed;
    }
}
