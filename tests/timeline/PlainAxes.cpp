#include "tests/timeline/PlainAxes.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>

#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "platform/Text.h"
#include "timeline/CMcuView.h"

namespace vesk {

namespace {

const McuJobList& List() {
    return *vesk_dll_shared_data.m_pJobList;
}

// x of a time; negative if it does not fit 31 bits.
int X(const CMcuView& view, std::uint64_t time) {
    const double pixels = static_cast<double>(time - view.m_TimeOffset) * view.m_PixelsPerQbit;
    const double x = view.m_CanvasLeft + pixels;
    return x < 2147483648.0 ? static_cast<int>(x) : -1;
}

std::uint64_t EffectiveEnd(int i) {
    const McuJob& job = List()[static_cast<std::size_t>(i)];
    if (job.m_EndTime > job.m_StartTime) return job.m_EndTime;
    if (i + 1 < List().GetSize()) return List()[static_cast<std::size_t>(i) + 1].m_StartTime;
    return List().m_EndTime;
}

void Line(CDC* dc, int x1, int y1, int x2, int y2) {
    dc->MoveTo(x1, y1);
    dc->LineTo(x2, y2);
}

using Label = std::function<std::string(std::uint64_t)>;

void PlainTicks(const CMcuView& view, CDC* dc, std::uint64_t m, std::uint64_t n, const Label& label,
                const std::string& caption) {
    const double scale = view.m_PixelsPerQbit;
    const int y = view.m_CanvasBottom;
    const int left = view.m_CanvasLeft;
    const int right = left + view.m_CanvasWidth;
    const std::uint64_t end = view.m_TimeOffset + view.m_VisibleQbits;
    const float step = static_cast<float>(static_cast<double>(m) * scale);
    std::uint64_t t = view.m_TimeOffset - view.m_TimeOffset % m + m;
    dc->MoveTo(left, y);
    double x = left + static_cast<double>(t - view.m_TimeOffset) * scale;
    dc->LineTo(static_cast<int>(x), y);
    int last = static_cast<int>(x);
    while (t <= end) {
        x += step;
        Line(dc, last, y, static_cast<int>(x), y);
        last = static_cast<int>(x);
        Line(dc, last, y, last, y + 5);
        if (x >= right) break;
        t += m;
    }
    if (view.m_TimeOffset % n == 0) {
        t = view.m_TimeOffset;
        x = left;
    } else {
        t = view.m_TimeOffset - view.m_TimeOffset % n + n;
        x = left + static_cast<double>(t - view.m_TimeOffset) * scale;
    }
    while (t <= end) {
        Line(dc, static_cast<int>(x), y - 3, static_cast<int>(x), y + 10);
        const std::string text = label(t);
        dc->TextOut(static_cast<int>(x - dc->GetTextExtent(text).cx / 2), y + 10, text);
        x += static_cast<double>(n) * scale;
        if (x >= right) break;
        t += n;
    }
    CBrush black(0);
    CBrush* const former = dc->SelectObject(&black);
    const CPoint arrow[] = {{right + 10, y}, {right, y - 5}, {right, y + 5}};
    dc->Polygon(arrow, 3);
    dc->SelectObject(former);
    dc->TextOut(right - dc->GetTextExtent(caption).cx, y + 30, caption);
}

std::uint64_t PlainMinorStep(const CMcuView& view) {
    std::uint64_t m = 1;
    while (static_cast<double>(m) * view.m_PixelsPerQbit < 2.0) m *= 2;
    return m;
}

}  // namespace

void PlainClockAxis(const CMcuView& view, CDC* dc) {
    const Label label = [&view](std::uint64_t t) {
        return std::to_string(t / static_cast<std::uint64_t>(view.m_ClockBase));
    };
    const std::uint64_t m = PlainMinorStep(view);
    const int width = dc->GetTextExtent(label(view.m_TimeOffset + view.m_VisibleQbits)).cx;
    std::uint64_t n = std::max<std::uint64_t>(m, static_cast<std::uint64_t>(view.m_ClockBase));
    while (static_cast<double>(n) * view.m_PixelsPerQbit < width + 10 || n % 5 != 0) ++n;
    PlainTicks(view, dc, m, n, label, "QBit (x" + std::to_string(view.m_ClockBase) + ")");
}

void PlainTimeAxis(const CMcuView& view, CDC* dc) {
    const Label label = [&view](std::uint64_t t) {
        const float ms = static_cast<float>(static_cast<double>(t) * 120 / 130000);
        const float shown = ms * static_cast<float>(view.m_TimeBase);
        return FormatText("%f", static_cast<double>(shown));
    };
    const std::uint64_t m = PlainMinorStep(view);
    const int width = dc->GetTextExtent(label(view.m_TimeOffset + view.m_VisibleQbits)).cx;
    std::uint64_t n = m;
    while (static_cast<double>(n) * view.m_PixelsPerQbit < width + 10) n += m;
    // Time bases are powers of ten.
    const std::string exponent = std::to_string(std::to_string(view.m_TimeBase).size() - 1);
    PlainTicks(view, dc, m, n, label, "Execute Time (x1/1.0E" + exponent + " ms)");
}

void PlainCountAxis(const CMcuView& view, CDC* dc) {
    const int y = view.m_CanvasBottom;
    int ends[] = {-1, -1, -1};
    int cx = view.m_CanvasLeft;
    for (int i = view.m_JobFirst; i < view.m_JobLast; ++i) {
        const McuJob& job = List()[static_cast<std::size_t>(i)];
        dc->MoveTo(cx, y);
        const std::uint64_t s = std::max(job.m_StartTime, view.m_TimeOffset);
        const int x = X(view, s);
        if (x < 0) break;
        cx = x;
        if (s == view.m_TimeOffset) continue;
        dc->LineTo(x, y);
        Line(dc, x, y - 3, x, y + 10);
        const std::string text = std::to_string(job.m_TimeCount);
        const int width = dc->GetTextExtent(text).cx;
        const int tx = x - width / 2;
        for (int row = 0; row < 3; ++row) {
            if (tx < ends[row] + 2) continue;
            dc->TextOut(tx, y + 10 + 15 * row, text);
            ends[row] = tx + width;
            break;
        }
    }
    Line(dc, cx, y, view.m_CanvasLeft + view.m_CanvasWidth, y);
}

void PlainFrameNo(const CMcuView& view, CDC* dc) {
    CPen dots(PS_DOT, 1, 0xB4B4B4);
    CPen solid(PS_SOLID, 2, 0x963C32);
    CPen* const formerPen = dc->SelectObject(&dots);
    const COLORREF formerColor = dc->SetTextColor(0x963C32);
    int last = -1;
    int textEnd = 0;
    const int first = view.m_JobFirst;
    int prev = first > 0 ? List()[static_cast<std::size_t>(first) - 1].m_TimeStamp : -1;
    for (int i = first; i < view.m_JobLast; ++i) {
        const McuJob& job = List()[static_cast<std::size_t>(i)];
        const int cur = job.m_TimeStamp;
        std::uint64_t s = job.m_StartTime;
        if (s <= view.m_TimeOffset) {
            s = view.m_TimeOffset;
            prev = cur;
        }
        if (EffectiveEnd(i) < view.m_TimeOffset) continue;
        const int x = X(view, s);
        if (x < 0) break;
        if (view.m_ShowDottedLine && s != view.m_TimeOffset && x > last + 1) {
            dc->SelectObject(&dots);
            Line(dc, x, 30, x, view.m_CanvasBottom + 10);
            last = x;
        }
        if (view.m_ShowFrameNo && s != view.m_TimeOffset && cur != prev) {
            dc->SelectObject(&solid);
            Line(dc, x, 30, x, view.m_CanvasBottom + 45);
            const std::string text = std::to_string(cur);
            const int width = dc->GetTextExtent(text).cx;
            if (x - width / 2 >= textEnd + 2) {
                dc->TextOut(x - width / 2, view.m_CanvasBottom + 55, text);
                textEnd = x - width / 2 + width;
            }
        }
        prev = cur;
    }
    dc->SelectObject(formerPen);
    dc->SetTextColor(formerColor);
}

}  // namespace vesk
