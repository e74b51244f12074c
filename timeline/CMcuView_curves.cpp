// The stepped curves of the extra values.
#include <algorithm>
#include <array>
#include <bit>
#include <climits>
#include <deque>
#include <optional>
#include <span>
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

constexpr std::size_t kAhead = 6;  // columns
constexpr int kLikelySteps = 16;   // so many of a column are mostly enough to cover all others

// One value's curve: its colour, and the row that a value lies on.
class Curve {
public:
    Curve(const CMcuView& view, int value, std::uint32_t least, std::uint32_t greatest,
          COLORREF color)
        : m_Value(static_cast<std::size_t>(value)),
          m_Color(color),
          m_Least(least),
          m_Range(greatest - least > 1 ? greatest - least : 1),
          m_Bottom(static_cast<std::uint32_t>(view.m_CanvasBottom)),
          m_Height(static_cast<std::uint32_t>(view.m_CanvasHeight)) {}

    std::size_t Value() const { return m_Value; }
    COLORREF Color() const { return m_Color; }

    // Unsigned 32-bit steps: a range that is too large for them wraps.
    int RowOf(std::uint32_t value) const {
        return static_cast<int>(m_Bottom - (value - m_Least) * m_Height / m_Range);
    }
    // Rows between which all values of a range lie.
    std::pair<std::int64_t, std::int64_t> RowsOf(const CurveIndex::Range&) const;

private:
    bool CanWrap(const CurveIndex::Range&) const;

    std::size_t m_Value;  // its number
    COLORREF m_Color;
    std::uint32_t m_Least;
    std::uint32_t m_Range;
    std::uint32_t m_Bottom;
    std::uint32_t m_Height;
};

bool Curve::CanWrap(const CurveIndex::Range& range) const {
    const std::uint64_t greatest = std::uint64_t{range.m_Greatest - m_Least} * m_Height;
    return range.m_Least < m_Least || greatest > UINT32_MAX;
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
    CurvePainter(CDC* dc, const CurveIndex& index, const TimeScale& scale, std::uint64_t visible)
        : m_DC(dc),
          m_Index(index),
          m_Scale(scale),
          m_End(scale.m_Offset + visible),
          m_EndX(scale.m_Left + scale.Length(visible)),
          m_EndSample(index.Times().FirstFrom(
              0, index.Times().Count(), m_End + 1,
              [&](int i) -> const std::uint64_t& { return index.TimeAt(i); })),
          m_Cover(PaintedRows(*dc)),
          m_HasWholeRows(vesk::LinesAreAreas(*dc)) {}

    void Add(const Curve&);
    // Has strokes of neighbouring columns painted at once. Worth it where most have some.
    void UseTile();

    // False beyond what can be seen.
    bool Draw(int sample);
    void DrawColumns(const std::vector<ColumnRun>&);

private:
    struct Step {
        int m_From;
        int m_To;
        std::size_t m_Curve;
    };
    // The rows of a curve at up to a stretch of steps and behind the last one, and which of them
    // are worth a closer look.
    struct Chain {
        std::array<int, CurveIndex::StepsAt(0) + 1> m_Rows;
        std::uint32_t m_WorthIt;
    };

    // What shows of a curve's steps in a column: of a stroke of width 2 only rows, from the top one
    // to the one behind the last.
    struct Stroke {
        int m_Top;
        int m_Bottom;
        std::size_t m_Curve;
    };
    // What is not painted yet of the last column: its strokes right of its x, and the steps from
    // its last sample on. The next column mostly covers them.
    struct Rest {
        int m_X = 0;
        int m_Sample = -1;  // -1 if there is no rest
        std::vector<Stroke> m_Strokes;
    };

    static StrokeCover PaintedRows(const CDC&);
    int RowOf(int sample, const Curve& curve) const {
        return curve.RowOf(m_Index.ValuesAt(sample)[curve.Value()]);
    }
    void DrawColumn(const ColumnRun&);
    // Of the steps from samples [first, last) to the ones behind them, all in one column, those of
    // which something shows.
    void FindSteps(int first, int last);
    void PaintSteps(int x);
    void PaintRest();
    void PaintUncoveredRest();
    void Prefetch(const ColumnRun&) const;
    void DrawStep(std::size_t curve, int x, int to, int row, int nextRow);
    bool IsHidden(int level, int stretch);
    bool IsAllHidden() const { return m_Cover.Holds(m_AllTop, m_AllBottom); }
    // False once no earlier step can show.
    bool FindSteps(int level, int stretch, int first, int last);
    bool AddSteps(int first, int last);
    std::span<const Step> FindCandidates(int first, int last);
    void FindChain(const Curve&, int first, std::size_t steps, Chain&) const;
    void AddFresh(const Step&);

    CDC* m_DC;
    const CurveIndex& m_Index;
    const TimeScale m_Scale;
    const std::uint64_t m_End;
    const std::int64_t m_EndX;
    const int m_EndSample;  // the first one behind the end
    StrokeCover m_Cover;
    // At a whole scale a line of width 2 covers exactly the pixels on both sides of its place: what
    // shows of each step is painted as areas then, and no pixel twice.
    const bool m_HasWholeRows;
    std::optional<vesk::StrokeTile> m_Tile;
    std::vector<Curve> m_Curves;
    std::deque<CPen> m_Pens;                // of the curves
    std::int64_t m_AllTop = INT64_MAX / 4;  // rows of all values of the log
    std::int64_t m_AllBottom = INT64_MIN / 4;
    // Of one column, the last one first.
    std::vector<Step> m_Steps;
    std::vector<Stroke> m_Strokes;  // instead of steps, if rows are whole
    Rest m_Rest;
    // Of a few steps at a time, reused.
    std::vector<Chain> m_Chains;
    std::vector<Step> m_Candidates;
};

