// What the left button takes hold of and drags.
#include "tests/timeline/PointTest.h"

namespace {

using testing::ElementsAre;
using vesk::PointerShape;

class MouseTest : public PointTest {
protected:
    // 500 of 10000 QBit are in view, from 1000 on.
    CMcuView& OpenInside() {
        LogOf(10000);
        Open();
        GoTo(1000);
        Painted();
        return View();
    }
    std::map<std::int32_t, std::uint64_t>& Markers() { return m_Document.m_Markers; }
};

// --- Cursor --------------------------------------------------------------------------------------

TEST_F(MouseTest, TheCursorGoesWhereTheButtonIsPressedAndFollows) {
    OpenInside();
    Press(180, 230);
    EXPECT_EQ(View().m_CursorTime, 1050u);
    EXPECT_EQ(Painted(), (CRect{0, 0, kWidth - 17, kHeight - 17}));
    const struct {
        int x;
        std::uint64_t time;
    } cases[] = {{183, 1051}, {79, 1000}, {-5, 1000}, {1080, 1500}, {1081, 1500}, {5000, 1500}};
    for (const auto& c : cases) {
        Move(c.x, 230);
        EXPECT_EQ(View().m_CursorTime, c.time) << c.x;
        EXPECT_FALSE(Painted().IsRectEmpty());
    }
    Release();
    Move(300, 230);
    EXPECT_EQ(View().m_CursorTime, 1500u);
    EXPECT_TRUE(Painted().IsRectEmpty());
}

TEST_F(MouseTest, TheCursorStaysWithinTheLog) {
    LogOf(300);
    Open();
    Click(1000, 230);
    EXPECT_EQ(View().m_CursorTime, 300u);
}

// --- Markers -------------------------------------------------------------------------------------

TEST_F(MouseTest, AMarkerIsTakenByItsLabel) {
    OpenInside();
    Markers() = {{3, 1050}, {1, 1055}, {2, 1501}, {4, 999}, {7, 1500}};  // x 180, 190
    const struct {
        const char* what;
        CPoint at;
        int marker;
    } cases[] = {
        {"row's upper edge", {195, 8}, 1},
        {"above it", {195, 7}, -1},
        {"row's lower edge", {195, 21}, 1},
        {"below it", {195, 22}, -1},
        {"the lower number first", {181, kLabels}, 1},
        {"its edge is outside", {180, kLabels}, 3},
        {"left edge", {170, kLabels}, -1},
        {"inside", {171, kLabels}, 3},
        {"right edge", {200, kLabels}, -1},
        {"inside", {199, kLabels}, 1},
        {"left of the view", {80, kLabels}, -1},
        {"at the view's right edge", {1075, kLabels}, 7},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        View().m_DragMarkerIndex = -1;
        View().m_CursorTime = 5;
        EXPECT_EQ(View().PointerAt(c.at) == PointerShape::Hand, c.marker >= 0);
        Press(c.at.x, c.at.y);
        EXPECT_EQ(View().m_DragMarkerIndex, c.marker);
        EXPECT_EQ(View().m_DragMarker, c.marker >= 0);
        EXPECT_EQ(View().m_DragCursor, c.marker < 0);
        EXPECT_EQ(View().m_CursorTime == 5, c.marker >= 0);
        Release();
    }
}

TEST_F(MouseTest, AMarkerIsDraggedAndStaysSelected) {
    OpenInside();
    Markers() = {{3, 1050}, {4, 1100}};
    Drag({180, kLabels}, {200, 300, 280});
    EXPECT_THAT(Markers(), ElementsAre(std::pair(3, 1100u), std::pair(4, 1100u)));
    EXPECT_EQ(View().m_DragMarkerIndex, 3);
    EXPECT_FALSE(Painted().IsRectEmpty());
    Move(500, kLabels);
    EXPECT_EQ(Markers()[3], 1100u);
    Drag({280, kLabels}, {5000});
    EXPECT_THAT(Markers(), ElementsAre(std::pair(3, 1500u), std::pair(4, 1100u)));
}

// --- Range handles -------------------------------------------------------------------------------

TEST_F(MouseTest, AHandleIsTakenAtAnyHeightInBothOutlooks) {
    for (const OUTLOOKTYPE outlook : {OUTLOOK_PURE, OUTLOOK_RELATIVE}) {
        OpenInside();
        View().SetOutlook(outlook);
        const struct {
            int x;
            const std::int32_t* handle;
        } cases[] = {
            {575, nullptr}, {576, &View().m_RangeX1}, {584, &View().m_RangeX1}, {585, nullptr},
            {825, nullptr}, {826, &View().m_RangeX2}, {834, &View().m_RangeX2}, {835, nullptr}};
        for (const auto& c : cases) {
            for (const int y : {0, kLabels, kJobs, 560}) {
                SCOPED_TRACE(testing::Message() << c.x << ", " << y);
                EXPECT_EQ(View().PointerAt({c.x, y}) == PointerShape::SizeHorizontal,
                          c.handle != nullptr);
                Press(c.x, y);
                EXPECT_EQ(View().m_DragRange, c.handle != nullptr);
                if (c.handle) {
                    EXPECT_EQ(View().m_DragRangeX, c.handle);
                }
                Release();
                EXPECT_FALSE(View().m_DragRange);
            }
        }
    }
}

TEST_F(MouseTest, AHandleStaysOnTheCanvasAndTheFirstOneIsTakenFirst) {
    OpenInside();
    const std::uint64_t cursor = View().m_CursorTime;
    Drag({828, 50}, {2000});
    EXPECT_EQ(View().m_RangeX2, 1080);
    Drag({1080, 50}, {-7});
    EXPECT_EQ(View().m_RangeX2, 80);
    Drag({580, 50}, {83});
    Drag({82, 50}, {400});
    EXPECT_EQ(View().m_RangeX1, 400);
    EXPECT_EQ(View().m_RangeX2, 80);
    EXPECT_EQ(View().m_CursorTime, cursor);
    EXPECT_FALSE(Painted().IsRectEmpty());
}

TEST_F(MouseTest, AMarkersLabelLiesAboveAHandle) {
    OpenInside();
    Markers() = {{0, 1250}};  // x 580
    Press(580, kLabels);
    EXPECT_TRUE(View().m_DragMarker);
    EXPECT_FALSE(View().m_DragRange);
}

TEST_F(MouseTest, TheRangeIsReadOutWhileAHandleIsDragged) {
    OpenInside();
    const struct {
        TIMEUNITTYPE unit;
        bool isTqcnt;
        const char* text;
    } cases[] = {
        {TIMEUNIT_CLOCK, false, "Range: 1250 QBit to 1400 QBit, difference 150 QBit"},
        {TIMEUNIT_COUNT, true, "Range: 1250 QBit to 1400 QBit, difference 150 QBit"},
        {TIMEUNIT_COUNT, false, "Range: 1153.8 us to 1292.3 us, difference 138.5 us"},
        {TIMEUNIT_TIME, true, "Range: 1.154 ms to 1.292 ms, difference 0.138 ms"},
    };
    for (const auto& c : cases) {
        View().SetTimeunit(c.unit);
        Log().m_IsTQCNT = c.isTqcnt;
        Drag({View().m_RangeX2, 50}, {880});
        EXPECT_EQ(m_User.m_StatusTexts.back(), c.text);
    }
    EXPECT_EQ(m_User.m_StatusTexts.size(), 4u) << "once a move";
}

// --- Pointer and other buttons -------------------------------------------------------------------

TEST_F(MouseTest, ThePointerKeepsItsShapeWhileSomethingIsDragged) {
    OpenInside();
    Markers() = {{0, 1050}};
    EXPECT_EQ(View().PointerAt({300, 300}), PointerShape::Arrow);
    Press(580, 300);
    EXPECT_EQ(View().PointerAt({180, kLabels}), PointerShape::SizeHorizontal);
    Release();
    Press(180, kLabels);
    EXPECT_EQ(View().PointerAt({580, 300}), PointerShape::Hand);
    Release();
    Press(300, 300);
    EXPECT_EQ(View().PointerAt({580, 300}), PointerShape::Arrow);
}

TEST_F(MouseTest, AMiddleDragPansAndLeavesTheCursor) {
    OpenInside();
    const std::uint64_t cursor = View().m_CursorTime;
    MiddleDrag({{300, 230}, {200, 230}});
    EXPECT_EQ(View().m_TimeOffset, 1050u);
    EXPECT_EQ(View().m_CursorTime, cursor);
}

}  // namespace
