#include "tests/timeline/ViewTest.h"

namespace {

class ScrollTest : public ViewTest {
protected:
    void OpenLog(std::uint64_t end) {
        Log().Clear();
        LogOf(end);
        Open();
    }
    // As many lanes, of which 22 fit.
    void OpenLanes(int lanes) {
        Log().Clear();
        for (int i = 0; i < lanes; ++i) Log().m_JobNames["Task" + std::to_string(i)] = 1;
        Open();
    }
};

// --- Time ----------------------------------------------------------------------------------------

TEST_F(ScrollTest, TheRangeEndsAtTheLastLeftEdgeLessThePage) {
    const struct {
        const char* what;
        std::uint64_t end;
        int max;
    } cases[] = {
        {"500 QBit are in view", 10000, 9471},
        {"shorter than the view", 499, 0},
        {"as long as the view", 500, 0},
        {"longer by less than a page", 529, 0},
        {"by a page", 530, 1},
        {"the longest that is not stretched", 0x7FFFFFFFULL + 500, 0x7FFFFFFF - 29},
        {"stretched", 1ULL << 50, 0x7FFFFFFF - 29},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        OpenLog(c.end);
        EXPECT_EQ(View().m_HScrollMax, c.max);
        EXPECT_EQ(View().m_HScrollMin, 0);
        ExpectConsistent(View());
    }
}

TEST_F(ScrollTest, ThePositionFollowsTheTime) {
    const struct {
        std::uint64_t end, time, offset;
        int position;
    } cases[] = {
        {10000, 4750, 4750, 4735},  // 9471 / 9500 * 4750 = 4735.5
        {10000, 9500, 9500, 9471},  //
        {10000, 9501, 9500, 9471},  // past the end
        {10000, 1, 1, 0},           //
        {499, 100, 0, 0},           // all of the log fits
        {520, 20, 20, 0},           // too short a way for the bar
        {10000000500, 5000000000, 5000000000, 1073741809},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.time << " of " << c.end);
        OpenLog(c.end);
        GoTo(c.time);
        EXPECT_EQ(View().m_TimeOffset, c.offset);
        EXPECT_EQ(View().m_HScrollPos, c.position);
        ExpectConsistent(View());
    }
}

TEST_F(ScrollTest, TheTimeFollowsTheThumb) {
    const struct {
        const char* what;
        std::uint64_t end, from;
        unsigned code;
        int track;
        int position;
        std::uint64_t offset;
    } cases[] = {
        {"a line right", 10000, 0, SB_LINERIGHT, 0, 12, 12},
        {"a line left", 10000, 4750, SB_LINELEFT, 0, 4723, 4737},
        {"a line left, not past the begin", 10000, 5, SB_LINELEFT, 0, 0, 0},
        {"a line right, not past the end", 10000, 9495, SB_LINERIGHT, 0, 9471, 9500},
        {"a page right", 10000, 0, SB_PAGERIGHT, 0, 333, 334},
        {"a page left", 10000, 4750, SB_PAGELEFT, 0, 4402, 4415},
        {"a page left, not past the begin", 10000, 300, SB_PAGELEFT, 0, 0, 0},
        {"a page right, not past the end", 10000, 9300, SB_PAGERIGHT, 0, 9471, 9500},
        {"the thumb", 10000, 0, SB_THUMBTRACK, 1000, 1000, 1003},
        {"the thumb, let go", 10000, 0, SB_THUMBPOSITION, 1000, 1000, 1003},
        {"the thumb past the end", 10000, 0, SB_THUMBTRACK, 9490, 9471, 9500},
        {"the begin", 10000, 4750, SB_LEFT, 0, 0, 0},
        {"the end", 10000, 4750, SB_RIGHT, 0, 9471, 9500},
        {"stretched: a line is longer", 10000000500, 0, SB_LINERIGHT, 0, 12, 55},
        {"stretched: the thumb", 10000000500, 0, SB_THUMBTRACK, 1073741809, 1073741809, 5000000000},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        OpenLog(c.end);
        GoTo(c.from);
        Painted();
        ScrollTime(c.code, c.track);
        EXPECT_EQ(View().m_HScrollPos, c.position);
        EXPECT_EQ(View().m_TimeOffset, c.offset);
        EXPECT_EQ(Painted(), (CRect{0, 0, 1093, 600}));
        ExpectConsistent(View());
    }
}

TEST_F(ScrollTest, WhatLeadsNowhereRepaintsNothing) {
    const struct {
        const char* what;
        std::uint64_t end, from;
        unsigned code;
    } cases[] = {
        {"left of the begin", 10000, 0, SB_LINELEFT},
        {"a page left of the begin", 10000, 0, SB_PAGELEFT},
        {"right of the end", 10000, 9500, SB_LINERIGHT},
        {"a page right of the end", 10000, 9500, SB_PAGERIGHT},
        {"to the end, where it is", 10000, 9500, SB_RIGHT},
        {"a log that fits", 400, 0, SB_PAGERIGHT},
        {"the end of an action", 10000, 100, SB_ENDSCROLL},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        OpenLog(c.end);
        GoTo(c.from);
        Painted();
        ScrollTime(c.code);
        EXPECT_EQ(View().m_TimeOffset, c.from);
        EXPECT_TRUE(Painted().IsRectEmpty());
    }
}

