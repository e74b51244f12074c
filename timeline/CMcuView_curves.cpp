// The stepped curves of the extra values.
#include <algorithm>
#include <climits>
#include <deque>
#include <optional>
#include <utility>

#include "host/VESKUIDoc.h"
#include "log/McuJobList.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "platform/Prefetch.h"
#include "platform/RasterSurface.h"
#include "timeline/CMcuView.h"
#include "timeline/CurveIndex.h"
#include "timeline/SavedDrawing.h"
#include "timeline/StrokeCover.h"
#include "timeline/StrokeTile.h"
#include "timeline/TimelineIndex.h"
#include "timeline/WaveLane.h"

using vesk::ColumnRun;
using vesk::CurveIndex;
using vesk::StrokeCover;
using vesk::TimeScale;

namespace {

using Samples = std::vector<ExtraInfoRecord>;

constexpr std::size_t kAhead = 3;   // columns
constexpr int kLikelySamples = 24;  // so many of a column are mostly enough to cover all others

// One value's curve: its colour, and the row that a value lies on.
struct Curve {
    Curve(const CMcuView& view, int value, std::uint32_t least, std::uint32_t greatest,
          COLORREF color)
        : m_Value(value),
          m_Least(least),
          m_Range(greatest - least > 1 ? greatest - least : 1),
          m_Bottom(static_cast<std::uint32_t>(view.m_CanvasBottom)),
          m_Height(static_cast<std::uint32_t>(view.m_CanvasHeight)),
          m_Color(color) {}

    const int m_Value;
    const std::uint32_t m_Least;
    const std::uint32_t m_Range;
    const std::uint32_t m_Bottom;
    const std::uint32_t m_Height;
    const COLORREF m_Color;

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
    bool IsKnownHidden(const CurveIndex::Range& range) const {
        return range.m_Least >= m_Hidden.m_Least && range.m_Greatest <= m_Hidden.m_Greatest;
    }
    // To be told of values that have been looked at, with their rows.
    void Remember(const StrokeCover&, std::uint32_t value, int row);
    void NextColumn();

private:
    bool CanWrap(const CurveIndex::Range&) const;

    CurveIndex::Range m_Hidden;
    int m_HiddenTop = INT_MAX;  // the rows of its ends
    int m_HiddenBottom = INT_MIN;
};

bool Curve::CanWrap(const CurveIndex::Range& range) const {
    const std::uint64_t greatest = std::uint64_t{range.m_Greatest - m_Least} * m_Height;
    return range.m_Least < m_Least || greatest > UINT32_MAX;
}

bool Curve::IsHidden(const StrokeCover& cover, const CurveIndex::Range& range) {
    if (IsKnownHidden(range)) return true;
    const auto [top, bottom] = RowsOf(range);
    if (!cover.Holds(top, bottom)) return false;
    if (CanWrap(range)) return true;
    Remember(cover, range.m_Least, static_cast<int>(bottom));
    Remember(cover, range.m_Greatest, static_cast<int>(top));
    return true;
}

void Curve::Remember(const StrokeCover& cover, std::uint32_t value, int row) {
    if (CanWrap({value, value})) return;
    const int top = std::min(m_HiddenTop, row);
    const int bottom = std::max(m_HiddenBottom, row);
    if (!cover.Holds(top, bottom)) return;
    m_Hidden.Widen({value, value});
    m_HiddenTop = top;
    m_HiddenBottom = bottom;
}

void Curve::NextColumn() {
    m_Hidden = {};
    m_HiddenTop = INT_MAX;
    m_HiddenBottom = INT_MIN;
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

    void Add(const Curve&);
    // Has strokes of neighbouring columns painted at once. Worth it where most have some.
    void UseTile();

    // False beyond what can be seen.
    bool Draw(int sample);
    // The steps from samples [first, last) to the ones behind them, all in one column: only those
    // of which something shows.
    void DrawSteps(int x, int first, int last);
    void DrawColumns(const std::vector<ColumnRun>&);

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
    void DrawColumn(const ColumnRun&);
    void Prefetch(const ColumnRun& far, const ColumnRun& near) const;
    void DrawStep(std::size_t curve, int x, int to, int row, int nextRow);
    bool IsHidden(int level, int stretch);
    bool IsAllHidden() const { return m_Cover.Holds(m_AllTop, m_AllBottom); }
    void FindSteps(int level, int stretch, int first, int last);
    // False once no earlier step can show.
    bool AddSteps(int sample);
    void DrawFresh(std::size_t curve, int fromRow, int toRow);

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
    std::optional<vesk::StrokeTile> m_Tile;
    std::vector<Curve> m_Curves;
    std::deque<CPen> m_Pens;                // of the curves
    std::int64_t m_AllTop = INT64_MAX / 4;  // rows of all values of the log
    std::int64_t m_AllBottom = INT64_MIN / 4;
    int m_X = 0;
    std::vector<Step> m_Steps;  // of one column, the last one first
};

StrokeCover CurvePainter::PaintedRows(const CDC& dc) {
    CRect box;
    dc.GetClipBox(&box);
    return {box.top, box.bottom};
}

void CurvePainter::Add(const Curve& curve) {
    const auto [top, bottom] = curve.RowsOf(m_Index.RangeOfAll(curve.m_Value));
    m_AllTop = std::min(m_AllTop, top);
    m_AllBottom = std::max(m_AllBottom, bottom);
    m_Curves.push_back(curve);
    m_Pens.emplace_back(PS_SOLID, 2, curve.m_Color);
}

void CurvePainter::UseTile() {
    if (!m_HasWholeRows || m_Curves.size() > vesk::StrokeTile::kMostColors) return;
    m_Tile.emplace(m_DC);
    for (const Curve& curve : m_Curves) m_Tile->AddColor(curve.m_Color);
}

bool CurvePainter::Draw(int sample) {
    const std::int64_t pixel = m_Scale.PixelAt(At(sample).m_Time);
    if (pixel < 0 || pixel > INT32_MAX) return false;
    if (static_cast<std::size_t>(sample) + 1 == m_Samples.size()) return true;
    const ExtraInfoRecord& next = At(sample + 1);
    const std::int64_t nextX = m_Scale.PixelAt(next.m_Time);
    const bool isInside = next.m_Time <= m_End && nextX >= 0 && nextX <= INT32_MAX;
    const int to = vesk::ToCoordinate(isInside ? nextX : m_EndX);
    for (std::size_t i = 0; i < m_Curves.size(); ++i) {
        const Curve& curve = m_Curves[i];
        DrawStep(i, static_cast<int>(pixel), to, curve.RowOf(At(sample)), curve.RowOf(next));
    }
    return true;
}

// At a value up to where the next one begins, and over to that.
void CurvePainter::DrawStep(std::size_t curve, int x, int to, int row, int nextRow) {
    if (m_Tile && to >= x) {
        const auto from = std::int64_t{row};
        m_Tile->Fill(x, from - 1, to, from + 1, curve);
        const bool down = nextRow > row;
        m_Tile->Fill(std::int64_t{to} - 1, down ? row : std::int64_t{nextRow} + 1,
                     std::int64_t{to} + 1, down ? nextRow : from + 1, curve);
        return;
    }
    if (m_Tile) m_Tile->Flush();
    m_DC->SelectObject(&m_Pens[curve]);
    m_DC->MoveTo(x, row);
    m_DC->LineTo(to, row);
    m_DC->LineTo(to, nextRow);
}

void CurvePainter::DrawColumns(const std::vector<ColumnRun>& columns) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::size_t last = columns.size() - 1;
        Prefetch(columns[std::min(i + 2 * kAhead, last)], columns[std::min(i + kAhead, last)]);
        DrawColumn(columns[i]);
    }
    if (m_Tile) m_Tile->Flush();
}

