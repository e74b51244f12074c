// The stepped curves of the extra values.
#include <algorithm>
#include <climits>
#include <deque>

#include "host/VESKUIDoc.h"
#include "log/McuJobList.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "platform/RasterSurface.h"
#include "timeline/CMcuView.h"
#include "timeline/CurveIndex.h"
#include "timeline/SavedDrawing.h"
#include "timeline/StrokeCover.h"
#include "timeline/TimelineIndex.h"
#include "timeline/WaveLane.h"

using vesk::ColumnRun;
using vesk::CurveIndex;
using vesk::StrokeCover;
using vesk::TimeScale;

namespace {

using Samples = std::vector<ExtraInfoRecord>;

// One value's curve: its pen, and the row that a value lies on.
struct Curve {
    Curve(const CMcuView& view, int value, std::uint32_t least, std::uint32_t greatest,
          COLORREF color)
        : m_Value(value),
          m_Least(least),
          m_Range(greatest - least > 1 ? greatest - least : 1),
          m_Bottom(static_cast<std::uint32_t>(view.m_CanvasBottom)),
          m_Height(static_cast<std::uint32_t>(view.m_CanvasHeight)),
          m_Pen(PS_SOLID, 2, color) {}

    const int m_Value;
    const std::uint32_t m_Least;
    const std::uint32_t m_Range;
    const std::uint32_t m_Bottom;
    const std::uint32_t m_Height;
    CPen m_Pen;

    // Unsigned 32-bit steps: a range that is too large for them wraps.
    int RowOf(std::uint32_t value) const {
        return static_cast<int>(m_Bottom - (value - m_Least) * m_Height / m_Range);
    }
    int RowOf(const ExtraInfoRecord& sample) const { return RowOf(ValueOf(sample)); }
    std::uint32_t ValueOf(const ExtraInfoRecord& sample) const {
        return static_cast<std::uint32_t>(sample.m_Values[static_cast<std::size_t>(m_Value)]);
    }
    // Rows between which all values of a range lie.
    std::pair<std::int64_t, std::int64_t> RowsOf(const CurveIndex::Range&) const;

    // Whether no step between values of a range can show in the column at hand. Remembers the
    // widest range of which that is so: most questions are then answered without a division.
    bool IsHidden(const StrokeCover&, const CurveIndex::Range&);
    void NextColumn() { m_Hidden = {}; }

private:
    bool CanWrap(const CurveIndex::Range&) const;

    CurveIndex::Range m_Hidden;
};

bool Curve::CanWrap(const CurveIndex::Range& range) const {
    const std::uint64_t greatest = std::uint64_t{range.m_Greatest - m_Least} * m_Height;
    return range.m_Least < m_Least || greatest > UINT32_MAX;
}

bool Curve::IsHidden(const StrokeCover& cover, const CurveIndex::Range& range) {
    if (range.m_Least >= m_Hidden.m_Least && range.m_Greatest <= m_Hidden.m_Greatest) return true;
    const auto [top, bottom] = RowsOf(range);
    if (!cover.Holds(top, bottom)) return false;
    CurveIndex::Range both = m_Hidden;
    both.Widen(range);
    if (CanWrap(both)) return true;
    const auto [bothTop, bothBottom] = RowsOf(both);
    if (cover.Holds(bothTop, bothBottom)) m_Hidden = both;
    return true;
}

std::pair<std::int64_t, std::int64_t> Curve::RowsOf(const CurveIndex::Range& range) const {
    if (!CanWrap(range)) return {RowOf(range.m_Greatest), RowOf(range.m_Least)};
    // Some product wraps: any row that a quotient can lead to.
    const std::int64_t rise = UINT32_MAX / m_Range;
    if (rise > INT_MAX / 2) return {INT_MIN, INT_MAX};
    return {m_Bottom - rise, m_Bottom};
}

// Draws samples with their steps to the next one.
class CurvePainter {
public:
    CurvePainter(CDC* dc, const Samples& samples, const CurveIndex& index, const TimeScale& scale,
                 std::uint64_t visible)
        : m_DC(dc),
          m_Samples(samples),
          m_Index(index),
          m_Scale(scale),
          m_End(scale.m_Offset + visible),
          m_EndX(scale.m_Left + scale.Length(visible)),
          m_Cover(PaintedRows(*dc)),
          m_HasWholeRows(vesk::LinesAreAreas(*dc)) {}

