// The strip of all jobs, and the source marks above it.
#include <algorithm>
#include <array>

#include "host/VESKUIDoc.h"
#include "log/McuJobList.h"
#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "timeline/CMcuView.h"
#include "timeline/JobLanes.h"
#include "timeline/MeasuredText.h"
#include "timeline/NeighbourColumns.h"
#include "timeline/SavedDrawing.h"
#include "timeline/TextFit.h"
#include "timeline/TimelineIndex.h"
#include "timeline/WaveLane.h"

using vesk::JobLanes;
using vesk::JobStripIndex;
using vesk::RecordColumn;
using vesk::TimeScale;

namespace {

constexpr COLORREF kMarkColor = 0x5D009E;
constexpr int kMarkHeight = 10;

// Paints jobs as filled blocks with their names. Looks a name's colour and text up once.
class StripPainter {
public:
    StripPainter(CDC* dc, const JobLanes& jobs, vesk::MeasuredNames& names, const TimeScale& scale,
                 std::uint64_t logEnd)
        : m_DC(dc), m_Jobs(jobs), m_Names(names), m_Scale(scale), m_LogEnd(logEnd) {
        m_Looks.resize(static_cast<std::size_t>(jobs.Index().Names().Names()));
    }
    void Place(int top, int height, int right) {
        m_Top = top;
        m_Height = height;
        m_Right = right;
    }

    // False beyond what can be seen.
    bool Draw(int job);
    void DrawColumn(std::size_t);

private:
    struct Look {
        vesk::MeasuredText* m_Text = nullptr;
        COLORREF m_Color = 0;
        COLORREF m_TextColor = 0;
    };

    Look& LookOf(int name);
    Look& LookOfJob(int job) { return LookOf(m_Jobs.Index().Names().At(job)); }
    void DrawBlock(Look&, int x, std::int64_t length);
    void DrawText(Look&, int x, int width);
    void DrawHidden(const RecordColumn&, int last);

