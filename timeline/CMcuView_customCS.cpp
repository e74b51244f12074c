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
using vesk::TimeScale;

namespace {

// Walks the calls of a view for their function's lane.
class CallWalk {
public:
    CallWalk(const CallIndex& index, vesk::CallWave& wave, const TimeScale& scale,
             const vesk::CallColumns& columns)
        : m_Index(index),
          m_Wave(wave),
          m_Scale(scale),
          m_Columns(columns),
          m_FirstLength(TimeScale{0, scale.m_PixelsPerQbit, 0}.FirstTimeAt(1)) {}

    // Calls [first, last). The first one of all has no edge at the left edge, so that the next is
    // to be drawn as well.
    void Take(int first, int last) {
        const int leading =
            m_Index.IsAscending() ? m_Index.FirstFrom(first, last, m_Scale.m_Offset) : last;
        if (!TakeAll(first, leading)) return;
        if (leading == first && first < last && !Take(first++)) return;
        first = std::max(first, leading);
        if (first == last || !TakeNext(first, last)) return;
        if (first < last && !TakeKnown(first, last)) return;
        while (first < last && TakeNext(first, last)) {
        }
    }

private:
    std::uint64_t StartOf(int call) const {
        return m_Index.Calls()[static_cast<std::size_t>(call)].m_StartTime;
    }
    bool Take(int call) {
        return m_Wave.Take(m_Index.Calls()[static_cast<std::size_t>(call)], m_Index.EndOf(call));
    }
    bool TakeAll(int first, int last) {
        while (first < last && Take(first)) ++first;
        return first == last;
    }

    // All calls of the column that the first one starts in. Moves on to the next.
    bool TakeNext(int& first, int last) {
        const std::int64_t x = m_Scale.PixelAt(StartOf(first));
        if (x > INT32_MAX) return false;
        const int next = m_Index.FirstFrom(first, last, m_Columns.StartOf(x + 1));
        const bool isVisible = TakeColumn(static_cast<int>(x), first, next);
        first = next;
        return isVisible;
    }

    // The columns before that of the last call. Calls that lie within theirs need no look.
    bool TakeKnown(int& first, int last) {
        const std::int64_t lastX = m_Scale.PixelAt(StartOf(last - 1));
        const auto begin = m_Scale.PixelAt(StartOf(first));
        if (!m_Columns.Has(begin) || !m_Columns.Has(lastX)) return true;
        for (int x = static_cast<int>(begin); x < lastX; ++x) {
            if (!m_Columns.HasCalls(x, m_Index.Function())) continue;
            if (m_Columns.ReachOut(x, m_Index.Function())) {
                first = m_Index.FirstFrom(first, last, m_Columns.StartOf(x));
                if (!TakeNext(first, last)) return false;
            } else if (!m_Wave.Column(x, m_Columns.StartOf(x + 1) - 1)) {
                return false;
            }
        }
        first = m_Index.FirstFrom(first, last, m_Columns.StartOf(lastX));
        return true;
    }

    // The first call has its edge, and those that fill a pixel are drawn. The others show nothing
    // more.
    bool TakeColumn(int x, int first, int last) {
        if (!Take(first)) return false;
        const std::uint64_t start = StartOf(first);
        if (++first == last) return true;
        const bool isSimple = m_Scale.Length(StartOf(last - 1) - start) == 0 &&
                              m_Index.FollowEachOther(first, last - 1);
        const auto skip = [&](std::uint64_t latestEnd) { m_Wave.Skip(x, latestEnd); };
        if (isSimple) {
            if (last - first > 1) skip(m_Index.EndOf(last - 2));
            return Take(last - 1);
        }
        const std::uint64_t pixel =
            UINT64_MAX - start > m_FirstLength ? start + m_FirstLength : UINT64_MAX;
        return m_Index.Sweep(first, last, pixel, skip, [&](int call) { return Take(call); });
    }

    const CallIndex& m_Index;
    vesk::CallWave& m_Wave;
    const TimeScale m_Scale;
    const vesk::CallColumns& m_Columns;
    const std::uint64_t m_FirstLength;  // the least span of time that fills a pixel
};

// Draws the slices of a view on the strip of all functions.
class SlicePainter : public vesk::SliceTexts {
public:
    SlicePainter(CDC* dc, const TimeScale& scale, int right, std::uint64_t viewEnd, int height,
                 int y, const McuJobList& list)
        : m_Scale(scale), m_ViewEnd(viewEnd), m_Blocks(dc, scale, right, height, y) {
        for (const auto& [name, calls] : list.m_CustomJobsCS) m_Names.push_back(&name);
    }