    std::deque<Curve> m_Curves;

    // False beyond what can be seen.
    bool Draw(int sample);
    // The steps from samples [first, last) to the ones behind them, all in one column: only those
    // of which something shows.
    void DrawSteps(int x, int first, int last);
    void DrawColumn(const ColumnRun&);

private:
    struct Step {
        int m_From;
        int m_To;
        std::size_t m_Curve;
    };

    static StrokeCover PaintedRows(const CDC&);
    const ExtraInfoRecord& At(int sample) const {
        return m_Samples[static_cast<std::size_t>(sample)];
    }
    bool IsHidden(int level, int stretch);
    void FindSteps(int level, int stretch, int first, int last);
    void AddSteps(int sample);

    CDC* m_DC;
    const Samples& m_Samples;
    const CurveIndex& m_Index;
    const TimeScale m_Scale;
    const std::uint64_t m_End;
    const std::int64_t m_EndX;
    StrokeCover m_Cover;
    // At a whole scale a line of width 2 covers exactly the pixels on both sides of its place: what
    // shows of each step is painted as areas then, and no pixel twice.
    const bool m_HasWholeRows;
    int m_X = 0;
    std::vector<Step> m_Steps;  // of one column, the last one first
};

StrokeCover CurvePainter::PaintedRows(const CDC& dc) {
    CRect box;
    dc.GetClipBox(&box);
    return {box.top, box.bottom};
}

bool CurvePainter::Draw(int sample) {
    const std::int64_t pixel = m_Scale.PixelAt(At(sample).m_Time);
    if (pixel < 0 || pixel > INT32_MAX) return false;
    if (static_cast<std::size_t>(sample) + 1 == m_Samples.size()) return true;
    const ExtraInfoRecord& next = At(sample + 1);
    const std::int64_t nextX = m_Scale.PixelAt(next.m_Time);
    const bool isInside = next.m_Time <= m_End && nextX >= 0 && nextX <= INT32_MAX;
    const int to = vesk::ToCoordinate(isInside ? nextX : m_EndX);
    for (Curve& curve : m_Curves) {
        const int row = curve.RowOf(At(sample));
        m_DC->SelectObject(&curve.m_Pen);
        m_DC->MoveTo(static_cast<int>(pixel), row);
        m_DC->LineTo(to, row);
        m_DC->LineTo(to, curve.RowOf(next));
    }
    return true;
}

void CurvePainter::DrawColumn(const ColumnRun& column) {
    const int last = column.m_Last - 1;
    if (At(last).m_Time <= m_End) {
        DrawSteps(column.m_X, column.m_First, last);
        Draw(last);
    } else {
        for (int i = column.m_First; i < column.m_Last; ++i) Draw(i);
    }
}

// From the last step back, over the longest stretches that fit the column.
void CurvePainter::DrawSteps(int x, int first, int last) {
    if (first >= last) return;
    m_X = x;
    m_Cover.Clear();
    m_Steps.clear();
    for (Curve& curve : m_Curves) curve.NextColumn();
    int level = 0;
    while (level + 1 < m_Index.Levels() && CurveIndex::StepsAt(level + 1) <= last - first) ++level;
    const int size = CurveIndex::StepsAt(level);
    for (int i = (last - 1) / size; i >= first / size; --i) FindSteps(level, i, first, last);
    for (std::size_t i = m_Steps.size(); i-- > 0;) {
        m_DC->SelectObject(&m_Curves[m_Steps[i].m_Curve].m_Pen);
        m_DC->MoveTo(x, m_Steps[i].m_From);
        m_DC->LineTo(x, m_Steps[i].m_To);
    }
}

void CurvePainter::FindSteps(int level, int stretch, int first, int last) {
    if (IsHidden(level, stretch)) return;
    const int size = CurveIndex::StepsAt(level);
    const int from = std::max(first, stretch * size);
    const int to =
        static_cast<int>(std::min<std::int64_t>(last, (stretch + std::int64_t{1}) * size));
    if (level == 0) {
        for (int i = to - 1; i >= from; --i) AddSteps(i);
        return;
    }
    const int below = CurveIndex::StepsAt(level - 1);
    for (int i = (to - 1) / below; i >= from / below; --i) FindSteps(level - 1, i, first, last);
}

bool CurvePainter::IsHidden(int level, int stretch) {
    return std::all_of(m_Curves.begin(), m_Curves.end(), [&](Curve& curve) {
        return curve.IsHidden(m_Cover, m_Index.RangeOf(level, stretch, curve.m_Value));
    });
}

void CurvePainter::AddSteps(int sample) {
    for (std::size_t i = m_Curves.size(); i-- > 0;) {
        const std::uint32_t from = m_Curves[i].ValueOf(At(sample));
        const std::uint32_t to = m_Curves[i].ValueOf(At(sample + 1));
        if (from == to) continue;
        if (m_Curves[i].IsHidden(m_Cover, {std::min(from, to), std::max(from, to)})) continue;
        const int fromRow = m_Curves[i].RowOf(from);
        const int toRow = m_Curves[i].RowOf(to);
        if (!m_Cover.Add(fromRow, toRow)) continue;
        if (m_HasWholeRows) {
            for (const auto& [top, bottom] : m_Cover.Fresh())
                m_DC->FillSolidRect(m_X - 1, top, 2, bottom - top, m_Curves[i].m_Pen.m_Color);
        } else {
            m_Steps.push_back({fromRow, toRow, i});
        }
    }
}

// Below scale 1 several rows share a device pixel, and what covers what is another matter.
bool CanHideSteps(const CDC& dc) {
    const auto* raster = dynamic_cast<const vesk::RasterSurface*>(dc.GetSurface());
    return !raster || raster->Scale() >= 1.0;
}

// The value at the cursor: of the visible sample that it lies in, and outside of all samples of
// the first or last one.
void ReadAtCursor(const CMcuView& view, const Samples& samples,
                  std::vector<std::uint32_t>& values) {
    const auto after = std::upper_bound(
        samples.begin(), samples.end(), view.m_CursorTime,
        [](std::uint64_t time, const auto& sample) { return time < sample.m_Time; });
    const bool isOutside = after == samples.begin() || after == samples.end();
    const ExtraInfoRecord& sample = after == samples.begin() ? samples.front() : after[-1];
    const auto index = static_cast<int>(after - samples.begin()) - 1;
    const bool isVisible = index >= view.m_ExtraFirst && index < view.m_ExtraLast;
    const std::size_t count = std::min(values.size(), sample.m_Values.size());
    for (std::size_t j = 0; j < count; ++j) {
        const bool isShown = j < view.m_ExtraShown.size() && view.m_ExtraShown[j];
        if (isOutside || (isVisible && isShown))
            values[j] = static_cast<std::uint32_t>(sample.m_Values[j]);
    }
}

}  // namespace

