// The three x axes and the frame numbers. What a walk over all visible jobs would draw is drawn
// here column by column: in one column all lines coincide, and of the labels at most one fits a
// row.
#include <algorithm>
#include <array>
#include <functional>
#include <string>
#include <vector>

#include "log/McuJobList.h"
#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "platform/Text.h"
#include "timeline/AxisIndex.h"
#include "timeline/CMcuView.h"
#include "timeline/JobStripIndex.h"
#include "timeline/NeighbourColumns.h"
#include "timeline/SavedDrawing.h"
#include "timeline/Ticks.h"
#include "timeline/TimelineIndex.h"

namespace {

constexpr COLORREF kBoundaryInk = 0xB4B4B4;
constexpr COLORREF kFrameInk = 0x963C32;
constexpr int kLineTop = 30;
constexpr int kLabelGap = 2;

void VerticalLine(CDC* dc, int x, int top, int bottom) {
    dc->MoveTo(x, top);
    dc->LineTo(x, bottom);
}

// --- Axes of regular steps -----------------------------------------------------------------------

using LabelOf = std::function<std::string(std::uint64_t time)>;

void DrawMinorTicks(CDC* dc, const vesk::MinorTicks& ticks, int left, int y) {
    dc->MoveTo(left, y);
    dc->LineTo(ticks.m_LineEnd, y);
    for (const int x : ticks.m_At) VerticalLine(dc, x, y, y + 5);
}

void DrawMajorTicks(CDC* dc, const std::vector<vesk::MajorTick>& ticks, int y,
                    const LabelOf& labelOf) {
    for (const vesk::MajorTick& tick : ticks) {
        VerticalLine(dc, static_cast<int>(tick.m_X), y - 3, y + 10);
        const std::string label = labelOf(tick.m_Time);
        const int half = dc->GetTextExtent(label).cx / 2;
        dc->TextOut(static_cast<int>(tick.m_X - half), y + 10, label);
    }
}

void DrawArrowAndCaption(CDC* dc, int right, int y, const std::string& caption) {
    const vesk::SavedDrawing saved(dc);
    CBrush black(0);
    dc->SelectObject(&black);
    const CPoint arrow[] = {{right + 10, y}, {right, y - 5}, {right, y + 5}};
    dc->Polygon(arrow, 3);
    dc->TextOut(right - dc->GetTextExtent(caption).cx, y + 30, caption);
}

// --- Room for labels -----------------------------------------------------------------------------

// Labels of one row, centred on ascending columns.
struct LabelRow {
    int m_Y;
    int m_End;  // where the last label ends

    // A label fits if it is at most so wide; negative if none fits.
    std::int64_t WidestAt(int x) const { return 2 * (std::int64_t{x} - m_End - kLabelGap) + 1; }

    void Draw(CDC* dc, int x, const std::string& label, int width) {
        const int left = x - width / 2;
        dc->TextOut(left, m_Y, label);
        m_End = left + width;
    }
};

// The narrowest digit: a number is at least as wide as its digits at that width.
int LeastDigitWidth(const CDC* dc) {
    int least = dc->GetTextExtent("0").cx;
    for (char digit = '1'; digit <= '9'; ++digit)
        least = std::min(least, dc->GetTextExtent({&digit, 1}).cx);
    return std::max(least, 1);
}

constexpr int kMostDigits = 20;

// Draws numbers of jobs as labels, at most one per row and column.
class LabelWriter {
public:
    LabelWriter(CDC* dc, const vesk::DigitPyramid& digits, std::function<std::string(int)> textOf)
        : m_Dc(dc),
          m_Digits(digits),
          m_TextOf(std::move(textOf)),
          m_DigitWidth(LeastDigitWidth(dc)) {}

