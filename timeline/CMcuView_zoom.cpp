#include <algorithm>
#include <cmath>

#include "log/McuJobList.h"
#include "timeline/CMcuView.h"
#include "timeline/ScrollMapping.h"

namespace {

// What the zoom commands reach from ratio 1 by doubling and halving.
constexpr float kLeastRatio = 0x1p-17f;
constexpr float kGreatestRatio = 0x1p7f;

}  // namespace

void CMcuView::Zoom() {
    const std::uint64_t center =
        IsInView(m_CursorTime) ? m_CursorTime : m_TimeOffset + m_VisibleQbits / 2;
    m_PixelsPerQbit = m_BaseScale * m_ZoomRatio;
    m_VisibleQbits = vesk::VisibleQbits(m_CanvasWidth, m_PixelsPerQbit);
    const std::uint64_t half = m_VisibleQbits / 2;
    m_TimeOffset = center < half ? 0 : center - half;
    SetHScrollRange();
    Cal_HScrollPos();
    InvalidateView();
}

// The edge moves so that the pixel stands over its time again. A ratio that lies outside of the
// limits already goes no farther.
void CMcuView::ZoomAt(int x, double factor, vesk::SpanChange how) {
    const vesk::ShownSpan shown = Shown();
    const int anchor = std::clamp(x, m_CanvasLeft, std::max(m_CanvasLeft, CanvasRight()));
    const std::uint64_t time = Scale().TimeAt(anchor);
    const float least = std::min(kLeastRatio, m_ZoomRatio);
    const float greatest = std::max(kGreatestRatio, m_ZoomRatio);
    const auto ratio =
        static_cast<float>(std::clamp<double>(m_ZoomRatio * factor, least, greatest));
    const vesk::TimeScale scale{0, m_BaseScale * ratio, m_CanvasLeft};
    const std::uint64_t before = scale.TimeAt(anchor);
    Show({time > before ? time - before : 0, ratio});
    Note(shown, how);
}

void CMcuView::ShowWholeLog() {
    if (m_CanvasWidth <= 0) return;
    const std::uint64_t end = Jobs().m_EndTime;
    const double fitting = m_CanvasWidth / (static_cast<double>(end) * m_BaseScale);
    auto ratio = static_cast<float>(std::min<double>(fitting, kGreatestRatio));
    // Rounding must not cut the end off.
    while (vesk::VisibleQbits(m_CanvasWidth, m_BaseScale * ratio) < end)
        ratio = std::nextafter(ratio, 0.0f);
    const vesk::ShownSpan before = Shown();
    Show({0, ratio});
    Note(before, vesk::SpanChange::kJump);
}

void CMcuView::Show(const vesk::ShownSpan& span) {
    m_ZoomRatio = span.m_ZoomRatio;
    m_PixelsPerQbit = m_BaseScale * m_ZoomRatio;
    m_VisibleQbits = vesk::VisibleQbits(m_CanvasWidth, m_PixelsPerQbit);
    m_TimeOffset = span.m_TimeOffset;
    SetHScrollRange();
    Cal_HScrollPos();
    HideToolTip();
    InvalidateView();
}
