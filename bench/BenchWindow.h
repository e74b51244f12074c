#pragma once

#include "host/VESKUIDoc.h"
#include "platform/CDC.h"
#include "platform/RasterSurface.h"
#include "timeline/CMcuView.h"

namespace vesk {

// The timeline of the log at hand, all of it in view, 1920 x 1080.
class BenchWindow {
public:
    explicit BenchWindow(OUTLOOKTYPE outlook) {
        m_View.MoveWindow(0, 0, kSize.cx, kSize.cy);
        m_View.OnCreate();
        m_View.OnSize(SIZE_RESTORED, kSize.cx, kSize.cy);
        m_View.m_Outlook = outlook;
        m_View.ShowWholeLog();
    }

    CMcuView& View() { return m_View; }
    CDC* Context() { return &m_Context; }
    void Paint() { m_View.OnDraw(&m_Context); }

private:
    static constexpr CSize kSize{1920, 1080};

    VESKUIDoc m_Document;
    CMcuView m_View;
    FixedGlyphs m_Glyphs;
    RasterSurface m_Screen{kSize, m_Glyphs};
    CDC m_Context{&m_Screen};
};

}  // namespace vesk