    // Labels column x with the first of jobs [first, last) whose number counts and fits the widest
    // of some open rows. The job after it; last if none fits.
    template <class Rows>
    int DrawFirst(int x, int first, int last, Rows& rows) {
        std::int64_t widest = 0;
        for (const LabelRow& row : rows) widest = std::max(widest, row.WidestAt(x));
        const auto most =
            static_cast<int>(std::min<std::int64_t>(widest / m_DigitWidth, kMostDigits));
        if (most == 0) return last;
        while ((first = m_Digits.FirstAtMost(first, last, most)) < last) {
            const std::string label = m_TextOf(first++);
            const int width = m_Dc->GetTextExtent(label).cx;
            for (LabelRow& row : rows) {
                if (width > row.WidestAt(x)) continue;
                row.Draw(m_Dc, x, label, width);
                return first;
            }
        }
        return last;
    }

private:
    CDC* m_Dc;
    const vesk::DigitPyramid& m_Digits;
    std::function<std::string(int)> m_TextOf;
    int m_DigitWidth;
};

// --- Frame lines ---------------------------------------------------------------------------------

// Vertical lines 2 pixels wide. Far zoomed out every column has one: lines side by side leave no
// gap between them at any scale, so the first, the last and a filled rectangle are the same
// picture.
void DrawFrameLines(CDC* dc, CPen& pen, const CRect& lines) {
    dc->SelectObject(&pen);
    VerticalLine(dc, lines.left, lines.top, lines.bottom);
    if (lines.right == lines.left) return;
    dc->FillSolidRect(lines, kFrameInk);
    VerticalLine(dc, lines.right, lines.top, lines.bottom);
}

// --- Visible jobs --------------------------------------------------------------------------------

const McuJob& JobAt(int i) {
    return CMcuView::Jobs()[static_cast<std::size_t>(i)];
}

// The visible jobs by pixel column, those left aside that start before the left edge.
const std::vector<vesk::RecordColumn>& VisibleColumns(CMcuView& view) {
    vesk::JobStripIndex& index = view.Index().Jobs();
    index.Show(view.Scale(), view.m_JobFirst, view.m_JobLast);
    return index.Columns();
}

// The first visible job that starts right of the left edge: only from there on jobs are marked.
int FirstMarkedJob(const CMcuView& view) {
    const McuJob* jobs = CMcuView::Jobs().data();
    const McuJob* found = std::partition_point(
        jobs + view.m_JobFirst, jobs + view.m_JobLast,
        [&view](const McuJob& job) { return job.m_StartTime <= view.m_TimeOffset; });
    return static_cast<int>(found - jobs);
}

// The log's end can lie left of its last job. If that job has no end of its own, it ends before the
// view and bounds nothing.
int EndOfFrameWalk(const CMcuView& view) {
    const McuJobList& jobs = CMcuView::Jobs();
    if (view.m_JobFirst == view.m_JobLast || view.m_JobLast != jobs.GetSize())
        return view.m_JobLast;
    const McuJob& last = jobs.back();
    const std::uint64_t end = last.m_EndTime > last.m_StartTime ? last.m_EndTime : jobs.m_EndTime;
    return end < view.m_TimeOffset ? view.m_JobLast - 1 : view.m_JobLast;
}

}  // namespace

// --- Axes of regular steps -----------------------------------------------------------------------

void CMcuView::DrawXAxis_Clock(CDC* dc, int width, int left, int bottom) {
    const auto base = static_cast<std::uint64_t>(std::max(m_ClockBase, 1));
    const LabelOf labelOf = [base](std::uint64_t time) {
        return vesk::FormatText("%lld", static_cast<long long>(time / base));
    };
    const vesk::TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    const std::uint64_t lastTime = m_TimeOffset + m_VisibleQbits;
    const int labelWidth = dc->GetTextExtent(labelOf(lastTime)).cx;
    const std::uint64_t minor = vesk::MinorTickStep(m_PixelsPerQbit);
    const std::uint64_t major =
        vesk::MajorTickStep(m_PixelsPerQbit, labelWidth, std::max(minor, base), 5);
    DrawMinorTicks(dc, vesk::FindMinorTicks(scale, minor, lastTime, left + width), left, bottom);
    DrawMajorTicks(dc, vesk::FindMajorTicks(scale, major, lastTime, left + width), bottom, labelOf);
    DrawArrowAndCaption(dc, left + width, bottom, vesk::FormatText("QBit (x%d)", m_ClockBase));
}