StrokeCover CurvePainter::PaintedRows(const CDC& dc) {
    CRect box;
    dc.GetClipBox(&box);
    return {box.top, box.bottom};
}

void CurvePainter::Add(const Curve& curve) {
    const auto [top, bottom] = curve.RowsOf(m_Index.RangeOfAll(static_cast<int>(curve.Value())));
    m_AllTop = std::min(m_AllTop, top);
    m_AllBottom = std::max(m_AllBottom, bottom);
    m_Curves.push_back(curve);
    m_Pens.emplace_back(PS_SOLID, 2, curve.Color());
}

void CurvePainter::UseTile() {
    if (!m_HasWholeRows || m_Curves.size() > vesk::StrokeTile::kMostColors) return;
    m_Tile.emplace(m_DC, m_AllTop - 1, m_AllBottom + 1);
    for (const Curve& curve : m_Curves) m_Tile->AddColor(curve.Color());
}

bool CurvePainter::Draw(int sample) {
    const std::int64_t pixel = m_Scale.PixelAt(m_Index.TimeAt(sample));
    if (pixel < 0 || pixel > INT32_MAX) return false;
    if (sample + 1 == m_Index.Times().Count()) return true;
    const std::uint64_t next = m_Index.TimeAt(sample + 1);
    const std::int64_t nextX = m_Scale.PixelAt(next);
    const bool isInside = next <= m_End && nextX >= 0 && nextX <= INT32_MAX;
    const int to = vesk::ToCoordinate(isInside ? nextX : m_EndX);
    for (std::size_t i = 0; i < m_Curves.size(); ++i) {
        const Curve& curve = m_Curves[i];
        DrawStep(i, static_cast<int>(pixel), to, RowOf(sample, curve), RowOf(sample + 1, curve));
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
        Prefetch(columns[std::min(i + kAhead, columns.size() - 1)]);
        DrawColumn(columns[i]);
    }
    PaintRest();
    if (m_Tile) m_Tile->Flush();
}

// The last samples of a column, from the one behind it on.
void CurvePainter::Prefetch(const ColumnRun& column) const {
    constexpr auto kValuesOfLine = static_cast<std::ptrdiff_t>(64 / sizeof(std::uint32_t));
    const std::uint32_t* const first =
        m_Index.ValuesAt(std::max(column.m_First, column.m_Last - 1 - kLikelySteps));
    const std::uint32_t* const last = m_Index.ValuesAt(column.m_Last);
    for (const std::uint32_t* at = first; at < last; at += kValuesOfLine) vesk::Prefetch(at);
    vesk::Prefetch(last);
}

