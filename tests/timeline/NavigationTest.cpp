#include "platform/Keys.h"
#include "tests/timeline/RandomList.h"
#include "tests/timeline/ViewTest.h"

namespace {

class NavigationTest : public ViewTest {
protected:
    NavigationTest() {
        for (int i = 0; i < 29; ++i) Log().m_JobNames["Task" + std::to_string(i)] = 1;
        LogOf(1000000);
        Open();
        GoTo(5000);
    }
    std::uint64_t Offset() { return View().m_TimeOffset; }
};

// --- Moving --------------------------------------------------------------------------------------

TEST_F(NavigationTest, AWheelScrollsLanesAndWithShiftTime) {
    Wheel(1);
    EXPECT_EQ(View().m_LaneOffset, 3);
    Wheel(-0.5);
    Wheel(-0.25);
    EXPECT_EQ(View().m_LaneOffset, 1) << "a third of a notch is a lane, the rest waits";
    Wheel(-0.25);
    EXPECT_EQ(View().m_LaneOffset, 0);
    EXPECT_EQ(Offset(), 5000u);
    Wheel(-1, MK_SHIFT);
    EXPECT_EQ(Offset(), 5050u) << "a tenth of the view";
    Wheel(2, MK_SHIFT);
    EXPECT_EQ(Offset(), 4950u);
    ExpectConsistent(View());
}

TEST_F(NavigationTest, AAndDPanByATenthAndStayInTheLog) {
    Key('D');
    EXPECT_EQ(Offset(), 5050u);
    Key('A');
    Key('A');
    EXPECT_EQ(Offset(), 4950u);
    GoTo(20);
    Key('A');
    EXPECT_EQ(Offset(), 0u);
    GoTo(999480);
    Key('D');
    EXPECT_EQ(Offset(), 999500u);
    ExpectConsistent(View());
}

TEST_F(NavigationTest, EvenFarZoomedInAStepLeadsSomewhere) {
    ZoomBy(7);  // 3 QBit are in view
    GoTo(5000);
    Key('D');
    EXPECT_EQ(Offset(), 5001u);
    Wheel(0.1, MK_SHIFT);
    EXPECT_EQ(Offset(), 5000u);
}

TEST_F(NavigationTest, AMiddleDragMovesTheLogAlong) {
    MiddleDrag({{500, 300}, {400, 300}, {440, 341}});
    EXPECT_EQ(Offset(), 5030u);
    EXPECT_EQ(View().m_LaneOffset, 2);
    View().OnMouseMove(0, {0, 0});
    EXPECT_EQ(Offset(), 5030u) << "the button is up";
    ExpectConsistent(View());
}

TEST_F(NavigationTest, ASlowDragLosesNothing) {
    ZoomBy(7);  // 256 pixels a QBit
    GoTo(5000);
    View().OnMButtonDown(MK_MBUTTON, {900, 300});
    for (int x = 900; x >= 388; --x) View().OnMouseMove(MK_MBUTTON, {x, 300});
    EXPECT_EQ(Offset(), 5002u);
}

TEST_F(NavigationTest, ADragWhoseReleaseWasMissedEnds) {
    View().OnMButtonDown(MK_MBUTTON, {500, 300});
    View().OnMouseMove(0, {400, 300});
    View().OnMouseMove(MK_MBUTTON, {300, 300});
    EXPECT_EQ(Offset(), 5000u);
}

TEST_F(NavigationTest, KeysWithOtherModifiersAreLeftAlone) {
    Key('D', MK_CONTROL);
    Key('W', MK_SHIFT);
    Key('F', MK_ALT);
    Key(VK_LEFT);
    EXPECT_EQ(Offset(), 5000u);
    EXPECT_EQ(View().m_ZoomRatio, 1.0f);
}

// --- History -------------------------------------------------------------------------------------

TEST_F(NavigationTest, AltLeftAndRightWalkThroughTheViewsShown) {
    Key('W');
    Press(32771);
    Key('F');
    const auto shown = [&] { return std::pair(View().m_TimeOffset, View().m_ZoomRatio); };
    const auto whole = shown();
    Key(VK_LEFT, MK_ALT);
    EXPECT_EQ(View().m_ZoomRatio, 1.0f);
    ExpectConsistent(View());
    Key(VK_LEFT, MK_ALT);
    EXPECT_EQ(View().m_ZoomRatio, 2.0f);
    Key(VK_LEFT, MK_ALT);
    EXPECT_EQ(shown(), std::pair(std::uint64_t{5000}, 1.0f));
    Key(VK_LEFT, MK_ALT);
    EXPECT_EQ(Offset(), 5000u) << "there is nothing before";
    for (int i = 0; i < 4; ++i) Key(VK_RIGHT, MK_ALT);
    EXPECT_EQ(shown(), whole);
    ExpectConsistent(View());
}

TEST_F(NavigationTest, AMovementCountsOnceHoweverManyStepsItTakes) {
    const struct {
        const char* what;
        std::function<void()> step;
        std::function<void()> end;
    } cases[] = {
        {"wheel", [&] { Wheel(-1, MK_SHIFT); }, [] {}},
        {"wheel zoom", [&] { Wheel(1, MK_CONTROL); }, [] {}},
        {"keys", [&] { Key('D'); }, [] {}},
        {"bar", [&] { ScrollTime(SB_LINERIGHT); }, [] {}},
        {"thumb", [&] { ScrollTime(SB_THUMBTRACK, View().m_HScrollPos + 99); },
         [&] { ScrollTime(SB_THUMBPOSITION, View().m_HScrollPos + 99); }},
        {"drag",
         [&] {
             MiddleDrag({{500, 300}, {490, 300}, {480, 300}});
         },
         [] {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        View().Reload();
        GoTo(5000);
        c.step();
        if (std::string(c.what) != "drag") c.step(), c.step();
        c.end();
        EXPECT_NE(Offset(), 5000u);
        Key(VK_LEFT, MK_ALT);
        EXPECT_EQ(Offset(), 5000u);
        EXPECT_FALSE(View().History().CanGoBack());
    }
}

TEST_F(NavigationTest, AnotherKindOfMovementCountsAnew) {
    Key('D');
    Wheel(-1, MK_SHIFT);
    Key('D');
    MiddleDrag({{500, 300}, {400, 300}});
    MiddleDrag({{500, 300}, {400, 300}});
    for (const std::uint64_t offset : {5200, 5150, 5100, 5050, 5000}) {
        Key(VK_LEFT, MK_ALT);
        EXPECT_EQ(Offset(), offset);
    }
}

TEST_F(NavigationTest, EachGripOfTheThumbCountsAnew) {
    for (const int track : {10000, 20000}) {
        ScrollTime(SB_THUMBTRACK, track - 500);
        ScrollTime(SB_THUMBTRACK, track);
        ScrollTime(SB_THUMBPOSITION, track);
    }
    Key(VK_LEFT, MK_ALT);
    EXPECT_EQ(Offset(), 10000u) << "the bar is as good as unstretched here";
    Key(VK_LEFT, MK_ALT);
    EXPECT_EQ(Offset(), 5000u);
}

TEST_F(NavigationTest, AChangeAfterGoingBackEndsTheWayForth) {
    Key('W');
    Key(VK_LEFT, MK_ALT);
    Key('D');
    EXPECT_FALSE(View().History().CanGoForward());
    Key(VK_LEFT, MK_ALT);
    EXPECT_EQ(Offset(), 5000u);
}

TEST_F(NavigationTest, WhatChangesNothingIsNoStepOfTheHistory) {
    GoTo(0);
    Key('A');
    Wheel(-5);
    ScrollTime(SB_LINELEFT);
    Press(40132);
    EXPECT_FALSE(View().History().CanGoBack());
}

TEST(ViewHistory, KeepsTheLastHundred) {
    vesk::ViewHistory history;
    for (std::uint64_t i = 0; i < 150; ++i)
        history.Note({i, 1.0f}, {i + 1, 1.0f}, vesk::SpanChange::kJump);
    vesk::ShownSpan span{150, 1.0f};
    int steps = 0;
    for (; history.CanGoBack(); ++steps) span = *history.Back(span);
    EXPECT_EQ(steps, 100);
    EXPECT_EQ(span.m_TimeOffset, 50u);
}

// --- Long walks ----------------------------------------------------------------------------------

class LongWalk : public ViewTest {
protected:
    void Step(vesk::Dice& dice) {
        const std::initializer_list<unsigned> commands = {2020,  32771, 40131, 40132, 40308,
                                                          40135, 40136, 40140, 40137, 40138,
                                                          40186, 40214, 40196};
        const std::initializer_list<unsigned> modifiers = {0, MK_CONTROL, MK_SHIFT};
        const unsigned code = dice.Below(9);
        switch (dice.Below(10)) {
            case 0:
            case 1:
                Press(dice.Of(commands));
                break;
            case 2:
                ScrollTime(code, dice.Between(0, View().m_HScrollMax));
                break;
            case 3:
                ScrollLanes(code, dice.Between(-2, View().m_VScrollMax + 2));
                break;
            case 4:
                Wheel(dice.Between(-400, 400) / 100.0, dice.Of(modifiers), dice.Between(-9, 1200));
                break;
            case 5:
                Key(dice.Of({'W', 'A', 'S', 'D', 'F'}));
                break;
            case 6:
                Key(dice.Of({VK_LEFT, VK_RIGHT}), MK_ALT);
                break;
            case 7:
                MiddleDrag({{500, 300}, {dice.Between(0, 1000), dice.Between(0, 600)}});
                break;
            case 8:
                View().m_CursorTime = dice.Next() % (Log().m_EndTime + 1);
                break;
            default:
                View().MoveWindow(0, 0, dice.Between(0, 2000), dice.Between(0, 1200));
        }
    }
};

TEST_F(LongWalk, StaysConsistentAtEveryStep) {
    for (std::uint64_t seed = 1; seed <= 25; ++seed) {
        vesk::FillRandomList(Log(), seed, 200);
        if (seed % 5 == 0) Log().m_EndTime <<= 32;  // the bar is stretched
        Open();
        vesk::Dice dice(seed);
        for (int step = 0; step < 120; ++step) {
            Step(dice);
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", step " << step);
            ExpectConsistent(View());
            if (HasFailure()) return;
        }
    }
}

}  // namespace