// 250 QBit are in view at zoom 2, so a line is 6.
TEST_F(ScrollTest, StepsFollowTheVisibleSpan) {
    OpenLog(100000);
    ZoomBy(1);
    ScrollTime(SB_LINERIGHT);
    EXPECT_EQ(View().m_HScrollPos, 6);
    ScrollTime(SB_PAGERIGHT);
    EXPECT_EQ(View().m_HScrollPos, 6 + 166);
}

TEST_F(ScrollTest, ABarOfSomeoneElseScrollsNothing) {
    OpenLog(10000);
    CScrollBar other;
    View().OnHScroll(SB_RIGHT, 0, &other);
    View().OnVScroll(SB_TOP, 0, &other);
    EXPECT_EQ(View().m_TimeOffset, 0u);
    EXPECT_TRUE(Painted().IsRectEmpty());
}

TEST_F(ScrollTest, ScrollingHidesTheTip) {
    OpenLog(10000);
    for (const bool vertical : {false, true}) {
        View().m_ToolTip->TrackActivate(true);
        View().m_ToolTipShown = 1;
        vertical ? ScrollLanes(SB_ENDSCROLL) : ScrollTime(SB_ENDSCROLL);
        EXPECT_EQ(View().m_ToolTipShown, 0);
        EXPECT_FALSE(View().m_ToolTip->IsWindowVisible());
    }
}

// --- Lanes ---------------------------------------------------------------------------------------

TEST_F(ScrollTest, TheRangeCountsTheLanesThatDoNotFit) {
    OpenLanes(20);
    EXPECT_EQ(View().m_VScrollMax, 0);
    OpenLanes(22);
    EXPECT_EQ(View().m_VScrollMax, 0);
    Log().m_CustomShown = {true, false, true, true};
    Log().m_SourceMarkShown = {false, true};
    Log().m_HWJobs = {{"a", {}}, {"b", {}}};
    View().SetVScrollRange();
    EXPECT_EQ(View().m_VScrollMax, 3 + 1 + 2);
    View().m_ShowCustomLogging = false;
    View().SetVScrollRange();
    EXPECT_EQ(View().m_VScrollMax, 1 + 2);
}

TEST_F(ScrollTest, LanesScrollFromTheBottomUp) {
    const struct {
        const char* what;
        int from;
        unsigned code;
        int track;
        int offset;
    } cases[] = {
        {"a line up", 0, SB_LINEUP, 0, 1},
        {"a line down", 3, SB_LINEDOWN, 0, 2},
        {"a page up", 0, SB_PAGEUP, 0, 5},
        {"a page down", 7, SB_PAGEDOWN, 0, 2},
        {"a page up, to the top", 6, SB_PAGEUP, 0, 8},
        {"a page down, to the bottom", 2, SB_PAGEDOWN, 0, 0},
        {"the thumb", 0, SB_THUMBTRACK, 3, 5},
        {"the thumb above the top", 0, SB_THUMBTRACK, -3, 8},
        {"the thumb past the limit", 5, SB_THUMBTRACK, 99, 0},
        {"the top", 0, SB_TOP, 0, 8},
        {"the bottom", 5, SB_BOTTOM, 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        OpenLanes(30);
        View().m_LaneOffset = c.from;
        View().Cal_VScrollPos();
        ExpectConsistent(View());
        ScrollLanes(c.code, c.track);
        EXPECT_EQ(View().m_LaneOffset, c.offset);
        EXPECT_EQ(View().m_VScrollPos, 8 - c.offset);
        EXPECT_EQ(Painted(), (CRect{0, 0, 1093, 600}));
        ExpectConsistent(View());
    }
    ScrollLanes(SB_BOTTOM);
    EXPECT_TRUE(Painted().IsRectEmpty());
}

TEST_F(ScrollTest, TheSwitchOfFunctionsGoesBackToTheBottom) {
    OpenLanes(30);
    Log().m_CustomShown = {true, true};
    ScrollLanes(SB_TOP);
    EXPECT_EQ(View().m_LaneOffset, 8);
    Press(40196);
    EXPECT_EQ(View().m_LaneOffset, 0);
    EXPECT_EQ(View().m_VScrollMax, 8);
    Press(40196);
    EXPECT_EQ(View().m_VScrollMax, 10);
    EXPECT_EQ(View().m_VScrollPos, 10);
    ExpectConsistent(View());
}

// --- Size ----------------------------------------------------------------------------------------

TEST_F(ScrollTest, ANewSizeKeepsTimeAndLanes) {
    OpenLanes(30);
    Log().m_EndTime = 10000;
    View().Reload();
    GoTo(4000);
    ScrollLanes(SB_PAGEUP);
    View().MoveWindow(0, 0, 610, 517);  // 5 lanes fewer fit
    EXPECT_EQ(View().m_TimeOffset, 4000u);
    EXPECT_EQ(View().m_LaneOffset, 5);
    EXPECT_EQ(View().m_VScrollMax, 13);
    EXPECT_EQ(View().m_VisibleQbits, 250u);
    ExpectConsistent(View());

    GoTo(9700);
    View().MoveWindow(0, 0, 3110, 2017);
    EXPECT_EQ(View().m_TimeOffset, 8500u) << "the end moves to the right edge";
    EXPECT_EQ(View().m_LaneOffset, 0) << "all lanes fit";
    ExpectConsistent(View());
    View().MoveWindow(0, 0, 20, 20);
    ExpectConsistent(View());
}

}  // namespace