// The last samples of a column, and a little later their values.
void CurvePainter::Prefetch(const ColumnRun& far, const ColumnRun& near) const {
    for (int i = far.m_Last - 1; i >= std::max(far.m_First, far.m_Last - kLikelySamples); --i)
        vesk::Prefetch(&At(i));
    for (int i = near.m_Last - 1; i >= std::max(near.m_First, near.m_Last - kLikelySamples); --i)
        vesk::Prefetch(At(i).m_Values.data());
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
        m_DC->SelectObject(&m_Pens[m_Steps[i].m_Curve]);
        m_DC->MoveTo(x, m_Steps[i].m_From);
        m_DC->LineTo(x, m_Steps[i].m_To);
    }
}

void CurvePainter::FindSteps(int level, int stretch, int first, int last) {
    if (!m_Cover.IsEmpty() && (IsAllHidden() || IsHidden(level, stretch))) return;
    const int size = CurveIndex::StepsAt(level);
    const int from = std::max(first, stretch * size);
    const int to =
        static_cast<int>(std::min<std::int64_t>(last, (stretch + std::int64_t{1}) * size));
    if (level == 0) {
        for (int i = to - 1; i >= from && AddSteps(i); --i) {
        }
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

bool CurvePainter::AddSteps(int sample) {
    bool hasFresh = false;
    for (std::size_t i = m_Curves.size(); i-- > 0;) {
        Curve& curve = m_Curves[i];
        const std::uint32_t from = curve.ValueOf(At(sample));
        const std::uint32_t to = curve.ValueOf(At(sample + 1));
        if (from == to || curve.IsKnownHidden({std::min(from, to), std::max(from, to)})) continue;
        const int fromRow = curve.RowOf(from);
        const int toRow = curve.RowOf(to);
        if (m_Cover.Add(fromRow, toRow)) {
            hasFresh = true;
            DrawFresh(i, fromRow, toRow);
        }
        curve.Remember(m_Cover, to, toRow);
        curve.Remember(m_Cover, from, fromRow);
    }
    return !hasFresh || !IsAllHidden();
}

void CurvePainter::DrawFresh(std::size_t curve, int fromRow, int toRow) {
    if (!m_HasWholeRows) {
        m_Steps.push_back({fromRow, toRow, curve});
        return;
    }
    for (const auto& [top, bottom] : m_Cover.Fresh()) {
        if (m_Tile) {
            m_Tile->Fill(std::int64_t{m_X} - 1, top, std::int64_t{m_X} + 1, bottom, curve);
        } else {
            m_DC->FillSolidRect(m_X - 1, top, 2, bottom - top, m_Curves[curve].m_Color);
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
        painter.Add({*this, j, static_cast<std::uint32_t>(list.m_ExtraMin[at]),
                     static_cast<std::uint32_t>(list.m_ExtraMax[at]), color});
    }
    int first = m_ExtraFirst;
    const auto timeOf = [&](int i) -> const std::uint64_t& {
        return samples[static_cast<std::size_t>(i)].m_Time;
    };
    const bool byColumns = index.IsAscending() && CanHideSteps(*dc);
    while (first < m_ExtraLast && (!byColumns || timeOf(first) < m_TimeOffset))
        if (!painter.Draw(first++)) return;
    std::vector<ColumnRun> columns;
    index.Times().FindRuns(scale, first, m_ExtraLast, timeOf, columns);
    if (static_cast<std::size_t>(m_ExtraLast - first) > 2 * columns.size()) painter.UseTile();
    painter.DrawColumns(columns);
}
