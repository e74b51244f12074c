#include "tests/timeline/PlainCustom.h"

#include <algorithm>
#include <vector>

#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "timeline/CMcuView.h"
#include "timeline/TextFit.h"

namespace vesk {

namespace {

constexpr std::int64_t kGreatest = INT32_MAX;

COLORREF ColorOf(const std::string& name) {
    return global_vesk_doc_ptr ? global_vesk_doc_ptr->m_CustomColor.Lookup(ColorKey(name)) : 0;
}

std::uint64_t EndOf(const std::vector<McuJob>& records, std::size_t i) {
    if (records[i].m_EndTime > records[i].m_StartTime) return records[i].m_EndTime;
    if (i + 1 < records.size()) return records[i + 1].m_StartTime;
    return vesk_dll_shared_data.m_pJobList->m_EndTime;
}

// Pen, brush and text colour as they were found.
class Kept {
public:
    explicit Kept(CDC* dc) : m_DC(dc), m_Text(dc->GetTextColor()) {
        m_Pen = dc->SelectObject(static_cast<CPen*>(nullptr));
        m_Brush = dc->SelectObject(static_cast<CBrush*>(nullptr));
    }
    ~Kept() {
        m_DC->SelectObject(m_Pen);
        m_DC->SelectObject(m_Brush);
        m_DC->SetTextColor(m_Text);
    }

private:
    CDC* m_DC;
    CPen* m_Pen;
    CBrush* m_Brush;
    COLORREF m_Text;
};

void Triangle(CDC* dc, std::int64_t x, int axis, int width) {
    const int at = static_cast<int>(x);
    const CPoint corners[] = {{at + width, axis}, {at, axis + 5}, {at, axis - 5}};
    dc->Polygon(corners, 3);
}

void StartTriangle(CDC* dc, std::int64_t x, int axis) {
    Triangle(dc, x, axis, 5);
}

void EndTriangle(CDC* dc, std::int64_t x, int axis) {
    Triangle(dc, x, axis, -5);
}

void Move(CDC* dc, std::int64_t x, int y) {
    dc->MoveTo(static_cast<int>(x), y);
}

void Line(CDC* dc, std::int64_t x, int y) {
    dc->LineTo(static_cast<int>(x), y);
}

void Stroke(CDC* dc, std::int64_t x, int y) {
    Move(dc, x, y - 15);
    Line(dc, x, y - 5);
}

void Label(CDC* dc, const std::string& name, int left, int y) {
    dc->TextOut((left - dc->GetTextExtent(name).cx) / 2, y - 15, name);
}

void BlockText(CDC* dc, const std::string& name, COLORREF color, int x, int w, int y) {
    dc->SetTextColor(TextColorOn(color));
    const int width = dc->GetTextExtent(name).cx;
    if (w <= width) {
        dc->TextOut(x, y, FitText(*dc, name, w));
    } else {
        dc->TextOut(x + (w - width) / 2, y, name);
    }
}

// Steps 2 to 6 of a strip. False ends the loop.
bool Block(CMcuView& view, CDC* dc, int h, int y, const std::string& name, std::uint64_t s,
           std::uint64_t e, bool startMark, bool endMark) {
    const std::int64_t wide = view.Scale().PixelAt(s);
    if (wide < 0 || wide > kGreatest) return false;
    const int x = static_cast<int>(wide);
    const int room = view.CanvasRight() - x;
    const std::int64_t length = e < s ? 0 : view.Scale().Length(e - s);
    const int w = length > kGreatest ? room : std::min(static_cast<int>(length), room);
    const COLORREF color = ColorOf(name);
    dc->FillSolidRect(x + 1, y - h, w, h, color);
    dc->SetBkColor(0xFFFFFF);
    if (startMark && endMark && w < 10) startMark = endMark = false;
    if ((startMark || endMark) && w < 5) startMark = endMark = false;
    const COLORREF dark = RGB(GetRValue(color) >> 1, GetGValue(color) >> 1, GetBValue(color) >> 1);
    CPen pen(PS_SOLID, 1, dark);
    CBrush brush(dark);
    const Kept kept(dc);
    dc->SelectObject(&pen);
    dc->SelectObject(&brush);
    const int axis = y - h * 3 / 4;
    if (startMark) {
        StartTriangle(dc, x, axis);
        dc->MoveTo(x, y);
        dc->LineTo(x, y - h);
    }
    if (endMark) {
        EndTriangle(dc, x + w, axis);
        dc->MoveTo(x + w, y);
        dc->LineTo(x + w, y - h);
    }
    BlockText(dc, name, color, x, w, y - h / 2 - 10);
    return true;
}

}  // namespace

void PlainCustomJobList(CMcuView& view, CDC* dc, int height, int, int y) {
    const std::vector<McuJob>& records = vesk_dll_shared_data.m_pJobList->m_CustomJobs;
    for (int i = view.m_CustomFirst; i < view.m_CustomLast; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const McuJob& job = records[at];
        const std::uint64_t s = std::max(job.m_StartTime, view.m_TimeOffset);
        const std::uint64_t e = EndOf(records, at);
        if (e < view.m_TimeOffset) continue;
        const bool startMark = (job.m_Flags & 1) && job.m_StartTime == s;
        const bool endMark =
            (job.m_Flags & 2) && job.m_EndTime == e && e <= view.m_TimeOffset + view.m_VisibleQbits;
        if (!Block(view, dc, height, y, job.m_Name, s, e, startMark, endMark)) break;
    }
}

void PlainCustomJob(CMcuView& view, CDC* dc, const std::string& name, int left, int y) {
    const std::vector<McuJob>& records = vesk_dll_shared_data.m_pJobList->m_CustomJobs;
    const TimeScale scale = view.Scale();
    const std::int64_t right = view.CanvasRight();
    const Kept kept(dc);
    CPen pen(PS_SOLID, 1, ColorOf(name));
    CBrush brush(ColorOf(name));
    dc->SelectObject(&pen);
    dc->SelectObject(&brush);
    bool high = false;
    for (int i = view.m_CustomFirst - 1; i >= 0; --i) {
        const McuJob& job = records[static_cast<std::size_t>(i)];
        if (job.m_Name != name) continue;
        high = !(job.m_Flags & 4);
        break;
    }
    std::int64_t cx = left;
    for (int i = view.m_CustomFirst; i < view.m_CustomLast; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const McuJob& job = records[at];
        const std::uint64_t s = std::max(job.m_StartTime, view.m_TimeOffset);
        const std::uint64_t e = EndOf(records, at);
        const bool mine = job.m_Name == name;
        if (e < view.m_TimeOffset) {
            if (mine) high = !(job.m_Flags & 4);
            continue;
        }
        const int level = high ? y - 15 : y - 5;
        if (!mine) {
            const std::int64_t xe = scale.PixelAt(e);
            const std::int64_t length = xe > kGreatest ? right - cx : std::min(xe - cx, right - cx);
            Move(dc, cx, level);
            Line(dc, cx + length, level);
            cx += length;
            continue;
        }
        const std::int64_t xs = scale.PixelAt(s);
        if (xs < 0 || xs > kGreatest) break;
        std::int64_t w = e < s ? 0 : scale.Length(e - s);
        if (w > kGreatest) w = right - xs;
        const bool ends = job.m_Flags & 2;
        bool startMark = false;
        bool endMark = false;
        Move(dc, cx, level);
        Line(dc, xs, level);
        if (!(job.m_Flags & 1)) {
            Move(dc, xs, y - 15);
            if (w <= right - xs) {
                Line(dc, xs + w, y - 15);
                cx = xs + w;
                if (ends) {
                    Line(dc, xs + w, y - 5);
                    endMark = w >= 5;
                }
            } else {
                Line(dc, right, y - 15);
                cx = right;
            }
        } else {
            startMark = job.m_StartTime >= view.m_TimeOffset;
            if (xs > left) Stroke(dc, xs, y);
            Move(dc, xs, y - 15);
            if (w <= right - xs) {
                Line(dc, xs + w, y - 15);
                cx = xs + w;
                if (!ends) {
                    if (w < 5) startMark = false;
                } else {
                    Line(dc, xs + w, y - 5);
                    endMark = true;
                    if (w < 10) startMark = endMark = false;
                }
            } else {
                Line(dc, right, y - 15);
                cx = right;
                if (w < 5) startMark = false;
            }
        }
        high = !(job.m_Flags & 4);
        if (startMark) StartTriangle(dc, xs, y - 10);
        if (endMark) EndTriangle(dc, cx, y - 10);
    }
    Move(dc, cx, high ? y - 15 : y - 5);
    Line(dc, right, high ? y - 15 : y - 5);
    Label(dc, name, left, y);
}

void PlainCustomJobCS(CMcuView& view, CDC* dc, const std::string& name, int left, int y, int first,
                      int last) {
    const auto& lanes = vesk_dll_shared_data.m_pJobList->m_CustomJobsCS;
    const auto lane = lanes.find(name);
    if (lane == lanes.end()) return;
    const std::vector<McuJob>& calls = lane->second;
    const TimeScale scale = view.Scale();
    const std::int64_t right = view.CanvasRight();
    const Kept kept(dc);
    CPen pen(PS_SOLID, 1, ColorOf(name));
    CBrush brush(ColorOf(name));
    dc->SelectObject(&pen);
    dc->SelectObject(&brush);
    std::uint64_t prevEnd = 0;
    bool active = false;
    for (int i = first - 1; i >= 0; --i) {
        const McuJob& call = calls[static_cast<std::size_t>(i)];
        if (call.m_EndTime <= view.m_TimeOffset) continue;
        active = true;
        prevEnd = std::max(prevEnd, call.m_EndTime);
    }
    std::int64_t cx = left;
    for (int i = first; i < last; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const std::uint64_t s = std::max(calls[at].m_StartTime, view.m_TimeOffset);
        const std::uint64_t e = std::max(EndOf(calls, at), view.m_TimeOffset);
        const std::int64_t xs = scale.PixelAt(s);
        const std::int64_t xp = scale.PixelAt(prevEnd);
        if (xs < 0 || xs > kGreatest || xp < 0 || xp > kGreatest) break;
        std::int64_t w = e < s ? 0 : scale.Length(e - s);
        if (w > kGreatest) w = right - xs;
        bool startMark = calls[at].m_StartTime >= view.m_TimeOffset;
        bool endMark = false;
        if (i == first && active) {
            Move(dc, left, y - 15);
            Line(dc, xp, y - 15);
            EndTriangle(dc, xp, y - 10);
            if (xs > left) Stroke(dc, xs, y);
        } else if (i == first) {
            Move(dc, left, y - 5);
            Line(dc, xs, y - 5);
            if (xs > left) Stroke(dc, xs, y);
        } else {
            Move(dc, xp, y - 5);
            if (s < prevEnd) {
                startMark = endMark = true;
            } else {
                Line(dc, xs, y - 5);
            }
            Stroke(dc, xs, y);
        }
        Move(dc, xs, y - 15);
        if (w <= right - xs) {
            cx = xs + w;
            Line(dc, cx, y - 15);
            Line(dc, cx, y - 5);
            endMark = true;
            if (w < 10) startMark = endMark = false;
        } else {
            cx = right;
            Line(dc, right, y - 15);
            if (i == first && w < 5) startMark = false;
        }
        prevEnd = std::max(prevEnd, e);
        if (startMark) StartTriangle(dc, xs, y - 10);
        if (endMark) EndTriangle(dc, cx, y - 10);
    }
    if (prevEnd < view.m_TimeOffset || scale.PixelAt(prevEnd) < right) {
        Move(dc, cx, y - 5);
        Line(dc, right, y - 5);
    }
    Label(dc, name, left, y);
}

void PlainMerge(PlainSlices& merged, PlainSlices call, std::uint64_t begin, std::uint64_t end) {
    const auto piece = [](const McuJob& of, std::uint64_t from, std::uint64_t to, int mask) {
        McuJob cut = of;
        cut.m_StartTime = from;
        cut.m_EndTime = to;
        cut.m_Flags = static_cast<std::uint8_t>(of.m_Flags & mask);
        return cut;
    };
    const auto enter = [](PlainSlices& slices, const McuJob& slice) {
        slices.emplace(slice.m_StartTime, slice);
    };
    for (auto at = call.begin(); at != call.end();) {
        McuJob n = at->second;
        if (n.m_StartTime > end || n.m_EndTime < begin) {
            ++at;
            continue;
        }
        const auto become = [&](const McuJob& rest) {
            call.erase(n.m_StartTime);
            enter(call, rest);
            n = rest;
        };
        bool left = false;  // n has left its call
        for (auto it = merged.begin(); it != merged.end() && !left;) {
            const McuJob o = it->second;
            if (o.m_EndTime <= n.m_StartTime || n.m_EndTime <= o.m_StartTime) {
                ++it;
                continue;
            }
            const bool earlierStart = o.m_StartTime < n.m_StartTime;
            const bool sameStart = o.m_StartTime == n.m_StartTime;
            const bool laterEnd = o.m_EndTime > n.m_EndTime;
            const bool sameEnd = o.m_EndTime == n.m_EndTime;
            if (earlierStart && laterEnd) {
                it = merged.erase(it);
                enter(merged, piece(o, o.m_StartTime, n.m_StartTime, 1));
                enter(merged, piece(o, n.m_EndTime, o.m_EndTime, 4));
            } else if (earlierStart) {
                it = merged.erase(it);
                enter(merged, piece(o, o.m_StartTime, n.m_StartTime, 255));
            } else if (laterEnd) {
                it = merged.erase(it);
                enter(merged, piece(o, n.m_EndTime, o.m_EndTime, 255));
            } else if (sameStart && sameEnd) {
                if (o.m_Flags == 0 && n.m_Flags != 0) {
                    it = merged.erase(it);
                } else {
                    call.erase(n.m_StartTime);
                    left = true;
                }
            } else if (sameStart) {
                become(piece(n, o.m_EndTime, n.m_EndTime, 255));
                ++it;
            } else if (sameEnd) {
                become(piece(n, n.m_StartTime, o.m_StartTime, 255));
                ++it;
            } else {
                const McuJob whole = n;
                become(piece(whole, o.m_EndTime, whole.m_EndTime, 4));
                enter(call, piece(whole, whole.m_StartTime, o.m_StartTime, 1));
                ++it;
            }
        }
        at = call.upper_bound(n.m_StartTime);
    }
    merged.insert(call.begin(), call.end());
}

void PlainCustomJobListCS(CMcuView& view, CDC* dc, int height, int, int y) {
    const McuJobList& list = *vesk_dll_shared_data.m_pJobList;
    const std::uint64_t begin = view.m_TimeOffset;
    const std::uint64_t end = view.m_TimeOffset + view.m_VisibleQbits;
    PlainSlices merged;
    std::size_t k = 0;
    for (const auto& [name, calls] : list.m_CustomJobsCS) {
        for (int i = view.m_CustomCSFirst[k]; i < view.m_CustomCSLast[k]; ++i) {
            const McuJob& call = calls[static_cast<std::size_t>(i)];
            const std::uint64_t callEnd = EndOf(calls, static_cast<std::size_t>(i));
            if (callEnd <= call.m_StartTime) continue;
            int index = 0;
            McuJob running;
            list.Search(call.m_StartTime, index);
            if (!list.GetJob(index, running)) continue;
            if (call.m_StartTime < running.m_StartTime || call.m_StartTime >= running.m_EndTime)
                continue;
            PlainSlices slices;
            list.DurationTotalCustomJobCS(slices, running.m_Name, name, call.m_StartTime, callEnd,
                                          call.m_Flags & 4);
            PlainMerge(merged, std::move(slices), begin, end);
        }
        ++k;
    }
    for (const auto& [start, slice] : merged) {
        if (start > end || slice.m_EndTime < begin) continue;
        const std::uint64_t s = std::max(start, begin);
        const bool startMark = (slice.m_Flags & 1) && start == s;
        const bool endMark = (slice.m_Flags & 4) && slice.m_EndTime <= end;
        if (!Block(view, dc, height, y, slice.m_Name, s, slice.m_EndTime, startMark, endMark))
            break;
    }
}

}  // namespace vesk
