#include "platform/RasterSurface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <string>
#include <vector>

#include "platform/CBrush.h"
#include "platform/CPen.h"
#include "platform/CellPicture.h"
#include "tests/support/Dice.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using Picture = std::vector<std::string>;

constexpr COLORREF kInk = 0x0000FF;
constexpr COLORREF kArea = 0x00FF00;
constexpr COLORREF kWhite = 0xFFFFFF;

const FixedGlyphs kGlyphs;
const CPen kPen(PS_SOLID, 1, kInk);
const CPen kWidePen(PS_SOLID, 2, kInk);
const CPen kNoPen(PS_NULL, 1, kInk);
const CBrush kBrush(kArea);

RasterSurface Blank(int width, int height, double scale = 1.0) {
    return {{width, height}, kGlyphs, scale};
}

// '#' is the pen's colour, '+' the brush's, '.' white, '?' any other.
Picture Show(const RasterSurface& surface) {
    Picture rows(static_cast<std::size_t>(surface.DeviceHeight()));
    for (int y = 0; y < surface.DeviceHeight(); ++y) {
        for (int x = 0; x < surface.DeviceWidth(); ++x) {
            const COLORREF color = surface.PixelAt(x, y);
            rows[static_cast<std::size_t>(y)] += color == kInk     ? '#'
                                                 : color == kArea  ? '+'
                                                 : color == kWhite ? '.'
                                                                   : '?';
        }
    }
    return rows;
}

Picture ShowLine(CPoint from, CPoint to, const CPen& pen, double scale = 1.0) {
    RasterSurface surface = Blank(8, 5, scale);
    surface.Line(from, to, pen);
    return Show(surface);
}

Picture ShowPolygon(std::vector<CPoint> corners, const CPen& pen = kPen, double scale = 1.0) {
    RasterSurface surface = Blank(13, 13, scale);
    surface.Polygon(corners, pen, kBrush);
    return Show(surface);
}

// --- Lines ---------------------------------------------------------------------------------------

TEST(RasterLines, LeaveOutTheirEndPointInEveryDirection) {
    EXPECT_THAT(ShowLine({1, 2}, {6, 2}, kPen),
                ElementsAre("........", "........", ".#####..", "........", "........"));
    EXPECT_THAT(ShowLine({6, 2}, {1, 2}, kPen),
                ElementsAre("........", "........", "..#####.", "........", "........"));
    EXPECT_THAT(ShowLine({3, 0}, {3, 4}, kPen),
                ElementsAre("...#....", "...#....", "...#....", "...#....", "........"));
    EXPECT_THAT(ShowLine({3, 4}, {3, 0}, kPen),
                ElementsAre("........", "...#....", "...#....", "...#....", "...#...."));
    EXPECT_THAT(ShowLine({1, 1}, {7, 4}, kPen),
                ElementsAre("........", ".#......", "..##....", "....##..", "......#."));
    EXPECT_THAT(ShowLine({3, 3}, {3, 3}, kPen),
                ElementsAre("........", "........", "........", "........", "........"));
}

TEST(RasterLines, OfWidthTwoCoverThePixelBeforeAsWell) {
    EXPECT_THAT(ShowLine({1, 2}, {6, 2}, kWidePen),
                ElementsAre("........", ".#####..", ".#####..", "........", "........"));
    EXPECT_THAT(ShowLine({3, 0}, {3, 4}, kWidePen),
                ElementsAre("..##....", "..##....", "..##....", "..##....", "........"));
}

TEST(RasterLines, KeepWholeThicknessAtFractionalScales) {
    // 8 x 5 pixels at 1.5: row 2 begins at device row 3 and stays one device pixel thick.
    EXPECT_THAT(ShowLine({1, 2}, {5, 2}, kPen, 1.5),
                ElementsAre("............", "............", "............", "..######....",
                            "............", "............", "............", "............"));
    EXPECT_THAT(
        ShowLine({2, 2}, {2, 0}, kPen, 2.0),
        ElementsAre("................", "................", "....##..........", "....##..........",
                    "....##..........", "....##..........", "................", "................",
                    "................", "................"));
}

