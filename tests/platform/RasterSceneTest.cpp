// What holds for every picture, shown with pictures of some of everything.
#include <gtest/gtest.h>

#include "platform/CBitmap.h"
#include "platform/CDC.h"
#include "platform/RasterSurface.h"
#include "tests/platform/Scene.h"

namespace vesk {
namespace {

constexpr CSize kSize{120, 90};
constexpr CRect kParts[] = {{0, 0, 120, 90}, {7, 5, 8, 6},      {33, 17, 86, 71},
                            {1, 0, 119, 43}, {64, 29, 120, 90}, {59, 44, 62, 90}};

class RasterScene : public testing::TestWithParam<double> {
protected:
    RasterSurface Blank(CSize size = kSize) const { return {size, m_Glyphs, GetParam()}; }

    int Edge(int logical) const { return static_cast<int>(logical * GetParam() + 0.5); }

    // Paints a part the way a view does: beside the screen, on a bitmap of the part's size.
    static void PaintBuffered(CDC& screen, unsigned seed) {
        CRect part;
        screen.GetClipBox(&part);
        CDC memory;
        CBitmap picture;
        ASSERT_TRUE(memory.CreateCompatibleDC(&screen));
        ASSERT_TRUE(picture.CreateCompatibleBitmap(&screen, part.Width(), part.Height()));
        memory.SelectObject(&picture);
        memory.SetWindowOrg(part.left, part.top);
        memory.FillSolidRect(part, 0xFFFFFF);
        DrawScene(memory, seed);
        screen.BitBlt(part.left, part.top, part.Width(), part.Height(), &memory, part.left,
                      part.top);
        memory.SelectObject(static_cast<CBitmap*>(nullptr));
    }

    // Pixels of `seen`, which begins at device pixel (left, top) of `whole`, that differ from it
    // within the part, or are not white outside of it.
    int Faults(const RasterSurface& whole, const RasterSurface& seen, const CRect& part, int left,
               int top) const {
        const CRect device{Edge(part.left), Edge(part.top), Edge(part.right), Edge(part.bottom)};
        int faults = 0;
        for (int y = 0; y < seen.DeviceHeight(); ++y) {
            for (int x = 0; x < seen.DeviceWidth(); ++x) {
                const bool inside = device.PtInRect({x + left, y + top});
                const COLORREF expected = inside ? whole.PixelAt(x + left, y + top) : 0xFFFFFF;
                faults += seen.PixelAt(x, y) != expected;
            }
        }
        return faults;
    }

    FixedGlyphs m_Glyphs;
};

TEST_P(RasterScene, ClippedDrawingIsTheWholeCutToTheClip) {
    for (unsigned seed = 0; seed < 12; ++seed) {
        RasterSurface whole = Blank();
        CDC dc(&whole);
        DrawScene(dc, seed);
        for (const CRect& part : kParts) {
            RasterSurface cut = Blank();
            CDC cutDc(&cut);
            cutDc.SetClipBox(part);
            DrawScene(cutDc, seed);
            EXPECT_EQ(Faults(whole, cut, part, 0, 0), 0)
                << "seed " << seed << ", part at " << part.left << "," << part.top;
        }
    }
}

TEST_P(RasterScene, APartPaintedThroughABitmapEqualsThatPartOfTheWhole) {
    for (unsigned seed = 0; seed < 12; ++seed) {
        RasterSurface whole = Blank();
        CDC dc(&whole);
        DrawScene(dc, seed);
        for (const CRect& part : kParts) {
            RasterSurface screen = Blank();
            CDC screenDc(&screen);
            screenDc.SetClipBox(part);
            PaintBuffered(screenDc, seed);
            EXPECT_EQ(Faults(whole, screen, part, 0, 0), 0)
                << "seed " << seed << ", part at " << part.left << "," << part.top;
        }
    }
}

TEST_P(RasterScene, AScreenBufferOfAPartsSizeShowsThatPartOfTheWhole) {
    for (unsigned seed = 0; seed < 12; ++seed) {
        RasterSurface whole = Blank();
        CDC dc(&whole);
        DrawScene(dc, seed);
        for (const CRect& part : kParts) {
            RasterSurface buffer = Blank({part.Width(), part.Height()});
            CDC bufferDc(&buffer);
            bufferDc.SetWindowOrg(part.left, part.top);
            PaintBuffered(bufferDc, seed);
            EXPECT_EQ(buffer.DeviceWidth(), Edge(part.right) - Edge(part.left));
            EXPECT_EQ(buffer.DeviceHeight(), Edge(part.bottom) - Edge(part.top));
            EXPECT_EQ(Faults(whole, buffer, part, Edge(part.left), Edge(part.top)), 0)
                << "seed " << seed << ", part at " << part.left << "," << part.top;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, RasterScene, testing::Values(1.0, 1.25, 1.5, 1.75, 2.0, 3.0));

}  // namespace
}  // namespace vesk