void CMcuView::DrawXAxis_Time(CDC* dc, int width, int left, int bottom) {
    const LabelOf labelOf = [this](std::uint64_t time) {
        const auto milliseconds = static_cast<float>(vesk::Milliseconds(time));
        const auto shown = static_cast<float>(static_cast<double>(milliseconds) * m_TimeBase);
        return vesk::FormatText("%f", static_cast<double>(shown));
    };
    const vesk::TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    const std::uint64_t lastTime = m_TimeOffset + m_VisibleQbits;
    const int labelWidth = dc->GetTextExtent(labelOf(lastTime)).cx;
    const std::uint64_t minor = vesk::MinorTickStep(m_PixelsPerQbit);
    const std::uint64_t major = vesk::MajorTickStep(m_PixelsPerQbit, labelWidth, minor, minor);
    const vesk::Mantissa base = vesk::SplitBase(m_TimeBase);
    DrawMinorTicks(dc, vesk::FindMinorTicks(scale, minor, lastTime, left + width), left, bottom);
    DrawMajorTicks(dc, vesk::FindMajorTicks(scale, major, lastTime, left + width), bottom, labelOf);
    DrawArrowAndCaption(
        dc, left + width, bottom,
        vesk::FormatText("Execute Time (x1/%.1fE%lld ms)", static_cast<double>(base.m_Value),
                         static_cast<long long>(base.m_Exponent)));
}

// --- Marks at jobs -------------------------------------------------------------------------------

void CMcuView::DrawXAxis_Count(CDC* dc, int width, int left, int bottom) {
    LabelWriter labels(dc, Index().Axes().Counts(),
                       [](int i) { return vesk::FormatText("%u", JobAt(i).m_TimeCount); });
    std::array<LabelRow, 3> rows{{{bottom + 10, -1}, {bottom + 25, -1}, {bottom + 40, -1}}};
    const int firstMarked = FirstMarkedJob(*this);
    for (const vesk::RecordColumn& run : VisibleColumns(*this)) {
        int job = std::max(run.m_First, firstMarked);
        if (job >= run.m_Last) continue;
        VerticalLine(dc, run.m_X, bottom - 3, bottom + 10);
        while (job < run.m_Last) job = labels.DrawFirst(run.m_X, job, run.m_Last, rows);
    }
    dc->MoveTo(left, bottom);
    dc->LineTo(left + width, bottom);
}

// A boundary is hidden by a frame line of its column, but keeps its neighbours away all the same.
void CMcuView::DrawFrameNo(CDC* dc, int /*left*/) {
    if (!m_ShowDottedLine && !m_ShowFrameNo) return;
    const vesk::SavedDrawing saved(dc);
    CPen dots(PS_DOT, 1, kBoundaryInk);
    CPen frameInk(PS_SOLID, 2, kFrameInk);
    vesk::NeighbourColumns frameLines(true, [&](int first, int last) {
        DrawFrameLines(dc, frameInk, {first, kLineTop, last, m_CanvasBottom + 45});
    });
    dc->SetTextColor(kFrameInk);
    const vesk::DigitPyramid& newFrames = Index().Axes().NewFrames();
    LabelWriter labels(dc, newFrames, [](int i) {
        return vesk::FormatText("%ld", static_cast<long>(JobAt(i).m_TimeStamp));
    });
    std::array<LabelRow, 1> row{{{m_CanvasBottom + 55, 0}}};
    const int firstMarked = FirstMarkedJob(*this);
    const int end = EndOfFrameWalk(*this);
    int lastDots = -1;
    for (const vesk::RecordColumn& run : VisibleColumns(*this)) {
        const int x = run.m_X;
        const int first = std::max(run.m_First, firstMarked);
        const int last = std::min(run.m_Last, end);
        if (first >= last) continue;
        const bool hasDots = m_ShowDottedLine && x > lastDots + 1;
        if (hasDots) lastDots = x;
        if (m_ShowFrameNo && newFrames.HasAtMost(first, last, kMostDigits)) {
            frameLines.Add(x);
            labels.DrawFirst(x, first, last, row);
        } else if (hasDots) {
            frameLines.Flush();
            dc->SelectObject(&dots);
            VerticalLine(dc, x, kLineTop, m_CanvasBottom + 10);
        }
    }
    frameLines.Flush();
}
