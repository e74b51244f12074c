#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "platform/RasterSurface.h"
#include "platform/SvgSurface.h"

namespace vesk {
namespace {

using testing::HasSubstr;
using testing::Not;

const FixedGlyphs kGlyphs;

// A page whose areas are painted on a raster, and whose other shapes are only counted.
class CountingPage : public VectorSurface {
public:
    explicit CountingPage(CSize size) : VectorSurface(size, kGlyphs), m_Raster(size, kGlyphs) {}
    ~CountingPage() override = default;

    using VectorSurface::Flush;
    RasterSurface m_Raster;
    int m_Areas = 0;
    int m_Others = 0;

protected:
    void ClipTo(const CRect&) override {}
    void Area(const CRect& rect, COLORREF color) override {
        ++m_Areas;
        m_Raster.FillRect(rect, color);
    }
    void OpenPath(Spot, Spot, const CPen&) override { ++m_Others; }
    void ClosedPath(std::span<const Spot>, const CPen*, const CBrush*) override { ++m_Others; }
    void RoundArea(Spot, Spot, Spot, const CPen*, const CBrush*) override { ++m_Others; }
    void Words(CPoint, std::string_view, CSize, COLORREF) override { ++m_Others; }
};

// What is drawn in whole pixels: fills, lines along the axes, rectangles, each within some clip.
void DrawStraight(Surface& surface, unsigned seed) {
    std::mt19937 random(seed);
    const auto from = [&](int least, int end) {
        return least + static_cast<int>(random() % static_cast<unsigned>(end - least));
    };
    for (int i = 0; i < 200; ++i) {
        const int x = from(-20, 120), y = from(-20, 90);
        const CRect box{x, y, x + from(-3, 60), y + from(-3, 60)};
        const CPen pen(from(0, 4) == 0 ? PS_NULL : PS_SOLID, from(1, 5), random() & 0xFFFFFF);
        CBrush brush(random() & 0xFFFFFF);
        brush.m_Hollow = from(0, 2) == 0;
        switch (from(0, 5)) {
            case 0:
                surface.FillRect(box, brush.m_Color);
                break;
            case 1:
                surface.Line({x, y}, {box.right, y}, pen);
                break;
            case 2:
                surface.Line({x, y}, {x, box.bottom}, pen);
                break;
            case 3:
                surface.Rectangle(box, pen, brush);
                break;
            default:
                surface.SetClip(box.IsRectEmpty() ? CRect{0, 0, 100, 70} : box);
                break;
        }
    }
}

TEST(VectorSurface, AreasAreThePixelsThatTheRasterPaints) {
    for (unsigned seed = 0; seed < 50; ++seed) {
        RasterSurface raster({100, 70}, kGlyphs);
        CountingPage page({100, 70});
        DrawStraight(raster, seed);
        DrawStraight(page, seed);
        page.Flush();
        EXPECT_EQ(page.m_Others, 0);
        const std::size_t pixels = std::size_t{100} * 70;
        ASSERT_EQ(
            std::vector<std::uint32_t>(raster.Pixels(), raster.Pixels() + pixels),
            std::vector<std::uint32_t>(page.m_Raster.Pixels(), page.m_Raster.Pixels() + pixels))
            << seed;
    }
}

TEST(VectorSurface, NeighboursOfOneColourBecomeOneArea) {
    CountingPage page({100, 20});
    for (int x = 0; x < 50; ++x) page.FillRect({x, 5, x + 1, 15}, 0x4080);
    page.FillRect({50, 5, 51, 15}, 0x4081);
    page.FillRect({51, 5, 52, 14}, 0x4081);
    page.Flush();
    EXPECT_EQ(page.m_Areas, 3);
}

TEST(VectorSurface, WhatLiesOutsideOfTheClipIsLeftOut) {
    CountingPage page({100, 20});
    page.SetClip({10, 0, 20, 20});
    const CPoint arrow[] = {{30, 5}, {40, 0}, {40, 10}};
    const CPen dots(PS_DOT, 1, 0);
    page.Polygon(arrow, CPen(), CBrush());
    page.RoundRect({0, 0, 9, 9}, {4, 4}, CPen(), CBrush());
    page.Text({21, 3}, "far", 0);
    page.Line({-2147483647, 3}, {5, 3}, dots);
    EXPECT_EQ(page.m_Others, 0);
    page.Text({5, 3}, "near", 0);
    page.Line({15, -2147483647}, {15, 2147483647}, dots);
    EXPECT_EQ(page.m_Others, 2);
}

TEST(SvgSurface, WritesEachShape) {
    SvgSurface surface({120, 40}, kGlyphs);
    const CPen thick(PS_SOLID, 2, RGB(50, 60, 150));
    const CPen dots(PS_DOT, 1, RGB(180, 180, 180));
    const CPoint arrow[] = {{10, 0}, {5, 10}, {15, 10}};
    surface.FillRect({1, 2, 11, 22}, RGB(255, 128, 0));
    surface.Line({5, 30}, {5, 10}, thick);
    surface.Line({0, 0}, {10, 5}, thick);
    surface.Line({7, 0}, {7, 30}, dots);
    surface.Polygon(arrow, CPen(), CBrush(0));
    surface.RoundRect({20, 4, 40, 16}, {10, 10}, CPen(PS_SOLID, 1, 0xFFBC7A), CBrush(0xFFD6AE));
    surface.Text({3, 10}, "Job", 0x963C32);
    const std::string text = surface.Document();
    for (const char* const line : {
             "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"120\" height=\"40\" "
             "viewBox=\"0 0 120 40\">",
             "<rect x=\"1\" y=\"2\" width=\"10\" height=\"20\" fill=\"#ff8000\"/>",
             "<rect x=\"4\" y=\"11\" width=\"2\" height=\"20\" fill=\"#323c96\"/>",
             "<line x1=\"0\" y1=\"0\" x2=\"10\" y2=\"5\" stroke=\"#323c96\" stroke-width=\"2\" "
             "stroke-linecap=\"round\"/>",
             "<line x1=\"7.5\" y1=\"0.5\" x2=\"7.5\" y2=\"30.5\" stroke=\"#b4b4b4\" "
             "stroke-dasharray=\"3\"/>",
             "<polygon points=\"10.5,0.5 5.5,10.5 15.5,10.5\" fill-rule=\"evenodd\" "
             "fill=\"#000000\" stroke=\"#000000\"/>",
             "<rect class=\"round\" x=\"20.5\" y=\"4.5\" width=\"19\" height=\"11\" rx=\"4.5\" "
             "ry=\"4.5\" fill=\"#aed6ff\" stroke=\"#7abcff\"/>",
             "textLength=\"21\" fill=\"#323c96\">Job</text>",
         })
        EXPECT_THAT(text, HasSubstr(line));
}

TEST(SvgSurface, KeepsAnyNameWithinTheText) {
    SvgSurface surface({400, 40}, kGlyphs);
    surface.Text({3, 10}, "<b>&\"x'\x01\xE4\x80", 0);
    surface.Text({3, 30}, "", 0);
    const std::string text = surface.Document();
    EXPECT_THAT(text, HasSubstr(">&lt;b&gt;&amp;\"x' \xC3\xA4 </text>"));
    EXPECT_THAT(text, Not(HasSubstr("textLength=\"0\"")));
}

TEST(SvgSurface, AClipHoldsUntilTheNextOne) {
    SvgSurface surface({100, 40}, kGlyphs);
    CDC dc(&surface);
    dc.SetClipBox({10, 5, 50, 25});
    dc.FillSolidRect(0, 0, 100, 40, 0xFF);
    dc.SetClipBox({0, 0, 100, 40});
    dc.FillSolidRect(0, 0, 1, 1, 0xFF);
    EXPECT_THAT(surface.Document(),
                HasSubstr("<clipPath id=\"clip1\"><rect x=\"10\" y=\"5\" width=\"40\" "
                          "height=\"20\"/></clipPath>\n<g clip-path=\"url(#clip1)\">\n"
                          "<rect x=\"10\" y=\"5\" width=\"40\" height=\"20\" fill=\"#ff0000\"/>\n"
                          "</g>\n<rect x=\"0\" y=\"0\" width=\"1\" height=\"1\""));
}

}  // namespace
}  // namespace vesk
