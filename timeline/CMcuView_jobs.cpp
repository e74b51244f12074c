// The strip of all jobs, and the source marks above it.
#include <algorithm>
#include <array>

#include "host/VESKUIDoc.h"
#include "log/McuJobList.h"
#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "timeline/CMcuView.h"
#include "timeline/JobStripIndex.h"
#include "timeline/SavedDrawing.h"
#include "timeline/TextFit.h"
#include "timeline/TimelineIndex.h"

using vesk::JobStripIndex;
using vesk::RecordColumn;
using vesk::TimeScale;

namespace {

constexpr COLORREF kMarkColor = 0x5D009E;

// Paints jobs as filled blocks with their names. Looks a name's colour up and measures it once.
class StripPainter {
public:
    StripPainter(CDC* dc, const JobStripIndex& index, const TimeScale& scale, std::uint64_t logEnd)
        : m_DC(dc), m_Index(index), m_Scale(scale), m_LogEnd(logEnd) {
        m_Looks.resize(static_cast<std::size_t>(index.Names().Names()));
    }
    void Place(int top, int height, int right) {
        m_Top = top;
        m_Height = height;
        m_Right = right;
    }

    // False beyond what can be seen.
    bool Draw(int index);
    // Only the last text of jobs that have no pixel of their own can show.
    void DrawSimple(const RecordColumn&);

private:
    struct Look {
        bool m_IsKnown = false;
        COLORREF m_Color = 0;
        int m_TextWidth = 0;
    };

    const McuJob& Job(int index) const {
        return m_Index.Records()[static_cast<std::size_t>(index)];
    }
    const Look& LookOf(int index);
    void DrawText(int index, int x, int width);

    CDC* m_DC;
    const JobStripIndex& m_Index;
    const TimeScale m_Scale;
    const std::uint64_t m_LogEnd;
    int m_Top = 0;
    int m_Height = 0;
    int m_Right = 0;
    std::vector<Look> m_Looks;  // by number of the name
};

const StripPainter::Look& StripPainter::LookOf(int index) {
    Look& look = m_Looks[static_cast<std::size_t>(m_Index.Names().At(index))];
    if (look.m_IsKnown) return look;
    const std::string& name = Job(index).m_Name;
    look.m_IsKnown = true;
    look.m_TextWidth = m_DC->GetTextExtent(name).cx;
    if (global_vesk_doc_ptr)
        look.m_Color = global_vesk_doc_ptr->m_JobColor.Lookup(vesk::ColorKey(name));
    return look;
}

bool StripPainter::Draw(int index) {
    const std::uint64_t start = std::max(Job(index).m_StartTime, m_Scale.m_Offset);
    const std::uint64_t end = vesk::EffectiveEnd(m_Index.Records(), index, m_LogEnd);
    if (end < m_Scale.m_Offset) return true;
    const std::int64_t x = m_Scale.PixelAt(start);
    if (x < 0 || x > INT32_MAX) return false;
    const std::int64_t length = end > start ? m_Scale.Length(end - start) : 0;
    const auto width = static_cast<int>(std::min(length, m_Right - x));
    const auto left = static_cast<int>(x);
    m_DC->FillSolidRect(left, m_Top, width, m_Height, LookOf(index).m_Color);
    DrawText(index, left, width);
    return true;
}

void StripPainter::DrawText(int index, int x, int width) {
    const Look& look = LookOf(index);
    const std::string& name = Job(index).m_Name;
    const int y = m_Top + m_Height - m_Height / 2 - 10;
    m_DC->SetTextColor(vesk::TextColorOn(look.m_Color));
    if (width > look.m_TextWidth) {
        m_DC->TextOut(x + (width - look.m_TextWidth) / 2, y, name);
    } else {
        m_DC->TextOut(x, y, vesk::FitText(*m_DC, name, width));
    }
}

// The dots of two jobs on one place cover each other, and a text without width shows nothing.
void StripPainter::DrawSimple(const RecordColumn& column) {
    const int last = column.m_Last - 1;
    const std::uint64_t end = vesk::EffectiveEnd(m_Index.Records(), last, m_LogEnd);
    const std::uint64_t start = Job(last).m_StartTime;
    const bool lastHidesAll =
        end >= start && m_Scale.Length(end - start) == 0 && LookOf(last).m_TextWidth > 0;
    int shown = lastHidesAll ? column.m_First - 1 : last - 1;
    while (shown >= column.m_First && LookOf(shown).m_TextWidth == 0) --shown;
    if (shown >= column.m_First) DrawText(shown, column.m_X, 0);
    Draw(last);
}

}  // namespace

void CMcuView::DrawJobList(CDC* dc, int height, int left, int y) {
    const vesk::SavedDrawing saved(dc);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    JobStripIndex& index = Index().Jobs();
    index.Show(scale, m_JobFirst, m_JobLast);
    StripPainter painter(dc, index, scale, Jobs().m_EndTime);
    painter.Place(y - height, height, CanvasRight());
    for (int i = m_JobFirst; i < m_JobFirst + index.Leading(); ++i)
        if (!painter.Draw(i)) return;
    for (const RecordColumn& column : index.Columns()) {
        if (column.m_IsSimple) {
            painter.DrawSimple(column);
        } else {
            for (int i = column.m_First; i < column.m_Last; ++i) painter.Draw(i);
        }
    }
}

void CMcuView::DrawSourceMarkList(CDC* dc, int left, int y) {
    const vesk::SavedDrawing saved(dc);
    CPen pen(PS_SOLID, 1, kMarkColor);
    CBrush brush(kMarkColor);
    dc->SelectObject(&pen);
    dc->SelectObject(&brush);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    const auto draw = [&](std::int64_t at) {
        const auto x = static_cast<int>(at);
        const std::array<CPoint, 3> corners{{{x, y}, {x - 2, y - 10}, {x + 2, y - 10}}};
        dc->Polygon(corners.data(), 3);
    };
    JobStripIndex& index = Index().Marks();
    index.Show(scale, m_MarkFirst, m_MarkLast);
    for (int i = m_MarkFirst; i < m_MarkFirst + index.Leading(); ++i) {
        const std::uint64_t time = index.Records()[static_cast<std::size_t>(i)].m_StartTime;
        if (time < m_TimeOffset) continue;
        const std::int64_t x = scale.PixelAt(time);
        if (x > INT32_MAX) return;
        draw(x);
    }
    for (const RecordColumn& column : index.Columns()) draw(column.m_X);
}
