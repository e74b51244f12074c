#include "tests/timeline/ViewTest.h"

namespace {

constexpr unsigned kZoomIn = 2020, kZoomOut = 32771;

class ZoomTest : public ViewTest {
protected:
    ZoomTest() {
        LogOf(1000000000);
        Open();
    }
    void LookAt(std::uint64_t offset, std::uint64_t cursor) {
        GoTo(offset);
        View().m_CursorTime = cursor;
    }
};

// At first 500 QBit are in view.
TEST_F(ZoomTest, ItCentersOnTheCursorInSightElseOnTheMiddle) {
    const struct {
        const char* what;
        std::uint64_t offset, cursor;
        unsigned command;
        std::uint64_t after;
    } cases[] = {
        {"in sight", 1000, 1100, kZoomIn, 975},
        {"on the left edge", 1000, 1000, kZoomIn, 875},
        {"left of it", 1000, 999, kZoomIn, 1125},
        {"on the right edge", 1000, 1500, kZoomIn, 1375},
        {"right of it", 1000, 1501, kZoomIn, 1125},
        {"out, in sight", 1000, 1100, kZoomOut, 600},
        {"out, not in sight", 1000, 0, kZoomOut, 750},
        {"the log's begin stays", 200, 210, kZoomOut, 0},
        {"the log's end stays", 999999500, 1000000000, kZoomOut, 999999000},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        LookAt(c.offset, c.cursor);
        Painted();
        EXPECT_TRUE(Press(c.command));
        EXPECT_EQ(View().m_TimeOffset, c.after);
        EXPECT_EQ(View().m_VisibleQbits, c.command == kZoomIn ? 250u : 1000u);
        EXPECT_EQ(Painted(), (CRect{0, 0, 1093, 600}));
        ExpectConsistent(View());
        Press(c.command == kZoomIn ? kZoomOut : kZoomIn);
        EXPECT_EQ(View().m_ZoomRatio, 1.0f);
    }
}

TEST_F(ZoomTest, ItEndsAt128And2ToTheMinus17) {
    ZoomBy(6);
    EXPECT_EQ(View().m_ZoomRatio, 64.0f);
    EXPECT_TRUE(Press(kZoomIn));
    EXPECT_EQ(View().m_VisibleQbits, 3u);  // 1000 pixels of 256 each
    EXPECT_FALSE(Press(kZoomIn));
    View().OnEditZoomIn();  // as a key does
    EXPECT_EQ(View().m_ZoomRatio, 128.0f);
    ExpectConsistent(View());

    ZoomBy(-23);
    EXPECT_EQ(View().m_ZoomRatio, 0x1p-16f);
    EXPECT_TRUE(Press(kZoomOut));
    EXPECT_EQ(View().m_VisibleQbits, 65536000u);
    EXPECT_FALSE(Press(kZoomOut));
    View().OnEditZoomOut();
    EXPECT_EQ(View().m_ZoomRatio, 0x1p-17f);
    ExpectConsistent(View());
}

TEST_F(ZoomTest, TheVisibleSpanIsDividedInSinglePrecision) {
    View().m_ZoomRatio = 0.3f;
    View().Zoom();
    EXPECT_EQ(View().m_PixelsPerQbit, 0.6f);
    EXPECT_EQ(View().m_VisibleQbits, 1666u);
    View().m_ZoomRatio = 1.0e-6f;
    View().Zoom();
    EXPECT_EQ(View().m_VisibleQbits, 500000000u);  // in double it would be 499999997
    ExpectConsistent(View());
}

TEST_F(ZoomTest, ALogThatFitsShowsFromItsBegin) {
    Log().Clear();
    LogOf(400);
    View().Reload();
    LookAt(0, 390);
    ZoomBy(3);
    EXPECT_EQ(View().m_TimeOffset, 400u - 62u) << "62 QBit are in view";
    ZoomBy(-3);
    EXPECT_EQ(View().m_TimeOffset, 0u);
    EXPECT_EQ(View().m_HScrollPos, 0);
    ExpectConsistent(View());
}

TEST_F(ZoomTest, ACtrlWheelLeavesTheTimeUnderThePointer) {
    const struct {
        const char* what;
        double notches;
        int x;
        float ratio;
    } cases[] = {
        {"in", 2, 580, 2.0f},
        {"out", -4, 333, 0.25f},
        {"the left edge", 2, 80, 2.0f},
        {"half a step", 1, 1000, 1.41421354f},
        {"left of the canvas: its edge", 2, 3, 2.0f},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        View().m_ZoomRatio = 1.0f;
        View().Zoom();
        GoTo(50000);
        const std::uint64_t time = View().Scale().TimeAt(c.x);
        Wheel(c.notches, MK_CONTROL, c.x);
        EXPECT_EQ(View().m_ZoomRatio, c.ratio);
        EXPECT_EQ(View().Scale().TimeAt(c.x), time);
        ExpectConsistent(View());
    }
}

TEST_F(ZoomTest, ZoomingBackAndForthAtOnePointDoesNotDrift) {
    GoTo(50000);
    const std::uint64_t time = View().Scale().TimeAt(700);
    for (int i = 0; i < 100; ++i) Wheel(i % 7 < 3 ? 1 : -0.75, MK_CONTROL, 700);
    EXPECT_EQ(View().Scale().TimeAt(700), time);
}

TEST_F(ZoomTest, TheWheelKeepsTheLimitsOfTheCommands) {
    Wheel(1000, MK_CONTROL);
    EXPECT_EQ(View().m_ZoomRatio, 128.0f);
    Wheel(-1000, MK_CONTROL);
    EXPECT_EQ(View().m_ZoomRatio, 0x1p-17f);
    ExpectConsistent(View());
}

TEST_F(ZoomTest, FShowsTheWholeLogHoweverLongItIs) {
    for (const std::uint64_t end :
         {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{999}, std::uint64_t{16777217},
          std::uint64_t{1} << 40, (std::uint64_t{1} << 60) + 12345}) {
        SCOPED_TRACE(end);
        Log().Clear();
        LogOf(end);
        View().Reload();
        Key('F');
        EXPECT_GE(View().m_VisibleQbits, end);
        EXPECT_EQ(View().m_TimeOffset, 0u);
        if (end > 100) {
            EXPECT_LE(static_cast<double>(View().m_VisibleQbits), static_cast<double>(end) * 1.01);
        }
        ExpectConsistent(View());
    }
    // Beyond the limit there is no farther out, but always a way in.
    const float ratio = View().m_ZoomRatio;
    Wheel(-1, MK_CONTROL);
    EXPECT_EQ(View().m_ZoomRatio, ratio);
    EXPECT_FALSE(Look(kZoomOut).m_Enabled);
    Wheel(2, MK_CONTROL);
    EXPECT_EQ(View().m_ZoomRatio, 2 * ratio);
}

TEST_F(ZoomTest, WAndSZoomAroundTheCursorOrTheMiddle) {
    LookAt(1000, 1100);  // the cursor stands at x 280
    Key('W');
    EXPECT_EQ(View().m_ZoomRatio, 2.0f);
    EXPECT_EQ(View().m_TimeOffset, 1050u);
    Key('S');
    EXPECT_EQ(View().m_TimeOffset, 1000u);
    View().m_CursorTime = 5;
    Key('S');
    EXPECT_EQ(View().m_TimeOffset, 750u);
    ExpectConsistent(View());
}

}  // namespace
