#pragma once

#include <string>

#include "platform/SystemMetrics.h"
#include "tests/timeline/ViewTest.h"

// A person with a mouse before a view. The canvas begins at x 80, is 1000 wide, goes down to y 500
// and shows 2 pixels a QBit. Jobs lie at y 250 to 375, functions at 117 to 200, marks at 106 to
// 116, labels of markers at 8 to 21.
class PointTest : public ViewTest {
protected:
    static constexpr int kJobs = 300;
    static constexpr int kCustom = 150;
    static constexpr int kMarks = 110;
    static constexpr int kLabels = 15;

    static McuJob Record(const char* name, std::uint64_t start, std::uint64_t end, int stamp = 0,
                         std::uint32_t count = 0) {
        McuJob job(name, start, end);
        job.m_TimeStamp = stamp;
        job.m_TimeCount = count;
        return job;
    }

    void Press(int x, int y) { View().OnLButtonDown(MK_LBUTTON, {x, y}); }
    void Release() { View().OnLButtonUp(0, {}); }
    void Click(int x, int y) {
        Press(x, y);
        Release();
    }
    void Move(int x, int y) { View().OnMouseMove(0, {x, y}); }
    void Drag(CPoint from, std::initializer_list<int> path) {
        Press(from.x, from.y);
        for (const int x : path) Move(x, from.y);
        Release();
    }

    // What the tip says; empty while there is none.
    std::string Tip() const {
        const CToolTipCtrl& tip = *m_Shown->m_ToolTip;
        EXPECT_EQ(tip.IsWindowVisible(), m_Shown->m_ToolTipShown != 0);
        return tip.IsWindowVisible() ? tip.GetWindowText().Str() : "";
    }
    // Its first line.
    std::string TipHead() const { return Tip().substr(0, Tip().find('\r')); }

    CMcuView& Open(int width = kWidth, int height = kHeight) {
        m_Shown = &ViewTest::Open(width, height);
        return *m_Shown;
    }

    VESKUIDoc m_Document;

private:
    CMcuView* m_Shown = nullptr;
};
