#include "tests/timeline/PlainJobs.h"

#include <algorithm>
#include <cmath>

#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "timeline/CMcuView.h"

namespace vesk::plain {

namespace {

const McuJobList& List() {
    return *vesk_dll_shared_data.m_pJobList;
}

std::int64_t X(const CMcuView& view, std::uint64_t time, int left) {
    const std::uint64_t t = std::max(time, view.m_TimeOffset);
    return static_cast<std::int64_t>(left + static_cast<double>(t - view.m_TimeOffset) *
                                                static_cast<double>(view.m_PixelsPerQbit));
}
bool InRange(std::int64_t x) {
    return x >= 0 && x <= 0x7FFFFFFF;
}

std::uint64_t End(const std::vector<McuJob>& records, std::size_t i) {
    const McuJob& record = records[i];
    if (record.m_EndTime > record.m_StartTime) return record.m_EndTime;
    return i + 1 < records.size() ? records[i + 1].m_StartTime : List().m_EndTime;
}

std::int64_t Width(const CMcuView& view, std::uint64_t from, std::uint64_t to) {
    if (to < from) return 0;
    return static_cast<std::int64_t>(static_cast<double>(to - from) *
                                     static_cast<double>(view.m_PixelsPerQbit));
}

COLORREF ColorOf(const std::string& name) {
    return global_vesk_doc_ptr->m_JobColor.Lookup(ColorKey(name));
}

std::string Shortened(CDC* dc, std::string text, int width) {
    if (text.empty() || dc->GetTextExtent(text).cx <= width) return text;
    while (!text.empty()) {
        text.pop_back();
        if (dc->GetTextExtent(text + "...").cx <= width) break;
    }
    return text + "...";
}

void Line(CDC* dc, std::int64_t x1, int y1, std::int64_t x2, int y2) {
    dc->MoveTo(static_cast<int>(x1), y1);
    dc->LineTo(static_cast<int>(x2), y2);
}

void Label(CDC* dc, const std::string& name, int left, int y) {
    dc->TextOut((left - dc->GetTextExtent(name).cx) / 2, y - 15, name);
}

// A record of the lane. Gives where the lane goes on.
std::int64_t High(CMcuView& view, CDC* dc, std::int64_t cx, int left, int y5, std::uint64_t start,
                  std::uint64_t end) {
    const std::int64_t right = view.CanvasRight();
    const std::int64_t xs = X(view, start, left);
    std::int64_t width = Width(view, start, end);
    if (!InRange(width)) width = view.m_CanvasWidth - xs + left;
    Line(dc, cx, y5, xs, y5);
    if (xs > left) Line(dc, xs, y5, xs, y5 - 10);
    if (width > right - xs) {
        Line(dc, xs, y5 - 10, right, y5 - 10);
        return right;
    }
    Line(dc, xs, y5 - 10, xs + width, y5 - 10);
    Line(dc, xs + width, y5 - 10, xs + width, y5);
    return xs + width;
}

}  // namespace

void DrawJobList(CMcuView& view, CDC* dc, int height, int left, int y) {
    const COLORREF before = dc->GetTextColor();
    for (int i = view.m_JobFirst; i < view.m_JobLast; ++i) {
        const McuJob& job = List()[static_cast<std::size_t>(i)];
        const std::uint64_t start = std::max(job.m_StartTime, view.m_TimeOffset);
        const std::uint64_t end = End(List(), static_cast<std::size_t>(i));
        if (end < view.m_TimeOffset) continue;
        const std::int64_t x = X(view, start, left);
        if (!InRange(x)) break;
        const std::int64_t rest = view.CanvasRight() - x;
        std::int64_t length = Width(view, start, end);
        if (!InRange(length) || length > rest) length = rest;
        const int width = static_cast<int>(length);
        const COLORREF color = ColorOf(job.m_Name);
        dc->FillSolidRect(static_cast<int>(x), y - height, width, height, color);
        const int textWidth = dc->GetTextExtent(job.m_Name).cx;
        const bool light =
            GetRValue(color) > 128 && GetGValue(color) > 128 && GetBValue(color) > 128;
        dc->SetTextColor(light ? 0 : 0xFFFFFF);
        const std::int64_t tx = width > textWidth ? x + (width - textWidth) / 2 : x;
        dc->TextOut(static_cast<int>(tx), y - height / 2 - 10,
                    width > textWidth ? job.m_Name : Shortened(dc, job.m_Name, width));
    }
    dc->SetTextColor(before);
}

void DrawJob(CMcuView& view, CDC* dc, const std::string& name, int left, int y) {
    CPen pen(PS_SOLID, 1, ColorOf(name));
    CPen* before = dc->SelectObject(&pen);
    std::int64_t cx = left;
    const int y5 = y - 5;
    for (int i = view.m_JobFirst; i < view.m_JobLast; ++i) {
        const McuJob& job = List()[static_cast<std::size_t>(i)];
        const std::uint64_t end = End(List(), static_cast<std::size_t>(i));
        if (end < view.m_TimeOffset) continue;
        if (job.m_Name == name) {
            const std::uint64_t start = std::max(job.m_StartTime, view.m_TimeOffset);
            if (!InRange(X(view, start, left))) break;
            cx = High(view, dc, cx, left, y5, start, end);
        } else {
            std::int64_t xe = X(view, end, left);
            if (!InRange(xe) || xe > view.CanvasRight()) xe = view.CanvasRight();
            Line(dc, cx, y5, xe, y5);
            cx = xe;
        }
    }
    Line(dc, cx, y5, view.CanvasRight(), y5);
    Label(dc, name, left, y);
    dc->SelectObject(before);
}

void DrawHWJob(CMcuView& view, CDC* dc, const std::string& name, int left, int y, int first,
               int last) {
    const auto lane = List().m_HWJobs.find(name);
    if (lane == List().m_HWJobs.end()) return;
    CPen pen(PS_SOLID, 1, 0);
    CPen* before = dc->SelectObject(&pen);
    std::int64_t cx = left;
    for (int i = first; i < last; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const std::uint64_t end = End(lane->second, at);
        if (end < view.m_TimeOffset) continue;
        const std::uint64_t start = std::max(lane->second[at].m_StartTime, view.m_TimeOffset);
        if (!InRange(X(view, start, left))) break;
        cx = High(view, dc, cx, left, y - 5, start, end);
    }
    Line(dc, cx, y - 5, view.CanvasRight(), y - 5);
    Label(dc, name, left, y);
    dc->SelectObject(before);
}

void DrawSourceMark(CMcuView& view, CDC* dc, const std::string& name, int left, int y) {
    CPen pen(PS_SOLID, 1, 0x5D009E);
    CPen* before = dc->SelectObject(&pen);
    std::int64_t cx = left;
    for (int i = view.m_MarkFirst; i < view.m_MarkLast; ++i) {
        const McuJob& mark = List().m_SourceMarks[static_cast<std::size_t>(i)];
        if (mark.m_StartTime < view.m_TimeOffset || mark.m_Name != name) continue;
        const std::int64_t x = X(view, mark.m_StartTime, left);
        if (!InRange(x)) break;
        Line(dc, cx, y - 5, x, y - 5);
        if (x > left) Line(dc, x, y - 5, x, y - 15);
        cx = x;
    }
    Line(dc, cx, y - 5, view.CanvasRight(), y - 5);
    Label(dc, name, left, y);
    dc->SelectObject(before);
}

void DrawSourceMarkList(CMcuView& view, CDC* dc, int left, int y) {
    CPen pen(PS_SOLID, 1, 0x5D009E);
    CBrush brush(0x5D009E);
    CPen* penBefore = dc->SelectObject(&pen);
    CBrush* brushBefore = dc->SelectObject(&brush);
    for (int i = view.m_MarkFirst; i < view.m_MarkLast; ++i) {
        const McuJob& mark = List().m_SourceMarks[static_cast<std::size_t>(i)];
        if (mark.m_StartTime < view.m_TimeOffset) continue;
        const std::int64_t at = X(view, mark.m_StartTime, left);
        if (!InRange(at)) break;
        const int x = static_cast<int>(at);
        const CPoint corners[] = {{x, y}, {x - 2, y - 10}, {x + 2, y - 10}};
        dc->Polygon(corners, 3);
    }
    dc->SelectObject(penBefore);
    dc->SelectObject(brushBefore);
}

namespace {

// One value of one sample.
void DrawValue(CMcuView& view, CDC* dc, int left, std::size_t i, std::size_t j) {
    const ExtraInfoRecord& record = List().m_ExtraInfos[i];
    const ExtraInfoRecord& next = List().m_ExtraInfos[i + 1];
    const auto least = static_cast<std::uint32_t>(List().m_ExtraMin[j]);
    const std::uint32_t span = static_cast<std::uint32_t>(List().m_ExtraMax[j]) - least;
    const std::uint32_t range = span > 1 ? span : 1;
    const auto row = [&](int value) {
        const std::uint32_t rise = (static_cast<std::uint32_t>(value) - least) *
                                   static_cast<std::uint32_t>(view.m_CanvasHeight) / range;
        return static_cast<int>(static_cast<std::uint32_t>(view.m_CanvasBottom) - rise);
    };
    if (view.m_CursorTime >= record.m_Time && view.m_CursorTime < next.m_Time)
        view.m_ExtraCursorValue[j] = static_cast<std::uint32_t>(record.m_Values[j]);
    CPen pen(PS_SOLID, 2, global_vesk_doc_ptr->m_ExtraColor.Lookup(static_cast<int>(j)));
    CPen* before = dc->SelectObject(&pen);
    std::int64_t to = X(view, next.m_Time, left);
    if (next.m_Time > view.m_TimeOffset + view.m_VisibleQbits || !InRange(to))
        to = left + static_cast<std::int64_t>(static_cast<double>(view.m_VisibleQbits) *
                                              static_cast<double>(view.m_PixelsPerQbit));
    Line(dc, X(view, record.m_Time, left), row(record.m_Values[j]), to, row(record.m_Values[j]));
    dc->LineTo(static_cast<int>(to), row(next.m_Values[j]));
    dc->SelectObject(before);
}

}  // namespace

void DrawExtraInfo(CMcuView& view, CDC* dc, int left) {
    const std::vector<ExtraInfoRecord>& records = List().m_ExtraInfos;
    if (List().m_ExtraInfoNum == 0) return;
    const auto values = static_cast<std::size_t>(List().m_ExtraInfoNum);
    for (int i = view.m_ExtraFirst; i < view.m_ExtraLast; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (!InRange(X(view, records[at].m_Time, left))) break;
        if (at + 1 == records.size()) continue;
        for (std::size_t j = 0; j < values; ++j)
            if (view.m_ExtraShown[j]) DrawValue(view, dc, left, at, j);
    }
    if (records.empty()) return;
    for (std::size_t j = 0; j < values; ++j) {
        const auto take = [&](const ExtraInfoRecord& record) {
            view.m_ExtraCursorValue[j] = static_cast<std::uint32_t>(record.m_Values[j]);
        };
        if (view.m_CursorTime < records.front().m_Time) take(records.front());
        if (view.m_CursorTime >= records.back().m_Time) take(records.back());
    }
}

}  // namespace vesk::plain
