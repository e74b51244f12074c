#include "timeline/CMemoryDC.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "platform/RasterSurface.h"
#include "platform/RecordingSurface.h"

namespace {

using testing::ElementsAre;

constexpr COLORREF kWhite = 0xFFFFFF;
constexpr COLORREF kGround = 0x102030;
constexpr COLORREF kInk = 0x0000FF;

// A page: what is drawn cannot be drawn elsewhere first.
class PageSurface : public vesk::RecordingSurface {
public:
    using RecordingSurface::RecordingSurface;
    std::unique_ptr<vesk::Surface> MakeCompatible(CSize) const override { return nullptr; }
    void SetOrigin(CPoint origin) override { m_Origin = origin; }
    void SetClip(const CRect& clip) override { m_Clip = clip; }

    CPoint m_Origin;
    CRect m_Clip;
};

}  // namespace

TEST(MemoryDC, ShowsThePictureWhenItGoes) {
    const vesk::FixedGlyphs glyphs;
    vesk::RasterSurface screen({40, 30}, glyphs);
    CDC dc(&screen);
    dc.SetBkColor(kGround);
    {
        CMemoryDC memory(&dc);
        memory.FillSolidRect(10, 10, 5, 5, kInk);
        EXPECT_EQ(screen.PixelAt(12, 12), kWhite);
    }
    EXPECT_EQ(screen.PixelAt(12, 12), kInk);
    EXPECT_EQ(screen.PixelAt(0, 0), kGround);
    EXPECT_EQ(screen.PixelAt(39, 29), kGround);
}

TEST(MemoryDC, TouchesTheClipBoxAlone) {
    const vesk::FixedGlyphs glyphs;
    vesk::RasterSurface screen({40, 30}, glyphs);
    CDC dc(&screen);
    dc.SetWindowOrg(100, 200);
    dc.SetClipBox({110, 205, 120, 215});
    dc.SetBkColor(kGround);
    {
        CMemoryDC memory(&dc);
        memory.FillSolidRect(0, 210, 1000, 1, kInk);
    }
    EXPECT_EQ(screen.PixelAt(9, 10), kWhite);
    EXPECT_EQ(screen.PixelAt(10, 10), kInk);
    EXPECT_EQ(screen.PixelAt(19, 10), kInk);
    EXPECT_EQ(screen.PixelAt(20, 10), kWhite);
    EXPECT_EQ(screen.PixelAt(10, 5), kGround);
    EXPECT_EQ(screen.PixelAt(10, 4), kWhite);
}

TEST(MemoryDC, DrawsStraightThroughWhilePrinting) {
    vesk::RecordingSurface page({40, 30});
    CDC dc(&page);
    dc.m_bPrinting = true;
    CMemoryDC memory(&dc);
    memory.MoveTo(1, 2);
    memory.LineTo(5, 2);
    EXPECT_TRUE(memory.IsPrinting());
    EXPECT_THAT(page.Lines(),
                ElementsAre("fill 0,0 40x30 FFFFFF", "line 1,2 > 5,2 solid 1 000000"));
}

TEST(MemoryDC, DrawsStraightThroughOnAPageAndLeavesItsOriginAndClip) {
    PageSurface page({40, 30});
    CDC dc(&page);
    dc.SetWindowOrg(100, 0);
    dc.SetClipBox({105, 5, 130, 25});
    {
        CMemoryDC memory(&dc);
        memory.MoveTo(101, 2);
        memory.LineTo(105, 2);
        EXPECT_THAT(page.Lines(),
                    ElementsAre("fill 5,5 25x20 FFFFFF", "line 1,2 > 5,2 solid 1 000000"));
    }
    EXPECT_EQ(page.m_Origin, (CPoint{100, 0}));
    EXPECT_EQ(page.m_Clip, (CRect{5, 5, 30, 25}));
}

TEST(MemoryDC, WithoutASurfaceDrawsNothing) {
    CDC dc;
    CMemoryDC memory(&dc);
    memory.FillSolidRect(0, 0, 10, 10, kInk);
    EXPECT_EQ(memory.GetSurface(), nullptr);
}
