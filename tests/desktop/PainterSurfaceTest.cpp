#include "desktop/PainterSurface.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QPainter>
#include <functional>

#include "desktop/QtGlyphs.h"
#include "desktop/SurfacePicture.h"
#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "platform/RasterSurface.h"

namespace vesk {
namespace {

constexpr CSize kSize{160, 60};
constexpr int kPageScale = 3;

using Drawing = std::function<void(CDC&)>;

QImage OnPage(const Drawing& draw, int scale) {
    const QtGlyphs glyphs;
    QImage picture(kSize.cx * scale, kSize.cy * scale, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.scale(scale, scale);
    {
        PainterSurface surface(painter, kSize, glyphs);
        CDC dc(&surface);
        dc.SetBkMode(TRANSPARENT);
        draw(dc);
    }
    return picture;
}

QImage OnRaster(const Drawing& draw) {
    const QtGlyphs glyphs;
    RasterSurface surface(kSize, glyphs);
    CDC dc(&surface);
    dc.SetBkMode(TRANSPARENT);
    draw(dc);
    return PictureOf(surface).copy();
}

QRect InkOf(const QImage& picture) {
    QRect ink;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (qGreen(picture.pixel(x, y)) < 128) ink |= QRect(x, y, 1, 1);
    return ink;
}

TEST(PainterSurface, WhatIsStraightIsThePictureOfTheRaster) {
    const Drawing draw = [](CDC& dc) {
        CPen thick(PS_SOLID, 2, RGB(50, 60, 150));
        CBrush brush(RGB(200, 100, 0));
        dc.FillSolidRect(5, 6, 40, 20, RGB(255, 0, 0));
        CPen* const formerPen = dc.SelectObject(&thick);
        CBrush* const formerBrush = dc.SelectObject(&brush);
        dc.MoveTo(3, 30);
        dc.LineTo(90, 30);
        dc.LineTo(90, 10);
        dc.Rectangle(100, 5, 140, 25);
        dc.SetClipBox({0, 0, 50, 50});
        dc.FillSolidRect(30, 35, 100, 100, RGB(0, 0, 255));
        dc.SelectObject(formerPen);
        dc.SelectObject(formerBrush);
    };
    EXPECT_EQ(OnPage(draw, 1), OnRaster(draw));
}

TEST(PainterSurface, OtherShapesCoverWhatTheRasterCovers) {
    const struct {
        const char* m_What;
        Drawing m_Draw;
    } cases[] = {
        {"polygon",
         [](CDC& dc) {
             CBrush black(0);
             const CPoint arrow[] = {{80, 5}, {60, 40}, {100, 40}};
             CBrush* const former = dc.SelectObject(&black);
             dc.Polygon(arrow, 3);
             dc.SelectObject(former);
         }},
        {"round rectangle",
         [](CDC& dc) {
             dc.RoundRect({20, 10, 60, 40}, {10, 10});
         }},
        {"slanted line",
         [](CDC& dc) {
             dc.MoveTo(10, 50);
             dc.LineTo(150, 10);
         }},
        {"dotted line",
         [](CDC& dc) {
             CPen dots(PS_DOT, 1, 0);
             CPen* const former = dc.SelectObject(&dots);
             dc.MoveTo(40, 3);
             dc.LineTo(40, 57);
             dc.SelectObject(former);
         }},
        {"text", [](CDC& dc) { dc.TextOut(20, 20, "MAIN IRQ_SOFT_NET"); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.m_What);
        const QRect raster = InkOf(OnRaster(c.m_Draw));
        const QRect page = InkOf(OnPage(c.m_Draw, kPageScale));
        ASSERT_FALSE(page.isEmpty());
        const auto near = [](int pageEdge, int edge) {
            return std::abs(pageEdge - edge * kPageScale) <= 2 * kPageScale;
        };
        EXPECT_TRUE(near(page.left(), raster.left()) && near(page.right(), raster.right() + 1) &&
                    near(page.top(), raster.top()) && near(page.bottom(), raster.bottom() + 1));
    }
}

}  // namespace
}  // namespace vesk
