// The order of one paint. Later steps lie on top of earlier ones.
#include "timeline/CMcuView.h"
#include "timeline/CMemoryDC.h"

namespace {

constexpr int kStatusLeft = 10;
constexpr int kStatusBelowCanvas = 80;

// The strips of the pure outlook: where each stands follows from the height of the canvas.
void DrawStrips(CMcuView& view, CDC* dc) {
    const int left = view.m_CanvasLeft;
    const int bottom = view.m_CanvasBottom;
    view.DrawJobList(dc, bottom / 4, left, bottom * 3 / 4);
    if (view.m_ShowCustomLogging) {
        if (view.m_ContextSwitch) {
            view.DrawCustomJobListCS(dc, bottom / 6, left, bottom * 2 / 5);
        } else {
            view.DrawCustomJobList(dc, bottom / 6, left, bottom * 2 / 5);
        }
    }
    view.DrawSourceMarkList(dc, left, bottom * 7 / 30);
    view.DrawExtraInfo(dc, bottom / 4, left, bottom * 3 / 4);
}

void DrawXAxis(CMcuView& view, CDC* dc) {
    const int width = view.m_CanvasWidth;
    const int left = view.m_CanvasLeft;
    const int bottom = view.m_CanvasBottom;
    switch (view.m_TimeUnit) {
        case TIMEUNIT_CLOCK:
            return view.DrawXAxis_Clock(dc, width, left, bottom);
        case TIMEUNIT_COUNT:
            return view.DrawXAxis_Count(dc, width, left, bottom);
        default:
            return view.DrawXAxis_Time(dc, width, left, bottom);
    }
}

}  // namespace

void CMcuView::OnDraw(CDC* target) {
    CMemoryDC dc(target);
    dc.SetBkMode(TRANSPARENT);
    if (m_Outlook == OUTLOOK_PURE) {
        DrawStrips(*this, &dc);
    } else {
        DrawJobList(&dc, m_CanvasLeft, m_CanvasBottom);
    }
    // A canvas without width shows no time: nothing but what stands in the margins.
    const bool showsTime = m_CanvasWidth > 0;
    if (showsTime) {
        DrawFrameNo(&dc, m_CanvasLeft);
        DrawCurTime(&dc, m_CanvasHeight, m_CanvasLeft, m_CanvasBottom);
    }
    DrawYAxis(&dc, m_CanvasHeight, m_CanvasLeft, m_CanvasBottom);
    if (showsTime) DrawXAxis(*this, &dc);
    DrawIdleRatio(&dc, kStatusLeft, m_CanvasBottom + kStatusBelowCanvas);
}
