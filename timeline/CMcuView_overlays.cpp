// What lies over the lanes: cursor, range handles, markers; the y axis and the status line.
#include <algorithm>
#include <cmath>
#include <string>

#include "host/VESKUIDoc.h"
#include "log/McuJobList.h"
#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "platform/Text.h"
#include "timeline/CMcuView.h"
#include "timeline/SavedDrawing.h"
#include "timeline/Ticks.h"

namespace {

struct Inks {
    COLORREF m_Pen;
    COLORREF m_Brush;
    COLORREF m_Text;
};

constexpr COLORREF kCursorInk = 0x0000FF;
constexpr COLORREF kHandleInk = 0x14D6FF;
constexpr Inks kMarker{0xFFBC7A, 0xFFD6AE, 0xA06328};
constexpr Inks kSelectedMarker{0xFF7F00, 0xFF7F00, 0};
constexpr COLORREF kStatusInk = 0xFF0000;
constexpr int kBelowCanvas = 10;  // how far vertical lines go
constexpr int kScaleGap = 2;

void VerticalLine(CDC* dc, int x, int top, int bottom) {
    dc->MoveTo(x, top);
    dc->LineTo(x, bottom);
}

void DrawHandle(CDC* dc, int x, int top, int bottom) {
    VerticalLine(dc, x, top, bottom + kBelowCanvas);
    const CPoint triangle[] = {{x, top}, {x - 5, top - 10}, {x + 5, top - 10}};
    dc->Polygon(triangle, 3);
}

void DrawMarker(CDC* dc, int key, int x, int top, int lineBottom, const Inks& inks) {
    const vesk::SavedDrawing saved(dc);
    CPen pen(PS_SOLID, 1, inks.m_Pen);
    CBrush brush(inks.m_Brush);
    dc->SelectObject(&pen);
    dc->SelectObject(&brush);
    dc->SetTextColor(inks.m_Text);
    VerticalLine(dc, x, top, lineBottom);
    const std::string label = std::to_string(key);
    const CSize size = dc->GetTextExtent(label);
    dc->RoundRect({x - 10, (top - size.cy) / 2, x + 10, (top + size.cy) / 2}, {10, 10});
    dc->TextOut(x - size.cx / 2, (top - size.cy) / 2, label);
}

// Extra values that the filter shows, as far as the log has them.
template <class Visit>
void ForShownExtras(const CMcuView& view, Visit visit) {
    const std::size_t count = std::min(view.m_ExtraShown.size(), view.m_ExtraCursorValue.size());
    for (std::size_t j = 0; j < count; ++j)
        if (view.m_ExtraShown[j]) visit(j);
}

std::string Unsigned(int bits) {
    return vesk::FormatText("%u", static_cast<unsigned>(bits));
}

std::string DurationText(const CMcuView& view) {
    const double pixels = std::abs(static_cast<double>(view.m_RangeX1) - view.m_RangeX2);
    const float span = std::floor(static_cast<float>(pixels) / view.m_PixelsPerQbit);
    const auto qbits = static_cast<std::int64_t>(span < 0x1p63f ? span : 0.0f);
    return vesk::FormatText("Duration: %lld Qbits (%.1f ms)", static_cast<long long>(qbits),
                            vesk::Milliseconds(static_cast<std::uint64_t>(qbits)));
}

}  // namespace

// --- Cursor, range handles, markers --------------------------------------------------------------

void CMcuView::DrawCurTime(CDC* dc, int height, int /*left*/, int bottom) {
    const vesk::SavedDrawing saved(dc);
    const int top = bottom - height;
    const int lineBottom = m_CanvasBottom + kBelowCanvas;
    const auto isVisible = [this](std::uint64_t time) {
        return time >= m_TimeOffset && time - m_TimeOffset <= m_VisibleQbits;
    };
    const auto columnOf = [this](std::uint64_t time) {
        return vesk::ToCoordinate(Scale().PixelAt(time));
    };
    CPen cursorPen(PS_SOLID, 1, kCursorInk);
    CPen handlePen(PS_SOLID, 1, kHandleInk);
    CBrush handleBrush(kHandleInk);
    if (isVisible(m_CursorTime)) {
        dc->SelectObject(&cursorPen);
        VerticalLine(dc, columnOf(m_CursorTime), top, lineBottom);
    }
    dc->SelectObject(&handlePen);
    dc->SelectObject(&handleBrush);
    for (const int x : {m_RangeX1, m_RangeX2}) DrawHandle(dc, x, top, bottom);
    if (!global_vesk_doc_ptr) return;
    for (const auto& [key, time] : global_vesk_doc_ptr->m_Markers) {
        if (!isVisible(time)) continue;
        const Inks& inks = key == m_DragMarkerIndex ? kSelectedMarker : kMarker;
        DrawMarker(dc, key, columnOf(time), top, lineBottom, inks);
    }
}

// --- Y axis --------------------------------------------------------------------------------------

// The scales of all curves stack from the top and from the bottom of the margin.
void CMcuView::DrawYAxis(CDC* dc, int height, int left, int bottom) {
    const vesk::SavedDrawing saved(dc);
    const int top = bottom - height;
    CBrush black(0);
    VerticalLine(dc, left, bottom, top);
    dc->SelectObject(&black);
    const CPoint arrow[] = {{left, top}, {left - 5, top + 10}, {left + 5, top + 10}};
    dc->Polygon(arrow, 3);
    const CSize title = dc->GetTextExtent("Job");
    dc->TextOut(left - title.cx / 2, (top - title.cy) / 2, "Job");
    if (m_Outlook != OUTLOOK_PURE) return;
    const McuJobList& jobs = Jobs();
    int offset = 0;
    ForShownExtras(*this, [&](std::size_t j) {
        if (j >= jobs.m_ExtraMax.size() || j >= jobs.m_ExtraMin.size()) return;
        const int key = static_cast<int>(j);
        dc->SetTextColor(global_vesk_doc_ptr ? global_vesk_doc_ptr->m_ExtraColor.Lookup(key) : 0);
        const std::string most = Unsigned(jobs.m_ExtraMax[j]);
        const std::string least = Unsigned(jobs.m_ExtraMin[j]);
        const CSize leastSize = dc->GetTextExtent(least);
        dc->TextOut((left - dc->GetTextExtent(most).cx) / 2, top + offset, most);
        dc->TextOut((left - leastSize.cx) / 2, bottom - leastSize.cy - offset, least);
        offset += leastSize.cy + kScaleGap;
    });
}

// --- Status line ---------------------------------------------------------------------------------

void CMcuView::DrawIdleRatio(CDC* dc, int x, int y) {
    const vesk::SavedDrawing saved(dc);
    const McuJobList& jobs = Jobs();
    dc->SetTextColor(kStatusInk);
    std::string status = vesk::FormatText("Ratio of Idle Time : %d %%, CurTime : %lld", m_IdleRatio,
                                          static_cast<long long>(m_CursorTime));
    ForShownExtras(*this, [&](std::size_t j) {
        if (j >= jobs.m_ExtraNames.size()) return;
        status += vesk::FormatText(", %s: %u", static_cast<const char*>(jobs.m_ExtraNames[j]),
                                   m_ExtraCursorValue[j]);
    });
    dc->TextOut(x, y, status);
    const std::string duration = DurationText(*this);
    dc->TextOut(CanvasRight() - dc->GetTextExtent(duration).cx, y, duration);
}
