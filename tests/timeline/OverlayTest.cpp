#include "tests/timeline/PaintTest.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class OverlayTest : public PaintTest {
protected:
    Drawing CurTime() {
        return [this](CDC* dc) { View().DrawCurTime(dc, 270, 80, kBottom); };
    }
    Drawing YAxis() {
        return [this](CDC* dc) { View().DrawYAxis(dc, 270, 80, kBottom); };
    }
    Drawing Status() {
        return [this](CDC* dc) { View().DrawIdleRatio(dc, 10, 380); };
    }
    void PlaceCursor(std::uint64_t time) { View().m_CursorTime = time; }
    static void PlaceMarker(int key, std::uint64_t time) {
        global_vesk_doc_ptr->m_Markers[key] = time;
    }
};

constexpr const char* kCursorLine = "line 180,30 > 180,310 solid 1 0000FF";

// --- Cursor, handles, markers --------------------------------------------------------------------

TEST_F(OverlayTest, TheCursorIsShownWithinTheViewBothEndsIncluded) {
    Job(0);
    Open();
    LookFrom(1000);
    const struct {
        std::uint64_t time;
        const char* line;
    } cases[] = {{1000, "line 80,30 > 80,310 solid 1 0000FF"},
                 {1100, kCursorLine},
                 {1400, "line 480,30 > 480,310 solid 1 0000FF"}};
    for (const auto& c : cases) {
        PlaceCursor(c.time);
        EXPECT_EQ(Lines(CurTime()).front(), c.line);
    }
    for (const std::uint64_t time : {0, 999, 1401}) {
        PlaceCursor(time);
        for (const std::string& line : Lines(CurTime()))
            EXPECT_THAT(line, Not(testing::HasSubstr("0000FF"))) << time;
    }
}

TEST_F(OverlayTest, RangeHandlesCarryATriangle) {
    Job(0);
    Open();
    PlaceCursor(5000);
    EXPECT_THAT(Lines(CurTime()),
                ElementsAre("line 280,30 > 280,310 solid 1 14D6FF",
                            "polygon 280,30 > 275,20 > 285,20 solid 1 14D6FF on 14D6FF",
                            "line 380,30 > 380,310 solid 1 14D6FF",
                            "polygon 380,30 > 375,20 > 385,20 solid 1 14D6FF on 14D6FF"));
}

TEST_F(OverlayTest, MarkersAreDrawnInKeyOrderWithinTheView) {
    Job(0);
    Open();
    PlaceCursor(5000);
    PlaceMarker(12, 20);
    PlaceMarker(3, 400);
    PlaceMarker(4, 401);
    View().m_DragMarkerIndex = 12;
    std::vector<std::string> lines = Lines(CurTime());
    lines.erase(lines.begin(), lines.begin() + 4);
    EXPECT_THAT(lines,
                ElementsAre("line 480,30 > 480,310 solid 1 FFBC7A",
                            "roundrect 470,8 20x13 by 10x10 solid 1 FFBC7A on FFD6AE",
                            "text 477,8 \"3\" A06328", "line 100,30 > 100,310 solid 1 FF7F00",
                            "roundrect 90,8 20x13 by 10x10 solid 1 FF7F00 on FF7F00",
                            "text 93,8 \"12\" 000000"));
}

// --- Y axis --------------------------------------------------------------------------------------

TEST_F(OverlayTest, TheYAxisPointsUp) {
    Job(0);
    Open();
    EXPECT_THAT(Lines(YAxis()),
                ElementsAre("line 80,300 > 80,30 solid 1 000000",
                            "polygon 80,30 > 75,40 > 85,40 solid 1 000000 on 000000",
                            "text 70,8 \"Job\" 000000"));
}

TEST_F(OverlayTest, ScalesOfShownExtraValuesStackInTheirColours) {
    Job(0);
    Extra("load", 7, 100);
    Extra("hidden", 1, 2);
    Extra("free", 0, 4294967295u);
    Open().m_ExtraShown[1] = false;
    global_vesk_doc_ptr->m_ExtraColor.m_Colors = {{0, 0x112233}, {2, 0x445566}};
    std::vector<std::string> lines = Lines(YAxis());
    lines.erase(lines.begin(), lines.begin() + 3);
    EXPECT_THAT(lines, ElementsAre("text 29,30 \"100\" 112233", "text 36,287 \"7\" 112233",
                                   "text 5,45 \"4294967295\" 445566", "text 36,272 \"0\" 445566"));
    View().m_Outlook = OUTLOOK_RELATIVE;
    EXPECT_THAT(Texts(YAxis()), ElementsAre("Job"));
}

// --- Status line ---------------------------------------------------------------------------------

TEST_F(OverlayTest, TheStatusLineTellsCursorAndShownExtraValues) {
    Job(0);
    Extra("load", 0, 0);
    Extra("hidden", 0, 0);
    Extra("free %d", 0, 0);
    CMcuView& view = Open();
    view.m_ExtraShown[1] = false;
    view.m_ExtraCursorValue = {5, 6, 4294967295u};
    view.m_IdleRatio = 42;
    PlaceCursor(123456789012);
    EXPECT_THAT(
        Lines(Status()),
        Contains("text 10,380 \"Ratio of Idle Time : 42 %, CurTime : 123456789012, load: 5, "
                 "free %d: 4294967295\" FF0000"));
}

TEST_F(OverlayTest, TheDurationIsThatBetweenTheHandles) {
    Job(0);
    CMcuView& view = Open(0.3f);
    view.m_RangeX1 = 400;
    view.m_RangeX2 = 90;
    // 310 / 0.3 in single precision is 1033.3; 1033 QBit are 0.95 ms.
    EXPECT_EQ(Lines(Status()).back(), "text 277,380 \"Duration: 1033 Qbits (1.0 ms)\" FF0000");
    view.m_RangeX2 = 400;
    EXPECT_EQ(Texts(Status()).back(), "Duration: 0 Qbits (0.0 ms)");
}