void CurvePainter::DrawColumn(const ColumnRun& column) {
    const int last = column.m_Last - 1;
    if (column.m_Last > m_EndSample) {
        PaintRest();
        for (int i = column.m_First; i < column.m_Last; ++i) Draw(i);
        return;
    }
    FindSteps(column.m_First, last);
    if (!m_Tile) {
        PaintSteps(column.m_X);
        Draw(last);
        return;
    }
    const bool coversRest = column.m_X == m_Rest.m_X + 1 && !m_Cover.IsEmpty() && IsAllHidden();
    if (coversRest) {
        PaintUncoveredRest();
    } else {
        PaintRest();
    }
    for (const Stroke& stroke : m_Strokes)
        m_Tile->Fill(column.m_X - 1, stroke.m_Top, column.m_X, stroke.m_Bottom, stroke.m_Curve);
    m_Rest.m_X = column.m_X;
    m_Rest.m_Sample = last;
    std::swap(m_Rest.m_Strokes, m_Strokes);
}

void CurvePainter::PaintRest() {
    if (m_Rest.m_Sample < 0) return;
    for (const Stroke& stroke : m_Rest.m_Strokes)
        m_Tile->Fill(m_Rest.m_X, stroke.m_Top, m_Rest.m_X + 1, stroke.m_Bottom, stroke.m_Curve);
    Draw(std::exchange(m_Rest.m_Sample, -1));
}

// Where the next column's strokes cover all rows of all values: a line along the first one lies
// half above it.
void CurvePainter::PaintUncoveredRest() {
    if (m_Rest.m_Sample < 0) return;
    for (std::size_t i = 0; i < m_Curves.size(); ++i) {
        const int row = RowOf(m_Rest.m_Sample, m_Curves[i]);
        if (row == m_AllTop) m_Tile->Fill(m_Rest.m_X, row - 1, m_Rest.m_X + 1, row, i);
    }
    m_Rest.m_Sample = -1;
}

void CurvePainter::PaintSteps(int x) {
    for (const Stroke& stroke : m_Strokes) {
        m_DC->FillSolidRect(x - 1, stroke.m_Top, 2, stroke.m_Bottom - stroke.m_Top,
                            m_Curves[stroke.m_Curve].Color());
    }
    for (std::size_t i = m_Steps.size(); i-- > 0;) {
        m_DC->SelectObject(&m_Pens[m_Steps[i].m_Curve]);
        m_DC->MoveTo(x, m_Steps[i].m_From);
        m_DC->LineTo(x, m_Steps[i].m_To);
    }
}

// The last few steps are mostly enough. From them back, over the longest stretches that fit the
// column.
void CurvePainter::FindSteps(int first, int last) {
    m_Cover.Clear();
    m_Steps.clear();
    m_Strokes.clear();
    if (first >= last) return;
    const int likely = std::max(first, last - kLikelySteps);
    if (!AddSteps(likely, last) || first == likely) return;
    int level = 0;
    while (level + 1 < m_Index.Levels() && CurveIndex::StepsAt(level + 1) <= likely - first)
        ++level;
    const int size = CurveIndex::StepsAt(level);
    int stretch = (likely - 1) / size;
    while (stretch >= first / size && FindSteps(level, stretch, first, likely)) --stretch;
}

bool CurvePainter::FindSteps(int level, int stretch, int first, int last) {
    if (IsHidden(level, stretch)) return true;
    const int size = CurveIndex::StepsAt(level);
    const int from = std::max(first, stretch * size);
    const int to =
        static_cast<int>(std::min<std::int64_t>(last, (stretch + std::int64_t{1}) * size));
    if (level == 0) return AddSteps(from, to);
    const int below = CurveIndex::StepsAt(level - 1);
    for (int i = (to - 1) / below; i >= from / below; --i)
        if (!FindSteps(level - 1, i, first, last)) return false;
    return true;
}

bool CurvePainter::IsHidden(int level, int stretch) {
    return std::all_of(m_Curves.begin(), m_Curves.end(), [&](const Curve& curve) {
        const auto [top, bottom] =
            curve.RowsOf(m_Index.RangeOf(level, stretch, static_cast<int>(curve.Value())));
        return m_Cover.Holds(top, bottom);
    });
}

bool CurvePainter::AddSteps(int first, int last) {
    for (const Step& step : FindCandidates(first, last)) {
        if (!m_Cover.Add(step.m_From, step.m_To)) continue;
        AddFresh(step);
        if (IsAllHidden()) return false;
    }
    return true;
}

