#include "platform/CDC.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>

#include "platform/CBitmap.h"
#include "platform/CBrush.h"
#include "platform/CClientDC.h"
#include "platform/CPen.h"
#include "platform/RasterSurface.h"
#include "platform/RecordingSurface.h"
#include "platform/SystemMetrics.h"
#include "platform/Text.h"
#include "platform/UserInterface.h"

namespace vesk {
namespace {

using testing::ElementsAre;

class DrawingContext : public testing::Test {
protected:
    CRect ClipBox(const CDC& dc) const {
        CRect box;
        dc.GetClipBox(&box);
        return box;
    }

    RecordingSurface m_Surface{{100, 80}};
    CDC m_Dc{&m_Surface};
};

TEST_F(DrawingContext, StartsWithABlackPenAndAWhiteBrush) {
    m_Dc.Rectangle(1, 2, 11, 22);
    m_Dc.LineTo(5, 0);
    EXPECT_THAT(m_Surface.Lines(), ElementsAre("rect 1,2 10x20 solid 1 000000 on FFFFFF",
                                               "line 0,0 > 5,0 solid 1 000000"));
}

TEST_F(DrawingContext, GivesBackWhatWasSelectedBefore) {
    CPen red(PS_SOLID, 1, 0x0000FF);
    CPen* first = m_Dc.SelectObject(&red);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(m_Dc.SelectObject(static_cast<CPen*>(nullptr)), &red);
    EXPECT_EQ(m_Dc.SelectObject(first), &red);
    m_Dc.LineTo(1, 0);
    EXPECT_THAT(m_Surface.Lines(), ElementsAre("line 0,0 > 1,0 solid 1 000000"));

    EXPECT_EQ(m_Dc.SetTextColor(0x112233), 0u);
    EXPECT_EQ(m_Dc.SetTextColor(0), 0x112233u);
    EXPECT_EQ(m_Dc.SetBkColor(0), 0xFFFFFFu);
    EXPECT_EQ(m_Dc.SetBkMode(TRANSPARENT), OPAQUE);
    EXPECT_EQ(m_Dc.SetWindowOrg(3, 4), (CPoint{0, 0}));
    EXPECT_EQ(m_Dc.SetWindowOrg(0, 0), (CPoint{3, 4}));
    EXPECT_EQ(m_Dc.MoveTo(7, 8), (CPoint{1, 0}));
}

TEST_F(DrawingContext, SubtractsTheWindowOriginFromEverything) {
    m_Dc.SetBkMode(TRANSPARENT);
    m_Dc.SetWindowOrg(10, 20);
    m_Dc.FillSolidRect(10, 20, 5, 6, 0xFF);
    m_Dc.MoveTo(11, 22);
    m_Dc.LineTo(13, 24);
    const CPoint corners[] = {{10, 20}, {15, 25}};
    m_Dc.Polygon(corners, 2);
    m_Dc.RoundRect({10, 20, 30, 30}, {4, 5});
    m_Dc.TextOut(12, 20, "a");
    EXPECT_THAT(m_Surface.Lines(),
                ElementsAre("fill 0,0 5x6 0000FF", "line 1,2 > 3,4 solid 1 000000",
                            "polygon 0,0 > 5,5 solid 1 000000 on FFFFFF",
                            "roundrect 0,0 20x10 by 4x5 solid 1 000000 on FFFFFF",
                            "text 2,0 \"a\" 000000"));
}

TEST_F(DrawingContext, FillsTheBoxOfOpaqueText) {
    m_Dc.SetBkColor(0x00FFFF);
    m_Dc.TextOut(5, 6, "abc");
    EXPECT_THAT(m_Surface.Lines(), ElementsAre("fill 5,6 21x13 00FFFF", "text 5,6 \"abc\" 000000"));
}

TEST_F(DrawingContext, TellsTheClipBoxInItsOwnCoordinates) {
    EXPECT_EQ(ClipBox(m_Dc), (CRect{0, 0, 100, 80}));
    m_Dc.SetWindowOrg(10, 20);
    EXPECT_EQ(ClipBox(m_Dc), (CRect{10, 20, 110, 100}));
    m_Dc.SetClipBox({0, 30, 50, 40});
    EXPECT_EQ(ClipBox(m_Dc), (CRect{10, 30, 50, 40}));
    m_Dc.SetWindowOrg(0, 0);
    EXPECT_EQ(ClipBox(m_Dc), (CRect{0, 10, 40, 20}));
}

TEST_F(DrawingContext, KeepsCoordinatesBeyondItsRangeOnTheirSide) {
    m_Dc.SetWindowOrg(INT_MIN, INT_MAX);
    m_Dc.FillSolidRect(INT_MAX, INT_MIN, INT_MAX, INT_MAX, 0);
    EXPECT_THAT(m_Surface.Lines(), ElementsAre("fill 2147483647,-2147483648 0x0 000000"));
}

TEST_F(DrawingContext, OfMemoryDrawsOnItsBitmapAndCopiesItAtBothOrigins) {
    m_Dc.SetWindowOrg(100, 200);
    CDC memory;
    CBitmap picture;
    ASSERT_TRUE(memory.CreateCompatibleDC(&m_Dc));
    memory.LineTo(1, 0);  // on nothing
    EXPECT_EQ(memory.GetTextExtent("ab"), (CSize{14, 13}));
    ASSERT_TRUE(picture.CreateCompatibleBitmap(&memory, 20, 10));
    EXPECT_EQ(memory.SelectObject(&picture), nullptr);
    memory.SetWindowOrg(105, 206);
    EXPECT_EQ(ClipBox(memory), (CRect{105, 206, 125, 216}));
    memory.FillSolidRect(105, 206, 20, 10, 0xFF);
    m_Dc.BitBlt(105, 206, 20, 10, &memory, 105, 206);
    m_Dc.BitBlt(110, 206, 20, 10, &memory, 105, 206, 0);
    EXPECT_EQ(memory.SelectObject(static_cast<CBitmap*>(nullptr)), &picture);
    EXPECT_EQ(memory.GetSurface(), nullptr);
    EXPECT_THAT(m_Surface.Lines(), ElementsAre("fill 5,6 20x10 0000FF"));
}

TEST_F(DrawingContext, OfMemorySurvivesThatItsBitmapIsDeleted) {
    CDC memory;
    CBitmap picture;
    ASSERT_TRUE(memory.CreateCompatibleDC(&m_Dc));
    ASSERT_TRUE(picture.CreateCompatibleBitmap(&m_Dc, 20, 10));
    memory.SelectObject(&picture);
    EXPECT_TRUE(picture.DeleteObject());
    EXPECT_FALSE(picture.DeleteObject());
    memory.FillSolidRect(0, 0, 1, 1, 0);
    m_Dc.BitBlt(0, 0, 20, 10, &memory, 0, 0);
    EXPECT_THAT(m_Surface.Lines(), ElementsAre());
}

TEST_F(DrawingContext, MakesNoBitmapOfImpossibleSize) {
    CBitmap picture;
    EXPECT_FALSE(picture.CreateCompatibleBitmap(&m_Dc, 0, 10));
    EXPECT_FALSE(picture.CreateCompatibleBitmap(nullptr, 10, 10));
    EXPECT_EQ(picture.GetSurface(), nullptr);
    EXPECT_EQ(m_Dc.SelectObject(&picture), nullptr);
    EXPECT_EQ(m_Dc.GetSurface(), &m_Surface);
}

// Letters twice as wide as those of the fixed font.
class WideGlyphs : public FixedGlyphs {
    int Advance(std::uint8_t) const override { return 14; }
};

class WideFontInterface : public UserInterface {
    const GlyphSource& Glyphs() override { return m_Glyphs; }
    WideGlyphs m_Glyphs;
};

TEST(DrawingContextWithoutSurface, DrawsNothingAndMeasuresInTheUserInterfacesFont) {
    WideFontInterface wide;
    ScopedUserInterface scope(wide);
    CClientDC dc(nullptr);
    dc.FillSolidRect(0, 0, 10, 10, 0);
    dc.LineTo(3, 3);
    dc.TextOut(1, 1, "x");
    dc.BitBlt(0, 0, 1, 1, &dc, 0, 0);
    EXPECT_EQ(dc.GetTextExtent("abc"), (CSize{42, 13}));
    CRect box{1, 1, 2, 2};
    dc.GetClipBox(&box);
    EXPECT_TRUE(box.IsRectEmpty());
    CDC memory;
    EXPECT_FALSE(memory.CreateCompatibleDC(&dc));
}

TEST(DrawingContextOnPixels, BeginsAfreshOnASurfaceThatWasUsedBefore) {
    const FixedGlyphs glyphs;
    RasterSurface surface({8, 8}, glyphs, 1.5);
    {
        CDC former(&surface);
        former.SetWindowOrg(3, 1);
        former.SetClipBox({3, 1, 4, 2});
    }
    CDC dc(&surface);
    dc.FillSolidRect(1, 1, 2, 2, 0x0000FF);
    EXPECT_EQ(surface.PixelAt(2, 2), 0x0000FFu);
    EXPECT_EQ(surface.PixelAt(4, 4), 0x0000FFu);
    EXPECT_EQ(surface.PixelAt(5, 5), 0xFFFFFFu);
}

TEST_F(DrawingContext, DrawsFlatCheckBoxesOnly) {
    m_Dc.SetWindowOrg(10, 10);
    m_Dc.DrawFrameControl({12, 13, 22, 23}, DFC_BUTTON, DFCS_BUTTONCHECK);
    m_Dc.DrawFrameControl({12, 13, 22, 23}, 1, DFCS_FLAT);
    m_Dc.DrawFrameControl({12, 13, 22, 23}, DFC_BUTTON, DFCS_FLAT | 0x10);
    m_Dc.DrawFrameControl({12, 13, 22, 23}, DFC_BUTTON, DFCS_FLAT | DFCS_INACTIVE);
    const COLORREF gray = GetSysColor(COLOR_GRAYTEXT), ground = GetSysColor(COLOR_WINDOW);
    EXPECT_THAT(m_Surface.Lines(),
                ElementsAre(FormatText("rect 2,3 10x10 solid 1 %06X on %06X", gray, ground)));
}

}  // namespace
}  // namespace vesk