    CDC* m_DC;
    const JobLanes& m_Jobs;
    vesk::MeasuredNames& m_Names;
    const TimeScale m_Scale;
    const std::uint64_t m_LogEnd;
    int m_Top = 0;
    int m_Height = 0;
    int m_Right = 0;
    std::vector<Look> m_Looks;                    // by number of the name
    std::vector<std::uint64_t> m_NamesWithWidth;  // found when it is first asked for
};

StripPainter::Look& StripPainter::LookOf(int number) {
    Look& look = m_Looks[static_cast<std::size_t>(number)];
    if (look.m_Text) return look;
    const std::string& name = m_Jobs.Index().Names().Text(number);
    look.m_Text = &m_Names.Of(*m_DC, name);
    if (global_vesk_doc_ptr)
        look.m_Color = global_vesk_doc_ptr->m_JobColor.Lookup(vesk::ColorKey(name));
    look.m_TextColor = vesk::TextColorOn(look.m_Color);
    return look;
}

bool StripPainter::Draw(int job) {
    const std::vector<McuJob>& records = m_Jobs.Index().Records();
    const std::uint64_t start =
        std::max(records[static_cast<std::size_t>(job)].m_StartTime, m_Scale.m_Offset);
    const std::uint64_t end = vesk::EffectiveEnd(records, job, m_LogEnd);
    if (end < m_Scale.m_Offset) return true;
    const std::int64_t x = m_Scale.PixelAt(start);
    if (x < 0 || x > INT32_MAX) return false;
    DrawBlock(LookOfJob(job), static_cast<int>(x), end > start ? m_Scale.Length(end - start) : 0);
    return true;
}

void StripPainter::DrawBlock(Look& look, int x, std::int64_t length) {
    const auto width = static_cast<int>(std::min(length, std::int64_t{m_Right} - x));
    m_DC->FillSolidRect(x, m_Top, width, m_Height, look.m_Color);
    DrawText(look, x, width);
}

void StripPainter::DrawText(Look& look, int x, int width) {
    const int textWidth = look.m_Text->Width();
    const int y = m_Top + m_Height - m_Height / 2 - 10;
    m_DC->SetTextColor(look.m_TextColor);
    if (width > textWidth) {
        m_DC->TextOut(x + (width - textWidth) / 2, y, look.m_Text->Text());
    } else {
        m_DC->TextOut(x, y, look.m_Text->Fit(width));
    }
}

// Only the last text of jobs that have no pixel of their own can show.
void StripPainter::DrawColumn(std::size_t at) {
    const RecordColumn& column = m_Jobs.Index().Columns()[at];
    if (!column.m_IsSimple) {
        for (int i = column.m_First; i < column.m_Last; ++i) Draw(i);
        return;
    }
    Look& look = LookOf(m_Jobs.Index().LastName(at));
    const vesk::ColumnEnd& end = m_Jobs.EndOf(at);
    const bool lastHidesAll = end.m_EndsInOrder && end.m_Length == 0 && look.m_Text->Width() > 0;
    if (!lastHidesAll) DrawHidden(column, column.m_Last - 1);
    if (end.m_IsShown) DrawBlock(look, column.m_X, end.m_Length);
}

// The dots of two jobs on one place cover each other, and a text without width shows nothing.
void StripPainter::DrawHidden(const RecordColumn& column, int last) {
    const vesk::NameColumn& names = m_Jobs.Index().Names();
    int shown = last - 1;
    if (shown >= column.m_First && LookOfJob(shown).m_Text->Width() == 0) {
        if (m_NamesWithWidth.empty()) {
            m_NamesWithWidth = names.SetOf(
                [this](const std::string& name) { return m_Names.Of(*m_DC, name).Width() > 0; });
        }
        shown = names.LastOf(m_NamesWithWidth.data(), column.m_First, shown);
    }
    if (shown >= column.m_First) DrawText(LookOfJob(shown), column.m_X, 0);
}

void DrawMark(CDC* dc, int x, int y) {
    const std::array<CPoint, 3> corners{
        {{x, y}, {x - 2, y - kMarkHeight}, {x + 2, y - kMarkHeight}}};
    dc->Polygon(corners.data(), 3);
}

// Triangles that stand on their points. Side by side they leave no gap between the first and the
// last, where lines leave none.
void DrawMarks(CDC* dc, int first, int last, int y) {
    DrawMark(dc, first, y);
    if (last == first) return;
    dc->FillSolidRect({first, y - kMarkHeight, last, y + 1}, kMarkColor);
    DrawMark(dc, last, y);
}

}  // namespace

void CMcuView::DrawJobList(CDC* dc, int height, int left, int y) {
    const vesk::SavedDrawing saved(dc);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    JobLanes& jobs = Index().Lanes();
    jobs.Show(scale, m_JobFirst, m_JobLast, CanvasRight());
    StripPainter painter(dc, jobs, Index().Names(), scale, Jobs().m_EndTime);
    painter.Place(y - height, height, CanvasRight());
    for (int i = m_JobFirst; i < m_JobFirst + jobs.Index().Leading(); ++i)
        if (!painter.Draw(i)) return;
    for (std::size_t i = 0; i < jobs.Index().Columns().size(); ++i) painter.DrawColumn(i);
}

void CMcuView::DrawSourceMarkList(CDC* dc, int left, int y) {
    const vesk::SavedDrawing saved(dc);
    CPen pen(PS_SOLID, 1, kMarkColor);
    CBrush brush(kMarkColor);
    dc->SelectObject(&pen);
    dc->SelectObject(&brush);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    vesk::NeighbourColumns marks(vesk::LinesAreAreas(*dc),
                                 [&](int first, int last) { DrawMarks(dc, first, last, y); });
    JobStripIndex& index = Index().Marks();
    index.Show(scale, m_MarkFirst, m_MarkLast);
    for (int i = m_MarkFirst; i < m_MarkFirst + index.Leading(); ++i) {
        const std::uint64_t time = index.Records()[static_cast<std::size_t>(i)].m_StartTime;
        if (time < m_TimeOffset) continue;
        const std::int64_t x = scale.PixelAt(time);
        if (x > INT32_MAX) break;
        marks.Add(static_cast<int>(x));
    }
    for (const RecordColumn& column : index.Columns()) marks.Add(column.m_X);
    marks.Flush();
}