// A curve's later steps meet: they cover one stretch, which an earlier step makes longer or not.
// Which ones do is left to arithmetic: as a branch it would be guessed wrong most of the time.
std::span<const CurvePainter::Step> CurvePainter::FindCandidates(int first, int last) {
    const auto steps = static_cast<std::size_t>(last - first);
    const std::size_t count = m_Curves.size();
    m_Chains.resize(count);
    std::uint32_t worthIt = 0;
    for (std::size_t i = 0; i < count; ++i) {
        FindChain(m_Curves[i], first, steps, m_Chains[i]);
        worthIt |= m_Chains[i].m_WorthIt;
    }
    m_Candidates.resize(std::max(m_Candidates.size(), steps * count + 1));
    std::size_t found = 0;
    for (; worthIt != 0; worthIt &= ~std::bit_floor(worthIt)) {
        const auto step = static_cast<std::size_t>(std::bit_width(worthIt) - 1);
        for (std::size_t i = count; i-- > 0;) {
            const Chain& chain = m_Chains[i];
            m_Candidates[found] = {chain.m_Rows[step], chain.m_Rows[step + 1], i};
            found += chain.m_WorthIt >> step & 1;
        }
    }
    return {m_Candidates.data(), found};
}

void CurvePainter::FindChain(const Curve& curve, int first, std::size_t steps, Chain& chain) const {
    const std::uint32_t* value = m_Index.ValuesAt(first + static_cast<int>(steps)) + curve.Value();
    const auto rowBefore = [&] {
        value -= m_Index.Values();
        return curve.RowOf(*value);
    };
    const int to = curve.RowOf(*value);
    int from = to;
    chain.m_Rows[steps] = to;
    chain.m_WorthIt = 0;
    while (from == to) {
        if (steps == 0) return;
        chain.m_Rows[--steps] = from = rowBefore();
    }
    // Halves of rows, as StrokeCover counts, from the first to the one behind the last. A step
    // adds the first half of the row that it comes from, if any.
    std::int64_t begin = from < to ? 2 * std::int64_t{from} : 2 * std::int64_t{to} + 1;
    std::int64_t end = from < to ? 2 * std::int64_t{to} : 2 * std::int64_t{from} + 1;
    std::uint32_t worthIt = 1u << steps;
    while (steps > 0) {
        chain.m_Rows[--steps] = from = rowBefore();
        const std::int64_t half = 2 * std::int64_t{from};
        worthIt |= static_cast<std::uint32_t>((half < begin) | (half >= end)) << steps;
        begin = std::min(begin, half);
        end = std::max(end, half + 1);
    }
    chain.m_WorthIt = worthIt;
}

void CurvePainter::AddFresh(const Step& step) {
    if (!m_HasWholeRows) {
        m_Steps.push_back(step);
        return;
    }
    for (const auto& [top, bottom] : m_Cover.Fresh())
        m_Strokes.push_back({top, bottom, step.m_Curve});
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
    CurvePainter painter(dc, index, scale, m_VisibleQbits);
    for (int j = 0; j < list.m_ExtraInfoNum; ++j) {
        const auto at = static_cast<std::size_t>(j);
        if (at >= m_ExtraShown.size() || !m_ExtraShown[at]) continue;
        const COLORREF color =
            global_vesk_doc_ptr ? global_vesk_doc_ptr->m_ExtraColor.Lookup(j) : 0;
        painter.Add({*this, j, static_cast<std::uint32_t>(list.m_ExtraMin[at]),
                     static_cast<std::uint32_t>(list.m_ExtraMax[at]), color});
    }
    int first = m_ExtraFirst;
    const auto timeOf = [&](int i) -> const std::uint64_t& { return index.TimeAt(i); };
    const bool byColumns = index.IsAscending() && CanHideSteps(*dc);
    while (first < m_ExtraLast && (!byColumns || timeOf(first) < m_TimeOffset))
        if (!painter.Draw(first++)) return;
    std::vector<ColumnRun> columns;
    index.Times().FindRuns(scale, first, m_ExtraLast, timeOf, columns);
    if (static_cast<std::size_t>(m_ExtraLast - first) > 2 * columns.size()) painter.UseTile();
    painter.DrawColumns(columns);
}
