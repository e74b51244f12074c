#include "platform/RecordingSurface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/CBrush.h"
#include "platform/CPen.h"

namespace vesk {
namespace {

using testing::ElementsAre;

TEST(RecordingSurface, WritesDownPensAndBrushesOfEveryKind) {
    RecordingSurface surface({50, 50});
    CBrush hollow;
    hollow.m_Hollow = true;
    surface.Rectangle({1, 2, 4, 6}, CPen(PS_DOT, 2, 0xABCDEF), hollow);
    surface.Rectangle({1, 2, 4, 6}, CPen(PS_NULL, 1, 0), CBrush(0x0000FF));
    surface.Text({1, -2}, "a \"b\"", 0);
    EXPECT_THAT(surface.Lines(),
                ElementsAre("rect 1,2 3x4 dot 2 ABCDEF on hollow", "rect 1,2 3x4 none on 0000FF",
                            "text 1,-2 \"a \"b\"\" 000000"));
    EXPECT_THAT(surface.Texts(), ElementsAre("a \"b\""));
}

TEST(RecordingSurface, MovesWhatIsCopiedToItsNewPlace) {
    RecordingSurface surface({50, 50});
    surface.FillRect({0, 0, 1, 1}, 0);
    const auto part = surface.MakeCompatible({10, 10});
    ASSERT_NE(part, nullptr);
    part->Line({1, 2}, {3, 2}, CPen());
    part->Text({4, 4}, "x", 0);
    surface.Copy({20, 30, 30, 40}, *part, {1, 1});
    part->Text({5, 5}, "later", 0);
    surface.FillRect({9, 9, 10, 10}, 0);
    EXPECT_THAT(surface.Lines(),
                ElementsAre("fill 0,0 1x1 000000", "line 20,31 > 22,31 solid 1 000000",
                            "text 23,33 \"x\" 000000", "fill 9,9 1x1 000000"));
}

}  // namespace
}  // namespace vesk