TEST(RasterLines, AreDottedThreeOnThreeOffFromTheirStart) {
    RasterSurface surface = Blank(12, 12);
    const CPen dots(PS_DOT, 1, kInk);
    surface.FillRect({0, 0, 12, 1}, kArea);
    surface.Line({0, 0}, {11, 0}, dots);
    surface.Line({11, 2}, {0, 2}, dots);
    surface.Line({2, 11}, {2, 3}, dots);
    surface.Line({3, 3}, {11, 11}, dots);
    EXPECT_THAT(Show(surface),
                ElementsAre("###+++###+++", "............", "...###...###", "...#........",
                            "..#.#.......", "..#..#......", "............", "............",
                            "............", "..#......#..", "..#.......#.", "..#........."));
}

struct LineCase {
    int m_Width;
    double m_Scale;
};

class RasterLineEnds : public testing::TestWithParam<LineCase> {};

// To each of 15 x 15 points around the start: the line begins in the start's pixel, leaves out its
// end's, and paints one span per device pixel of its longer axis.
TEST_P(RasterLineEnds, AreRightToEveryPointAround) {
    const auto [width, scale] = GetParam();
    const CPen pen(PS_SOLID, width, kInk);
    const auto edge = [scale = scale](int v) {
        return static_cast<int>(std::floor(v * scale + 0.5));
    };
    const int unit = static_cast<int>(scale);
    for (int x = 3; x < 18; ++x) {
        for (int y = 3; y < 18; ++y) {
            if (x == 10 && y == 10) continue;
            RasterSurface surface = Blank(21, 21, scale);
            surface.Line({10, 10}, {x, y}, pen);
            int painted = 0;
            for (int i = 0; i < surface.DeviceWidth() * surface.DeviceHeight(); ++i) {
                painted +=
                    surface.PixelAt(i % surface.DeviceWidth(), i / surface.DeviceWidth()) == kInk;
            }
            const int length = std::max(std::abs(edge(x) - edge(10)), std::abs(edge(y) - edge(10)));
            EXPECT_EQ(surface.PixelAt(edge(10) + (x < 10 ? unit - 1 : 0),
                                      edge(10) + (y < 10 ? unit - 1 : 0)),
                      kInk)
                << "start, to " << x << "," << y;
            EXPECT_EQ(surface.PixelAt(edge(x), edge(y)), kWhite) << "end at " << x << "," << y;
            EXPECT_EQ(painted, length * unit * width) << "to " << x << "," << y;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(WidthsAndScales, RasterLineEnds,
                         testing::Values(LineCase{1, 1.0}, LineCase{2, 1.0}, LineCase{1, 1.25},
                                         LineCase{1, 1.5}, LineCase{2, 1.5}, LineCase{1, 2.0},
                                         LineCase{2, 2.0}));

TEST(RasterLines, MeetWithoutGapsAtFractionalScales) {
    // A level, a rising edge and the level above: every row and column between is covered.
    RasterSurface surface = Blank(20, 20, 1.5);
    surface.Line({2, 15}, {9, 15}, kPen);
    surface.Line({9, 15}, {9, 5}, kPen);
    surface.Line({9, 5}, {16, 5}, kPen);
    const Picture picture = Show(surface);
    EXPECT_EQ(picture[23], "...############...............");
    EXPECT_EQ(picture[24], std::string(30, '.'));
    for (std::size_t y = 8; y <= 23; ++y) EXPECT_EQ(picture[y][14], '#') << y;
    EXPECT_EQ(picture[8], "..............##########......");
}

// --- Coordinates far outside ---------------------------------------------------------------------

TEST(RasterSurface, CutsWhatReachesFarBeyondIt) {
    for (const double scale : {1.0, 1.5, 16.0}) {
        RasterSurface surface = Blank(9, 9, scale);
        const int middle = surface.DeviceWidth() / 2;
        surface.FillRect({INT_MIN, INT_MIN, INT_MAX, INT_MAX}, kArea);
        EXPECT_EQ(surface.PixelAt(0, 0), kArea);
        surface.Line({INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, kPen);
        EXPECT_EQ(surface.PixelAt(middle, middle), kInk) << scale;
        surface.Line({-1000000000, 2}, {1000000000, 2}, CPen(PS_DOT, 1, 0));
        surface.Line({5, INT_MAX}, {5, INT_MIN}, CPen(PS_DOT, 2, 0));
        const CPoint around[] = {{INT_MIN, INT_MIN}, {INT_MAX, INT_MIN}, {0, INT_MAX}};
        surface.Polygon(around, kWidePen, CBrush(0x123456));
        EXPECT_EQ(surface.PixelAt(middle, middle), 0x123456u) << scale;
        surface.Rectangle({INT_MIN, INT_MIN, INT_MAX, INT_MAX}, kWidePen, kBrush);
        surface.RoundRect({INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {INT_MAX, INT_MAX}, kPen, kBrush);
        EXPECT_EQ(surface.PixelAt(middle, middle), kArea) << scale;
        surface.Text({INT_MAX, INT_MIN}, "far", 0);
        surface.Text({INT_MIN, 0}, "far", 0);
        EXPECT_EQ(surface.PixelAt(1, 3), kArea) << scale;
    }
}

TEST(RasterLines, OfGreatLengthAreExactWhereTheyAreSeen) {
    RasterSurface surface = Blank(8, 3);
    surface.Line({-1000000000, -500000000}, {1000000008, 500000004}, kPen);
    EXPECT_THAT(Show(surface), ElementsAre("#.......", ".##.....", "...##..."));
}

// --- Areas ---------------------------------------------------------------------------------------

TEST(RasterPolygons, PaintAllTheirCornersAndAreSymmetric) {
    EXPECT_THAT(ShowPolygon({{6, 1}, {1, 11}, {11, 11}}),
                ElementsAre(".............", "......#......", ".....#+#.....", ".....#+#.....",
                            "....#+++#....", "....#+++#....", "...#+++++#...", "...#+++++#...",
                            "..#+++++++#..", "..#+++++++#..", ".#+++++++++#.", ".###########.",
                            "............."));
}

Picture Mirrored(Picture picture) {
    for (std::string& row : picture) row.assign(row.rbegin(), row.rend());
    return picture;
}

Picture UpsideDown(const Picture& picture) {
    return {picture.rbegin(), picture.rend()};
}

TEST(RasterPolygons, AreTheSameInEveryDirectionAndOrderOfCorners) {
    // Scale 1 and 3 keep the middle of the picture on a pixel.
    for (const double scale : {1.0, 3.0}) {
        for (const int half : {2, 3, 5}) {
            const Picture up = ShowPolygon({{6, 1}, {6 - half, 11}, {6 + half, 11}}, kPen, scale);
            const Picture down = ShowPolygon({{6 + half, 1}, {6 - half, 1}, {6, 11}}, kPen, scale);
            const Picture right = ShowPolygon({{11, 6}, {1, 6 - half}, {1, 6 + half}}, kPen, scale);
            const Picture left = ShowPolygon({{11, 6 + half}, {11, 6 - half}, {1, 6}}, kPen, scale);
            EXPECT_EQ(up, Mirrored(up)) << half;
            EXPECT_EQ(down, UpsideDown(up)) << half;
            EXPECT_EQ(right, UpsideDown(right)) << half;
            EXPECT_EQ(left, Mirrored(right)) << half;
        }
    }
}

TEST(RasterPolygons, WithoutAPenAreFilledWithoutRightAndLowerEdge) {
    EXPECT_THAT(ShowPolygon({{2, 2}, {6, 2}, {6, 4}, {2, 4}}, kNoPen)[2], "..++++.......");
    EXPECT_THAT(ShowPolygon({{2, 2}, {6, 2}, {6, 4}, {2, 4}}, kNoPen)[4], ".............");
}

TEST(RasterPolygons, LeaveOutWhatLiesInsideTwice) {
    RasterSurface surface = Blank(9, 9);
    const CPoint twice[] = {{0, 0}, {8, 0}, {8, 8}, {0, 8}, {0, 0},
                            {3, 3}, {6, 3}, {6, 6}, {3, 6}, {3, 3}};
    surface.Polygon(twice, kNoPen, kBrush);
    EXPECT_EQ(Show(surface)[4], "+++...++.");
}

TEST(RasterRectangles, LieWithinTheirEdges) {
    RasterSurface surface = Blank(12, 5);
    surface.Rectangle({0, 0, 4, 4}, kPen, kBrush);
    surface.Rectangle({5, 0, 11, 5}, kWidePen, kBrush);
    EXPECT_THAT(Show(surface), ElementsAre("####.######.", "#++#.######.", "#++#.##++##.",
                                           "####.######.", ".....######."));
}

TEST(RasterRectangles, MayHaveRoundCorners) {
    RasterSurface surface = Blank(14, 11);
    surface.RoundRect({0, 0, 13, 10}, {10, 10}, kPen, kBrush);
    EXPECT_THAT(Show(surface),
                ElementsAre("...#######....", ".##+++++++##..", ".#+++++++++#..", "#+++++++++++#.",
                            "#+++++++++++#.", "#+++++++++++#.", "#+++++++++++#.", ".#+++++++++#..",
                            ".##+++++++##..", "...#######....", ".............."));
}

TEST(RasterFills, MeetWithoutGapOrOverlapAtEveryScale) {
    for (const double scale : {1.0, 1.1, 1.25, 1.5, 1.75, 2.0, 2.5}) {
        RasterSurface surface = Blank(40, 2, scale);
        for (int x = 0; x < 40; ++x)
            surface.FillRect({x, 0, x + 1, 2}, static_cast<COLORREF>(x + 1));
        int last = 1;
        for (int x = 0; x < surface.DeviceWidth(); ++x) {
            const int color = static_cast<int>(surface.PixelAt(x, 1));
            EXPECT_TRUE(color == last || color == last + 1) << scale << " at " << x;
            last = color;
        }
        EXPECT_EQ(last, 40) << scale;
    }
}

// --- Text ----------------------------------------------------------------------------------------

TEST(RasterText, IsAsWideAsItsCharacters) {
    const RasterSurface surface = Blank(10, 10, 1.5);
    EXPECT_EQ(surface.MeasureText(""), (CSize{0, 13}));
    EXPECT_EQ(surface.MeasureText("MAIN"), (CSize{28, 13}));
}

TEST(RasterText, PaintsItsLettersFromTheTopLeft) {
    RasterSurface surface = Blank(15, 13);
    surface.Text({1, 1}, "Hi", kInk);
    EXPECT_THAT(Show(surface), ElementsAre("...............", "...............", "...............",
                                           "..#...#....#...", "..#...#........", "..#...#...##...",
                                           "..#####....#...", "..#...#....#...", "..#...#....#...",
                                           "..#...#...###..", "...............", "...............",
                                           "..............."));
}

// A font of one grey pixel.
class GreyGlyphs : public FixedGlyphs {
public:
    GlyphMask Mask(std::uint8_t, double) const override { return {&m_Share, 1, 1, 0, 0}; }
    std::uint8_t m_Share = 128;
};

TEST(RasterText, MixesPartlyCoveredPixelsWithTheGround) {
    struct {
        std::uint8_t m_Share;
        COLORREF m_Ground, m_Ink, m_Mixed;
    } const cases[] = {{128, 0xFFFFFF, 0x000000, 0x7F7F7F},
                       {0, 0x123456, 0xFFFFFF, 0x123456},
                       {255, 0x123456, 0xABCDEF, 0xABCDEF},
                       {51, 0x000000, 0xFF6405, 0x331401},
                       {254, 0xFFFFFF, 0x000000, 0x010101}};
    for (const auto& [share, ground, ink, mixed] : cases) {
        GreyGlyphs glyphs;
        glyphs.m_Share = share;
        RasterSurface surface({1, 1}, glyphs);
        surface.FillRect({0, 0, 1, 1}, ground);
        surface.Text({0, 0}, "x", ink);
        EXPECT_EQ(surface.PixelAt(0, 0), mixed) << int{share};
    }
}

// --- Surfaces ------------------------------------------------------------------------------------

TEST(RasterSurface, RefusesSizesOutsideItsLimits) {
    const RasterSurface model = Blank(4, 4, 2.0);
    EXPECT_EQ(model.MakeCompatible({0, 5}), nullptr);
    EXPECT_EQ(model.MakeCompatible({5, -1}), nullptr);
    EXPECT_EQ(model.MakeCompatible({INT_MAX, INT_MAX}), nullptr);
    EXPECT_EQ(model.MakeCompatible({1 << 14, 1 << 13}), nullptr);  // 2^29 device pixels
    EXPECT_EQ(Blank(-3, 4).Size(), (CSize{0, 0}));
    EXPECT_EQ(Blank(4, 4, 0.0).Scale(), 1.0);
    EXPECT_EQ(Blank(4, 4, std::nan("")).Scale(), 1.0);
    RasterSurface empty = Blank(0, 0);
    empty.FillRect({0, 0, 5, 5}, kInk);
    EXPECT_EQ(empty.PixelAt(0, 0), 0u);
}

TEST(RasterSurface, KeepsItsPictureWhenResizedToTheSame) {
    RasterSurface surface = Blank(4, 4, 1.25);
    surface.FillRect({1, 1, 2, 2}, kInk);
    EXPECT_TRUE(surface.Resize({4, 4}, 1.25));
    EXPECT_EQ(surface.PixelAt(1, 1), kInk);
    EXPECT_FALSE(surface.Resize({INT_MAX, 4}, 1.25));
    EXPECT_EQ(surface.DeviceWidth(), 0);
}

TEST(RasterSurface, CopiesWithinItselfInEveryDirection) {
    for (const CPoint by :
         {CPoint{1, 0}, CPoint{-1, 0}, CPoint{0, 1}, CPoint{0, -1}, CPoint{2, 3}}) {
        RasterSurface surface = Blank(16, 16);
        for (int i = 0; i < 256; ++i) {
            surface.FillRect({i % 16, i / 16, i % 16 + 1, i / 16 + 1}, static_cast<COLORREF>(i));
        }
        surface.Copy({4 + by.x, 4 + by.y, 12 + by.x, 12 + by.y}, surface, {4, 4});
        for (int i = 0; i < 64; ++i) {
            const int x = 4 + i % 8;
            const int y = 4 + i / 8;
            EXPECT_EQ(surface.PixelAt(x + by.x, y + by.y), static_cast<COLORREF>(16 * y + x));
        }
    }
}

// Ink, nothing, area from the top down, then area, area, nothing, then ink.
CellPicture ThreeByThree() {
    CellPicture cells(3, 3);
    cells.Fill(0, 0, 3, 3, 2);
    cells.Clear();
    cells.Fill(0, 0, 1, 1, 1);
    cells.Fill(0, 2, 1, 3, 2);
    cells.Fill(1, 0, 3, 2, 2);
    cells.Fill(2, 0, 3, 3, 1);
    return cells;
}

TEST(RasterSurface, FillsCells) {
    const CellPicture cells = ThreeByThree();
    const COLORREF palette[] = {kInk, kArea};
    RasterSurface surface = Blank(5, 4);
    surface.SetClip({0, 0, 3, 9});
    surface.FillCells({-1, 0}, cells, palette);
    surface.FillCells({1, 1}, cells, palette);
    EXPECT_THAT(Show(surface), ElementsAre("+#...", "+#+..", ".#+..", ".+..."));
}

// Pictures over the edges, boxes over each other, with and without empty cells left.
TEST(RasterSurface, FillsManyCellsAsOneAfterTheOther) {
    Dice dice(7);
    const COLORREF palette[] = {kInk, kArea, 0x123456};
    for (int round = 0; round < 300; ++round) {
        const double scale = dice.Of({1.0, 1.0, 2.0, 3.0, 1.5});
        const CPoint at{dice.Between(-12, 30), dice.Between(-12, 30)};
        const int columns = dice.Of({3, 33, CellPicture::kMostColumns});
        const int rows = dice.Between(0, 70);
        CellPicture cells(columns, rows);
        for (int boxes = dice.Of({0, 1, 20, 100}); boxes > 0; --boxes) {
            const int left = dice.Between(0, columns);
            const int top = dice.Between(0, rows);
            cells.Fill(left, top, dice.Between(left, columns), dice.Between(top, rows),
                       static_cast<std::uint8_t>(dice.Between(1, 3)));
            if (dice.OnceIn(100)) cells.Clear();
        }
        RasterSurface whole = Blank(70, 40, scale);
        RasterSurface plain = Blank(70, 40, scale);
        const CRect clip(dice.Between(0, 9), dice.Between(0, 9), dice.Between(20, 80), 39);
        whole.SetClip(clip);
        plain.SetClip(clip);
        whole.FillCells(at, cells, palette);
        plain.Surface::FillCells(at, cells, palette);
        ASSERT_EQ(Show(whole), Show(plain)) << round;
    }
}

TEST(RasterSurface, CopiesOnlyWhatBothSurfacesAndTheClipHold) {
    RasterSurface source = Blank(3, 3);
    source.FillRect({0, 0, 3, 3}, kInk);
    RasterSurface target = Blank(6, 4);
    target.SetClip({0, 0, 5, 2});
    target.Copy({2, -1, 9, 9}, source, {0, 0});
    EXPECT_THAT(Show(target), ElementsAre("..###.", "..###.", "......", "......"));
    target.Copy({-2, 0, 2, 1}, source, {-1, 0});
    EXPECT_THAT(Show(target)[0], "#####.");
    target.Copy({0, 1, 2, 2}, Blank(3, 3, 2.0), {0, 0});
    EXPECT_THAT(Show(target)[1], "..###.");
}

}  // namespace
}  // namespace vesk
