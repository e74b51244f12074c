#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "platform/CDC.h"
#include "platform/CPen.h"
#include "platform/RasterSurface.h"
#include "platform/RecordingSurface.h"
#include "tests/timeline/RandomList.h"
#include "tests/timeline/ViewTest.h"

// Draws parts of a view: as text for hand-worked cases, as pixels to compare two ways of drawing.
class PictureTest : public ViewTest {
protected:
    // What a drawing would do, and where its pixels end up.
    struct Paper {
        CSize m_Size;
        CRect m_Clip;
        double m_Scale = 1.0;
    };

    // Gives the names of the log their colours.
    void Color() {
        m_Document.reset();
        m_Document = std::make_unique<VESKUIDoc>();
    }
    VESKUIDoc& Document() { return *m_Document; }

    // Shows a random log in a window of random size.
    void OpenRandom(std::uint64_t seed, vesk::Dice& dice) {
        vesk::FillRandomList(Log(), seed, dice.Of({1, 40, 400, 1500}));
        Color();
        Open(110 + dice.Of({7, 60, 300}), dice.Of({230, 400}));
    }
    Paper RandomPaper(vesk::Dice& dice) {
        Paper paper;
        paper.m_Size = {View().CanvasRight() + 30, View().m_CanvasBottom + 60};
        paper.m_Clip = {0, 0, paper.m_Size.cx, paper.m_Size.cy};
        if (dice.OnceIn(3)) paper.m_Clip = {85, dice.Between(0, 60), 120, dice.Between(70, 140)};
        paper.m_Scale = dice.Of({1.0, 1.0, 1.25, 2.0, 0.75});
        return paper;
    }

    template <class Draw>
    static std::vector<std::uint32_t> Pixels(const Paper& paper, Draw draw) {
        static const vesk::FixedGlyphs glyphs;
        vesk::RasterSurface surface(paper.m_Size, glyphs, paper.m_Scale);
        CDC dc(&surface);
        dc.SetBkMode(TRANSPARENT);
        dc.SetClipBox(paper.m_Clip);
        draw(&dc);
        const auto count = static_cast<std::size_t>(surface.Stride()) *
                           static_cast<std::size_t>(surface.DeviceHeight());
        return {surface.Pixels(), surface.Pixels() + count};
    }
    template <class Draw, class Plain>
    static bool LooksTheSame(const Paper& paper, Draw draw, Plain plain) {
        const std::vector<std::uint32_t> drawn = Pixels(paper, draw);
        return drawn == Pixels(paper, plain);
    }

    // The drawing as text, one line per step.
    template <class Draw>
    static std::vector<std::string> Steps(Draw draw) {
        vesk::RecordingSurface surface({1110, 617});
        CDC dc(&surface);
        dc.SetBkMode(TRANSPARENT);
        draw(&dc);
        return surface.Lines();
    }

    // Opens the log on a canvas from x 80 to 1080, y 30 to 500, with `time` at its left edge.
    CMcuView& OpenAt(std::uint64_t time, float pixelsPerQbit = 1.0f) {
        if (!m_Document) Color();
        CMcuView& view = Open();
        view.m_PixelsPerQbit = pixelsPerQbit;
        view.m_VisibleQbits = static_cast<std::uint64_t>(1000 / pixelsPerQbit);
        view.m_TimeOffset = time;
        view.Cal_VisibleIndex();
        return view;
    }

private:
    std::unique_ptr<VESKUIDoc> m_Document;
};