void CMcuView::DrawExtraInfo(CDC* dc, int, int left, int) {
    const McuJobList& list = Jobs();
    const Samples& samples = list.m_ExtraInfos;
    if (list.m_ExtraInfoNum <= 0 || samples.empty()) return;
    ReadAtCursor(*this, samples, m_ExtraCursorValue);
    const vesk::SavedDrawing saved(dc);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    const CurveIndex& index = Index().Curves();
    CurvePainter painter(dc, samples, index, scale, m_VisibleQbits);
    for (int j = 0; j < list.m_ExtraInfoNum; ++j) {
        const auto at = static_cast<std::size_t>(j);
        if (at >= m_ExtraShown.size() || !m_ExtraShown[at]) continue;
        const COLORREF color =
            global_vesk_doc_ptr ? global_vesk_doc_ptr->m_ExtraColor.Lookup(j) : 0;
        painter.m_Curves.emplace_back(*this, j, static_cast<std::uint32_t>(list.m_ExtraMin[at]),
                                      static_cast<std::uint32_t>(list.m_ExtraMax[at]), color);
    }
    int first = m_ExtraFirst;
    const auto timeOf = [&](int i) { return samples[static_cast<std::size_t>(i)].m_Time; };
    const bool byColumns = index.IsAscending() && CanHideSteps(*dc);
    while (first < m_ExtraLast && (!byColumns || timeOf(first) < m_TimeOffset))
        if (!painter.Draw(first++)) return;
    std::vector<ColumnRun> columns;
    index.Times().FindRuns(scale, first, m_ExtraLast, timeOf, columns);
    for (const ColumnRun& column : columns) painter.DrawColumn(column);
}
