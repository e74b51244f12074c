#include "tests/timeline/ViewTest.h"

#include "timeline/TimelineIndex.h"

using testing::ElementsAre;

namespace {

constexpr unsigned kPure = 40131, kRelative = 40132, kContextSwitch = 40308;
constexpr unsigned kClock = 40135, kTime = 40136, kCount = 40140;
constexpr unsigned kUp = 40137, kDown = 40138;
constexpr unsigned kFrames = 40186, kDottedLines = 40214, kCustomLogging = 40196;

// --- Canvas --------------------------------------------------------------------------------------

TEST_F(ViewTest, TheCanvasLeavesFixedMargins) {
    const struct {
        const char* what;
        int width, height;
        int canvasWidth, bottom, canvasHeight, x1, x2;
        std::uint64_t visible;
    } cases[] = {
        {"as of the other tests", 1110, 617, 1000, 500, 470, 580, 830, 500},
        {"odd sizes", 1117, 700, 1007, 583, 553, 583, 835, 503},
        {"low: the bottom stays", 500, 216, 390, 100, 70, 275, 372, 195},
        {"one pixel higher", 500, 218, 390, 101, 71, 275, 372, 195},
        {"no width for time", 110, 617, 0, 500, 470, 80, 80, 0},
        {"narrower than its margins", 60, 617, -50, 500, 470, 55, 43, 0},
        {"nothing at all", 0, 0, -110, 100, 70, 25, -2, 0},
    };
    LogOf(100000);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const CMcuView& view = Open(c.width, c.height);
        EXPECT_EQ(view.m_CanvasLeft, 80);
        EXPECT_EQ(view.m_CanvasWidth, c.canvasWidth);
        EXPECT_EQ(view.m_CanvasBottom, c.bottom);
        EXPECT_EQ(view.m_CanvasHeight, c.canvasHeight);
        EXPECT_EQ(view.m_RangeX1, c.x1);
        EXPECT_EQ(view.m_RangeX2, c.x2);
        EXPECT_EQ(view.m_VisibleQbits, c.visible);
        ExpectConsistent(view);
    }
}

