// Functions by their calls: the strip of all of them, and one lane each.
#include <algorithm>

#include "log/McuJobList.h"
#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "timeline/CMcuView.h"
#include "timeline/CallWave.h"
#include "timeline/CustomIndex.h"
#include "timeline/FunctionMarks.h"
#include "timeline/FunctionStrip.h"
#include "timeline/SavedDrawing.h"
#include "timeline/TimelineIndex.h"

using vesk::CallIndex;
using vesk::RecordColumn;
using vesk::TimeScale;

namespace {

// Walks the calls of a view for their function's lane.
class CallWalk {
public:
    CallWalk(CallIndex& index, vesk::CallWave& wave, const TimeScale& scale)
        : m_Index(index),
          m_Wave(wave),
          m_Scale(scale),
          m_FirstLength(TimeScale{0, scale.m_PixelsPerQbit, 0}.FirstTimeAt(1)) {}

    // Calls [first, last).
    void Take(int first, int last) {
        std::vector<RecordColumn> columns;
        const int leading = m_Index.Order().FindColumns(m_Scale, first, last, columns);
        m_First = first;
        if (!TakeAll(first, first + leading)) return;
        for (const RecordColumn& column : columns)
            if (!TakeColumn(column)) return;
    }

private:
    bool Take(int call) {
        return m_Wave.Take(m_Index.Calls()[static_cast<std::size_t>(call)], m_Index.EndOf(call));
    }
    bool TakeAll(int first, int last) {
        while (first < last && Take(first)) ++first;
        return first == last;
    }

    // The first call of a column has its edge, and those of its calls that fill a pixel are drawn.
    // The others show nothing more. The first call of all has no edge at the left edge, though.
    bool TakeColumn(const RecordColumn& column) {
        const int drawn =
            std::min(column.m_First + (column.m_First == m_First ? 2 : 1), column.m_Last);
        if (!TakeAll(column.m_First, drawn)) return false;
        const std::uint64_t start =
            m_Index.Calls()[static_cast<std::size_t>(column.m_First)].m_StartTime;
        const std::uint64_t pixel =
            UINT64_MAX - start > m_FirstLength ? start + m_FirstLength : UINT64_MAX;
        for (int i = drawn; i < column.m_Last;) {
            const int next = column.m_IsSimple ? column.m_Last - 1
                                               : m_Index.FirstEndingFrom(i, column.m_Last, pixel);
            if (next > i) {
                const std::uint64_t end =
                    column.m_IsSimple ? m_Index.EndOf(next - 1) : m_Index.LatestEnd(i, next);
                m_Wave.Skip(column.m_X, end);
            }
            if (next < column.m_Last && !Take(next)) return false;
            i = next + 1;
        }
        return true;
    }

    CallIndex& m_Index;
    vesk::CallWave& m_Wave;
    const TimeScale m_Scale;
    const std::uint64_t m_FirstLength;  // the least span of time that fills a pixel
    int m_First = 0;
};

// Draws the slices of a view on the strip of all functions.
class SlicePainter {
public:
    SlicePainter(CDC* dc, const TimeScale& scale, int right, std::uint64_t viewEnd, int height,
                 int y, const McuJobList& list)
        : m_Scale(scale), m_ViewEnd(viewEnd), m_Blocks(dc, scale, right, height, y) {
        for (const auto& [name, calls] : list.m_CustomJobsCS) m_Names.push_back(&name);
    }

    void Draw(const vesk::SliceIndex& index) {
        if (DrawAll(index.Left()) && DrawWithin(index)) DrawAll(index.Right());
    }

private:
    // False beyond what can be seen.
    bool Draw(const vesk::Slice& slice) {
        if (slice.m_Start > m_ViewEnd || slice.m_End < m_Scale.m_Offset) return true;
        const std::uint64_t start = std::max(slice.m_Start, m_Scale.m_Offset);
        const bool begins = (slice.m_Flags & kBeganAtEntry) != 0 && slice.m_Start == start;
        const bool ends = (slice.m_Flags & kClosedLastCall) != 0 && slice.m_End <= m_ViewEnd;
        return m_Blocks.Draw({slice.m_Function, &NameOf(slice), start, slice.m_End, begins, ends});
    }
    bool DrawAll(const std::vector<vesk::Slice>& slices) {
        return std::all_of(slices.begin(), slices.end(),
                           [this](const vesk::Slice& slice) { return Draw(slice); });
    }

    bool DrawWithin(const vesk::SliceIndex& index) {
        std::vector<vesk::ColumnRun> runs;
        vesk::FindColumnRuns(
            m_Scale, index.WithinFirst(), index.WithinLast(),
            [&](int i) { return index.StartOf(i); }, runs);
        for (const vesk::ColumnRun& run : runs)
            if (!DrawRun(index, run)) return false;
        return true;
    }

    // Slices follow each other, so all of a column but the last lie within it. Of those only the
    // last text can show; the dots of all cover each other.
    bool DrawRun(const vesk::SliceIndex& index, const vesk::ColumnRun& run) {
        const int last = run.m_Last - 1;
        int first = run.m_First;
        if (m_Scale.Length(index.StartOf(last) - index.StartOf(first)) == 0) {
            int shown = last - 1;
            while (shown >= first && !HasDots(index.At(shown))) --shown;
            if (shown >= first) {
                const vesk::Slice slice = index.At(shown);
                m_Blocks.DrawDots(slice.m_Function, NameOf(slice), run.m_X);
            }
            first = last;
        }
        while (first <= last && Draw(index.At(first))) ++first;
        return first > last;
    }

    const std::string& NameOf(const vesk::Slice& slice) const {
        return *m_Names[static_cast<std::size_t>(slice.m_Function)];
    }
    bool HasDots(const vesk::Slice& slice) {
        return m_Blocks.HasDots(slice.m_Function, NameOf(slice));
    }

    const TimeScale m_Scale;
    const std::uint64_t m_ViewEnd;
    vesk::FunctionStrip m_Blocks;
    std::vector<const std::string*> m_Names;  // of the functions
};

}  // namespace

void CMcuView::DrawCustomJobListCS(CDC* dc, int height, int left, int y) {
    const vesk::SavedDrawing saved(dc);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    const std::uint64_t viewEnd = m_TimeOffset + m_VisibleQbits;
    vesk::SliceIndex& index = Index().Custom().Slices(Index().Jobs().Names());
    index.Show({m_CustomCSFirst, m_CustomCSLast, m_TimeOffset, viewEnd});
    SlicePainter(dc, scale, CanvasRight(), viewEnd, height, y, Jobs()).Draw(index);
}

void CMcuView::DrawCustomJobCS(CDC* dc, std::string name, int left, int y, int first, int last) {
    CallIndex* index = Index().Custom().Calls(name);
    if (!index) return;
    const vesk::SavedDrawing saved(dc);
    CPen pen(PS_SOLID, 1, vesk::FunctionColor(name));
    CBrush brush(vesk::FunctionColor(name));
    dc->SelectObject(&pen);
    dc->SelectObject(&brush);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    vesk::CallWave wave(dc, scale, left, CanvasRight(), y);
    const std::uint64_t latest = index->LatestRecordedEnd(first, m_TimeOffset);
    if (latest > 0) wave.BeginHigh(latest);
    CallWalk(*index, wave, scale).Take(first, last);
    wave.Finish();
    vesk::DrawFunctionLabel(dc, name, left, y);
}
