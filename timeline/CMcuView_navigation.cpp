#include <algorithm>
#include <cmath>

#include "platform/Keys.h"
#include "timeline/CMcuView.h"

namespace {

constexpr int kWheelStep = 120;  // that a wheel counts for a notch
constexpr int kLanesPerNotch = 3;
constexpr int kLanePitch = 20;

// Far zoomed in, a step can be a part of a QBit, and would lead nowhere.
double AtLeastOne(double qbits) {
    return qbits == 0 ? 0 : std::copysign(std::max(std::abs(qbits), 1.0), qbits);
}

}  // namespace

// --- Moving --------------------------------------------------------------------------------------

void CMcuView::MoveTime(double qbits, vesk::SpanChange how) {
    const vesk::ShownSpan before = Shown();
    const auto distance = static_cast<std::uint64_t>(std::min(std::abs(qbits), 0x1p63));
    const std::uint64_t offset = qbits < 0 ? m_TimeOffset - std::min(distance, m_TimeOffset)
                                           : m_TimeOffset + std::min(distance, ~m_TimeOffset);
    Show({offset, m_ZoomRatio});
    Note(before, how);
}

void CMcuView::ScrollTime(int pixels, vesk::SpanChange how) {
    MoveTime(pixels / static_cast<double>(m_PixelsPerQbit), how);
}

void CMcuView::ScrollLanes(int lanes) {
    m_LaneOffset += std::clamp(lanes, -m_VScrollMax, m_VScrollMax);
    Cal_VScrollPos();
    HideToolTip();
    InvalidateView();
}

void CMcuView::PanBy(int dx, int dy) {
    ScrollTime(-dx, vesk::SpanChange::kDrag);
    ScrollLanes(dy / kLanePitch);
}

void CMcuView::StepTime(double tenthsOfView, vesk::SpanChange how) {
    MoveTime(AtLeastOne(tenthsOfView * static_cast<double>(m_VisibleQbits) / 10), how);
}

// Around the cursor line, or the middle of the view if it isn't in sight.
void CMcuView::StepZoom(double factor) {
    const int middle = m_CanvasLeft + m_CanvasWidth / 2;
    const std::int64_t x = IsInView(m_CursorTime) ? Scale().PixelAt(m_CursorTime) : middle;
    ZoomAt(static_cast<int>(x), factor, vesk::SpanChange::kJump);
}

void CMcuView::Back() {
    if (const auto span = m_History.Back(Shown())) Show(*span);
}

void CMcuView::Forward() {
    if (const auto span = m_History.Forward(Shown())) Show(*span);
}

// --- Input ---------------------------------------------------------------------------------------

void CMcuView::OnMouseWheel(unsigned flags, int delta, CPoint point) {
    const double notches = static_cast<double>(delta) / kWheelStep;
    if ((flags & MK_CONTROL) != 0) {
        ZoomAt(point.x, std::exp2(notches / 2));
    } else if ((flags & MK_SHIFT) != 0) {
        StepTime(-notches, vesk::SpanChange::kWheel);
    } else {
        // Wheels may turn in small parts of a notch, and lanes only move as a whole.
        constexpr int kLane = kWheelStep / kLanesPerNotch;
        m_WheelRest += delta;
        ScrollLanes(m_WheelRest / kLane);
        m_WheelRest %= kLane;
    }
}

void CMcuView::OnMButtonDown(unsigned, CPoint point) {
    m_History.EndMovement();
    m_Pan = PanStart{point, m_TimeOffset, m_LaneOffset};
}

void CMcuView::OnMButtonUp(unsigned, CPoint) {
    m_History.EndMovement();
    m_Pan.reset();
}

// Always from where the drag began, so that parts of a QBit or of a lane don't get lost.
void CMcuView::Pan(unsigned flags, CPoint point) {
    if ((flags & MK_MBUTTON) == 0) m_Pan.reset();
    if (m_Pan) {
        m_LaneOffset = m_Pan->m_LaneOffset;
        m_TimeOffset = m_Pan->m_TimeOffset;
        PanBy(point.x - m_Pan->m_Point.x, point.y - m_Pan->m_Point.y);
    }
}

std::span<const CMcuView::OwnKey> CMcuView::OwnKeys() {
    using V = CMcuView;
    using vesk::SpanChange;
    constexpr unsigned kAny = MK_CONTROL | MK_SHIFT | MK_ALT;
    static constexpr OwnKey kKeys[] = {
        {'W', 0, kAny, [](V& view) { view.StepZoom(2); }, "Zoom in"},
        {'S', 0, kAny, [](V& view) { view.StepZoom(0.5); }, "Zoom out"},
        {'A', 0, kAny, [](V& view) { view.StepTime(-1, SpanChange::kPanKeys); }, "Earlier"},
        {'D', 0, kAny, [](V& view) { view.StepTime(1, SpanChange::kPanKeys); }, "Later"},
        {'F', 0, kAny, [](V& view) { view.ShowWholeLog(); }, "The whole log"},
        {VK_LEFT, MK_ALT, kAny, [](V& view) { view.Back(); }, "Back to the span shown before"},
        {VK_RIGHT, MK_ALT, kAny, [](V& view) { view.Forward(); }, "Forth again"},
        {VK_DELETE, 0, 0, [](V& view) { view.RemoveSelectedMarker(); },
         "Remove the selected marker"},
        {VK_F2, 0, MK_SHIFT, [](V& view) { view.GoToMarker(false); }, "To the next marker"},
        {VK_F2, MK_SHIFT, MK_SHIFT, [](V& view) { view.GoToMarker(true); },
         "To the previous marker"},
    };
    return kKeys;
}

void CMcuView::OnKeyDown(unsigned key, unsigned repeat, unsigned modifiers) {
    for (const OwnKey& known : OwnKeys())
        if (known.m_Key == key && (modifiers & known.m_Matters) == known.m_Modifiers)
            known.m_Do(*this);
    CView::OnKeyDown(key, repeat, modifiers);
}