TEST_F(ViewTest, OnlyTheDrawnPartIsPaintedAnew) {
    const struct {
        const char* what;
        int height;
        CRect part;
    } cases[] = {
        {"the band ends where the bar begins", 617, {0, 0, 1093, 600}},
        {"low: the bar cuts the band", 150, {0, 0, 1093, 133}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Open(kWidth, c.height).InvalidateView();
        EXPECT_EQ(Painted(), c.part);
    }
}

TEST_F(ViewTest, TheBarsStandAtTheEdges) {
    CRect bar;
    Open();
    View().m_HScrollBar.GetWindowRect(&bar);
    EXPECT_EQ(bar, (CRect{0, 600, 1093, 617}));
    View().m_VScrollBar.GetWindowRect(&bar);
    EXPECT_EQ(bar, (CRect{1093, 0, 1110, 600}));
    EXPECT_TRUE(View().m_VScrollBar.IsVertical());
    EXPECT_FALSE(View().m_HScrollBar.IsVertical());
    EXPECT_EQ(View().m_HScrollBar.GetDlgCtrlID(), 40044);
    EXPECT_EQ(View().m_VScrollBar.GetDlgCtrlID(), 40045);
}

// --- Taking over a log ---------------------------------------------------------------------------

TEST_F(ViewTest, AnEmptyLogShowsNothing) {
    const CMcuView& view = Open();
    EXPECT_EQ(view.m_JobLast, 0);
    EXPECT_EQ(view.m_CursorTime, 0u);
    EXPECT_EQ(view.m_IdleRatio, 0);
    EXPECT_TRUE(view.m_RelativeList.empty());
    ExpectConsistent(view);
}

TEST_F(ViewTest, WithoutAListTheLogIsEmpty) {
    vesk_dll_shared_data.m_pJobList = nullptr;
    const CMcuView& view = Open();
    EXPECT_EQ(view.m_JobLast, 0);
    ExpectConsistent(view);
}

TEST_F(ViewTest, TheIdleRatioIsAWholePercentageOfTheLog) {
    const struct {
        std::uint64_t idle, end;
        int percent;
    } cases[] = {{0, 1000, 0}, {299, 1000, 29}, {1000, 1000, 100}, {1ULL << 63, UINT64_MAX, 50}};
    for (const auto& c : cases) {
        Log().m_IdleTotal = c.idle;
        Log().m_EndTime = c.end;
        EXPECT_EQ(Open().m_IdleRatio, c.percent) << c.idle << " of " << c.end;
    }
}

TEST_F(ViewTest, AReloadStartsOverButKeepsHowTheLogIsShown) {
    VESKUIDoc document;
    LogOf(100000);
    CMcuView& view = Open();
    Press(2020);
    Press(kRelative);
    Press(kClock);
    Press(kUp);
    Press(kFrames);
    document.m_Markers.AddMarker(5);
    document.m_TSTInfos = {"of the log before"};
    view.m_DragMarkerIndex = view.m_DurationFrom = view.m_DurationTo = 0;
    GoTo(5000);

    Log().Clear();
    Names({"TaskB", "TaskA"});
    Log().m_EndTime = 60;
    Log().m_ExtraInfoNum = 3;
    view.ReloadLog();

    EXPECT_EQ(view.m_TimeOffset, 0u);
    EXPECT_EQ(view.m_LaneOffset, 0);
    EXPECT_EQ(view.m_CursorTime, 60u);
    EXPECT_THAT(document.m_Markers, testing::IsEmpty());
    EXPECT_THAT(document.m_TSTInfos, ElementsAre("TaskA", "TaskB"));
    EXPECT_EQ(view.m_DragMarkerIndex, -1);
    EXPECT_EQ(view.m_DurationFrom, -1);
    EXPECT_EQ(view.m_DurationTo, -1);
    EXPECT_EQ(view.m_ExtraShown, std::vector<bool>(3, true));
    EXPECT_EQ(view.m_ExtraCursorValue.size(), 3u);
    EXPECT_FALSE(view.History().CanGoBack());
    EXPECT_EQ(Painted(), (CRect{0, 0, kWidth, kHeight}));

    EXPECT_EQ(view.m_ZoomRatio, 2.0f);
    EXPECT_EQ(view.m_Outlook, OUTLOOK_RELATIVE);
    EXPECT_EQ(view.m_TimeUnit, TIMEUNIT_CLOCK);
    EXPECT_EQ(view.m_ClockBase, 10);
    EXPECT_TRUE(view.m_ShowFrameNo);
    ExpectConsistent(view);
}

TEST_F(ViewTest, WhatIsDerivedFromALogGoesWithIt) {
    LogOf(100);
    CMcuView& view = Open();
    EXPECT_EQ(&view.Index().List(), &Log());
    EXPECT_EQ(&view.Index(), &view.Index());
    vesk_dll_shared_data.free_joblist();
    EXPECT_EQ(&view.Index().List(), vesk_dll_shared_data.m_pJobList);
}

// --- Lanes ---------------------------------------------------------------------------------------

TEST_F(ViewTest, LanesAreTasksThenInterruptsFromTheBottomUp) {
    Names({"IRQ0x1a", "IRQ3", "irq10", "IRQDMA", "IRQ_B", "IRQ_A", "IRQ0x3", "IRQ", "Task", "IDLE",
           "task", "IRQFFFFFFFF"});
    EXPECT_THAT(Open().m_RelativeList,
                ElementsAre("task", "Task", "IRQ", "IDLE",  // tasks
                            "IRQ_B", "IRQ_A",               // no number
                            "IRQ0x1a", "irq10", "IRQDMA", "IRQ3", "IRQ0x3", "IRQFFFFFFFF"));
}

TEST_F(ViewTest, FunctionsAndMarksAreListedToo) {
    Names({"IRQ2", "Task"});
    Log().m_CustomNames = {{"g", 1}, {"f", 1}};
    Log().m_SourceMarkNames = {{"m", 1}};
    std::list<std::string> irqs, tasks, functions, marks;
    Open().GetJobNameList(irqs, tasks, functions, marks);
    EXPECT_THAT(irqs, ElementsAre("IRQ2"));
    EXPECT_THAT(tasks, ElementsAre("Task"));
    EXPECT_THAT(functions, ElementsAre("f", "g"));
    EXPECT_THAT(marks, ElementsAre("m"));
}

TEST_F(ViewTest, InsertedNamesComeFromTheBackAndLeaveTheirList) {
    CMcuView& view = Open();
    view.m_RelativeList = {"first"};
    std::list<std::string> names = {"c", "b", "a"};
    view.InsertRelativeList(names);
    EXPECT_THAT(view.m_RelativeList, ElementsAre("first", "a", "b", "c"));
    EXPECT_TRUE(names.empty());
}

// --- Commands ------------------------------------------------------------------------------------

TEST_F(ViewTest, ChoicesAreCheckedAndRepaintOnlyIfTheyChange) {
    const struct {
        unsigned before, id;
    } cases[] = {
        {kRelative, kPure}, {kPure, kRelative}, {kCount, kClock}, {kClock, kTime}, {kTime, kCount}};
    Open();
    for (const auto& c : cases) {
        Press(c.before);
        Painted();
        EXPECT_FALSE(Look(c.id).m_Checked) << c.id;
        EXPECT_TRUE(Press(c.id));
        EXPECT_TRUE(Look(c.id).m_Checked) << c.id;
        EXPECT_FALSE(Look(c.before).m_Checked) << c.id;
        EXPECT_EQ(Painted(), (CRect{0, 0, 1093, 600})) << c.id;
        EXPECT_TRUE(Press(c.id));
        EXPECT_TRUE(Painted().IsRectEmpty()) << c.id;
    }
}

TEST_F(ViewTest, ASwitchTogglesItsCheck) {
    Open();
    for (const unsigned id : {kContextSwitch, kFrames, kDottedLines, kCustomLogging}) {
        const bool before = Look(id).m_Checked;
        EXPECT_TRUE(Press(id));
        EXPECT_NE(Look(id).m_Checked, before) << id;
        EXPECT_FALSE(Painted().IsRectEmpty()) << id;
    }
    EXPECT_FALSE(View().m_ContextSwitch);
    EXPECT_TRUE(View().m_ShowFrameNo);
    EXPECT_TRUE(View().m_ShowDottedLine);
    EXPECT_FALSE(View().m_ShowCustomLogging);
    EXPECT_TRUE(Look(kCustomLogging).m_Checked) << "\"Disable\" is checked while it isn't shown";
    EXPECT_FALSE(Look(kFrames).m_Checked);
}

TEST_F(ViewTest, TheCounterIsCalledAsTheLogCounts) {
    Open();
    EXPECT_EQ(Look(kCount).m_Text, "TQCNT");
    Log().m_IsTQCNT = false;
    EXPECT_EQ(Look(kCount).m_Text, "USCNT");
}

TEST_F(ViewTest, TheClockBaseGoesUpByTensWhileItFits) {
    Open();
    Press(kClock);
    EXPECT_FALSE(Look(kDown).m_Enabled);
    for (int base = 1; base < 1000000000; base *= 10) {
        EXPECT_EQ(View().m_ClockBase, base);
        EXPECT_TRUE(Press(kUp));
    }
    EXPECT_EQ(View().m_ClockBase, 1000000000);
    EXPECT_FALSE(Look(kUp).m_Enabled);
    View().OnMcuBasetimeUp();
    EXPECT_EQ(View().m_ClockBase, 1000000000);
    EXPECT_TRUE(Press(kDown));
    EXPECT_EQ(View().m_ClockBase, 100000000);
    View().m_ClockBase = 214748364;
    EXPECT_TRUE(Press(kUp));
    EXPECT_EQ(View().m_ClockBase, 2147483640);
    EXPECT_EQ(View().m_TimeBase, 1);
}

TEST_F(ViewTest, TheTimeBaseGoesTheOtherWayAndIsAlwaysEnabled) {
    Open();
    Press(kTime);
    EXPECT_TRUE(Press(kUp));
    EXPECT_EQ(View().m_TimeBase, 1);
    for (int i = 0; i < 12; ++i) EXPECT_TRUE(Press(kDown));
    EXPECT_EQ(View().m_TimeBase, 1000000000);
    EXPECT_TRUE(Press(kUp));
    EXPECT_EQ(View().m_TimeBase, 100000000);
    EXPECT_EQ(View().m_ClockBase, 1);
}

TEST_F(ViewTest, TheCounterHasNoBase) {
    Open();
    EXPECT_FALSE(Look(kUp).m_Enabled);
    EXPECT_FALSE(Look(kDown).m_Enabled);
    View().OnMcuBasetimeDown();
    EXPECT_FALSE(Painted().IsRectEmpty());
    EXPECT_EQ(View().m_ClockBase, 1);
    EXPECT_EQ(View().m_TimeBase, 1);
}

TEST_F(ViewTest, TheMenuAtThePointerRunsTheViewsCommands) {
    AFX_EXTENSION_MODULE module;
    ASSERT_TRUE(AfxInitExtensionModule(module, &vesk::VeskResources()));
    {
        const CDynLinkLibrary joined(module);
        Open();
        m_User.OnMenu(kRelative);
        View().OnContextMenu(&View(), {10, 10});
        EXPECT_EQ(View().m_Outlook, OUTLOOK_RELATIVE);
        m_User.OnMenu(kUp);  // disabled in the counter's unit
        View().OnContextMenu(&View(), {10, 10});
        EXPECT_EQ(m_User.m_Faults.size(), 1u);
    }
    AfxTermExtensionModule(module);
}

}  // namespace