    void Draw(const std::vector<vesk::Slice>& slices, bool followEachOther) {
        m_FollowEachOther = followEachOther;
        std::vector<vesk::ColumnRun> runs;
        vesk::FindColumnRuns(
            m_Scale, 0, static_cast<int>(slices.size()),
            [&](int i) { return slices[static_cast<std::size_t>(i)].m_Start; }, runs);
        for (const vesk::ColumnRun& run : runs)
            if (!DrawRun(slices.data() + run.m_First, slices.data() + run.m_Last, run.m_X)) return;
    }
    bool HasDots(const vesk::Slice& slice) override {
        return m_Blocks.HasDots(slice.m_Function, NameOf(slice));
    }
    bool HasOnlyDots(const vesk::Slice& slice) override {
        return m_Blocks.HasOnlyDots(BlockOf(slice));
    }

private:
    // False beyond what can be seen.
    bool Draw(const vesk::Slice& slice) {
        if (slice.m_Start > m_ViewEnd || slice.m_End < m_Scale.m_Offset) return true;
        return m_Blocks.Draw(BlockOf(slice));
    }
    vesk::FunctionBlock BlockOf(const vesk::Slice& slice) const {
        const std::uint64_t start = std::max(slice.m_Start, m_Scale.m_Offset);
        const bool begins = (slice.m_Flags & kBeganAtEntry) != 0 && slice.m_Start == start;
        const bool ends = (slice.m_Flags & kClosedLastCall) != 0 && slice.m_End <= m_ViewEnd;
        return {slice.m_Function, &NameOf(slice), start, slice.m_End, begins, ends};
    }
    // Of slices that lie within a column only the last text can show; the dots of all cover each
    // other.
    bool DrawRun(const vesk::Slice* first, const vesk::Slice* last, int x) {
        const bool isWithin = m_FollowEachOther && first->m_Start >= m_Scale.m_Offset &&
                              last[-1].m_Start <= m_ViewEnd &&
                              m_Scale.Length(last[-1].m_Start - first->m_Start) == 0;
        if (isWithin) {
            if (!HasOnlyDots(last[-1])) DrawDots(first, last - 1, x);
            first = last - 1;
        }
        return std::all_of(first, last, [this](const vesk::Slice& slice) { return Draw(slice); });
    }

    // Those of the last one that has any.
    void DrawDots(const vesk::Slice* first, const vesk::Slice* last, int x) {
        while (last > first && !HasDots(last[-1])) --last;
        if (last > first) m_Blocks.DrawDots(last[-1].m_Function, NameOf(last[-1]), x);
    }

    const std::string& NameOf(const vesk::Slice& slice) const {
        return *m_Names[static_cast<std::size_t>(slice.m_Function)];
    }

    const TimeScale m_Scale;
    const std::uint64_t m_ViewEnd;
    bool m_FollowEachOther = false;
    vesk::FunctionStrip m_Blocks;
    std::vector<const std::string*> m_Names;  // of the functions
};

}  // namespace

void CMcuView::DrawCustomJobListCS(CDC* dc, int height, int left, int y) {
    const vesk::SavedDrawing saved(dc);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    const std::uint64_t viewEnd = m_TimeOffset + m_VisibleQbits;
    SlicePainter painter(dc, scale, CanvasRight(), viewEnd, height, y, Jobs());
    vesk::SliceIndex& index = Index().Custom().Slices(Index().Jobs());
    const std::vector<vesk::Slice>& slices = index.Show(
        {scale, viewEnd, m_JobFirst, m_JobLast, m_CustomCSFirst, m_CustomCSLast}, painter);
    painter.Draw(slices, index.FollowEachOther());
}

void CMcuView::DrawCustomJobCS(CDC* dc, std::string name, int left, int y, int first, int last) {
    CallIndex* index = Index().Custom().Calls(name);
    if (!index) return;
    const vesk::SavedDrawing saved(dc);
    const COLORREF color = vesk::FunctionColor(name);
    CPen pen(PS_SOLID, 1, color);
    CBrush brush(color);
    dc->SelectObject(&pen);
    dc->SelectObject(&brush);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    vesk::CallWave wave(dc, scale, left, CanvasRight(), y, color);
    const std::uint64_t latest = index->LatestRecordedEnd(first, m_TimeOffset);
    if (latest > 0) wave.BeginHigh(latest);
    vesk::CallColumns& columns = Index().Custom().Columns();
    columns.Show(Index().Custom().Order(), scale, CanvasRight());
    CallWalk(*index, wave, scale, columns).Take(first, last);
    wave.Finish();
    vesk::DrawFunctionLabel(dc, name, left, y);
}
