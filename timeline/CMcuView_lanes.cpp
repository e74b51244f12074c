// Lanes: square waves of tasks, interrupts and hardware events, ticks of source marks.
#include <algorithm>

#include "host/VESKUIDoc.h"
#include "log/McuJobList.h"
#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "timeline/CMcuView.h"
#include "timeline/JobStripIndex.h"
#include "timeline/SavedDrawing.h"
#include "timeline/TimelineIndex.h"
#include "timeline/WaveLane.h"

using vesk::EffectiveEnd;
using vesk::JobStripIndex;
using vesk::RecordColumn;
using vesk::TimeScale;
using vesk::WaveLane;

namespace {

constexpr int kLanePitch = 20;
constexpr int kHighestLane = 51;
constexpr int kLowLevel = 5;  // above the lane's base line
constexpr int kLabelHeight = 15;
constexpr COLORREF kMarkColor = 0x5D009E;

const std::string& NameOf(const std::string& name) {
    return name;
}
template <class Value>
const std::string& NameOf(const std::pair<const std::string, Value>& entry) {
    return entry.first;
}

// The lanes on screen, from the bottom up, group by group.
class LaneStack {
public:
    LaneStack(int bottom, int scrolledAway) : m_Y(bottom - kLowLevel), m_Offset(scrolledAway) {}

    // Hands out name, position in the group and base line of every lane shown that is not scrolled
    // away, while there is room. Groups below count with their hidden lanes, too.
    template <class Group, class IsShown, class Draw>
    void Add(const Group& group, IsShown isShown, Draw draw) {
        int passedOver = m_Offset;
        std::size_t k = 0;
        for (const auto& entry : group) {
            const std::size_t position = k++;
            if (m_Y < kHighestLane) return;
            if (!isShown(position) || passedOver-- > 0) continue;
            draw(NameOf(entry), position, m_Y);
            m_Y -= kLanePitch;
        }
        m_Offset -= static_cast<int>(group.size());
    }

private:
    int m_Y;
    int m_Offset;  // lanes still to be passed over
};

void DrawLabel(CDC* dc, const std::string& name, int left, int y) {
    dc->TextOut((left - dc->GetTextExtent(name).cx) / 2, y - kLabelHeight, name);
}

// Hands out every record that can show, and of simple columns with several records the column as
// well, ahead of its last record. Stops where `each` says that nothing more can be seen.
template <class Each, class Simple>
void Walk(const std::vector<RecordColumn>& columns, int first, int leading, int right, Each each,
          Simple simple) {
    for (int i = first; i < first + leading; ++i)
        if (!each(i)) return;
    for (std::size_t c = 0; c < columns.size(); ++c) {
        const RecordColumn& column = columns[c];
        const bool isSimple = column.m_IsSimple && column.m_X <= right;
        if (isSimple && column.m_Last - column.m_First > 1) simple(c);
        for (int i = isSimple ? column.m_Last - 1 : column.m_First; i < column.m_Last; ++i) each(i);
    }
}

}  // namespace

void CMcuView::DrawJobList(CDC* dc, int left, int bottom) {
    const McuJobList& list = Jobs();
    const auto all = [](std::size_t) { return true; };
    const auto shownBy = [](const std::vector<bool>& flags) {
        return [&flags](std::size_t k) { return k < flags.size() && flags[k]; };
    };
    LaneStack lanes(bottom, m_LaneOffset);
    lanes.Add(m_RelativeList, all,
              [&](const std::string& name, std::size_t, int y) { DrawJob(dc, name, left, y); });
    if (m_ShowCustomLogging && m_ContextSwitch) {
        lanes.Add(list.m_CustomJobsCS, shownBy(list.m_CustomShown),
                  [&](const std::string& name, std::size_t k, int y) {
                      DrawCustomJobCS(dc, name, left, y, m_CustomCSFirst[k], m_CustomCSLast[k]);
                  });
    } else if (m_ShowCustomLogging) {
        lanes.Add(
            list.m_CustomNames, shownBy(list.m_CustomShown),
            [&](const std::string& name, std::size_t, int y) { DrawCustomJob(dc, name, left, y); });
    }
    lanes.Add(
        list.m_SourceMarkNames, shownBy(list.m_SourceMarkShown),
        [&](const std::string& name, std::size_t, int y) { DrawSourceMark(dc, name, left, y); });
    lanes.Add(list.m_HWJobs, all, [&](const std::string& name, std::size_t k, int y) {
        DrawHWJob(dc, name, left, y, m_HWFirst[k], m_HWLast[k]);
    });
}

void CMcuView::DrawJob(CDC* dc, std::string name, int left, int y) {
    const vesk::SavedDrawing saved(dc);
    const COLORREF color =
        global_vesk_doc_ptr ? global_vesk_doc_ptr->m_JobColor.Lookup(vesk::ColorKey(name)) : 0;
    CPen pen(PS_SOLID, 1, color);
    dc->SelectObject(&pen);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    JobStripIndex& index = Index().Jobs();
    index.Show(scale, m_JobFirst, m_JobLast);
    const int number = index.Names().Find(name);
    const std::uint64_t logEnd = Jobs().m_EndTime;
    WaveLane lane(dc, scale, left, CanvasRight(), y - kLowLevel, color);
    const auto draw = [&](int i) {
        const McuJob& job = index.Records()[static_cast<std::size_t>(i)];
        const std::uint64_t end = EffectiveEnd(index.Records(), i, logEnd);
        if (end < m_TimeOffset) return true;
        const std::uint64_t start = std::max(job.m_StartTime, m_TimeOffset);
        if (index.Names().At(i) == number) return lane.High(start, end);
        lane.Low(end);
        return true;
    };
    Walk(index.Columns(), m_JobFirst, index.Leading(), CanvasRight(), draw, [&](std::size_t c) {
        lane.Column(index.Columns()[c].m_X, number >= 0 && index.HasBeforeLast(c, number));
    });
    lane.Finish();
    DrawLabel(dc, name, left, y);
}

void CMcuView::DrawHWJob(CDC* dc, std::string name, int left, int y, int first, int last) {
    vesk::RecordOrder* order = Index().Events(name);
    if (!order) return;
    const vesk::SavedDrawing saved(dc);
    CPen pen(PS_SOLID, 1, RGB(0, 0, 0));
    dc->SelectObject(&pen);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    const std::vector<McuJob>& events = Jobs().m_HWJobs.find(name)->second;
    std::vector<RecordColumn> columns;
    const int leading = order->FindColumns(scale, first, last, columns);
    WaveLane lane(dc, scale, left, CanvasRight(), y - kLowLevel, RGB(0, 0, 0));
    const auto draw = [&](int i) {
        const std::uint64_t end = EffectiveEnd(events, i, Jobs().m_EndTime);
        if (end < m_TimeOffset) return true;
        const std::uint64_t start = events[static_cast<std::size_t>(i)].m_StartTime;
        return lane.High(std::max(start, m_TimeOffset), end);
    };
    Walk(columns, first, leading, CanvasRight(), draw,
         [&](std::size_t c) { lane.Column(columns[c].m_X, true); });
    lane.Finish();
    DrawLabel(dc, name, left, y);
}

void CMcuView::DrawSourceMark(CDC* dc, std::string name, int left, int y) {
    const vesk::SavedDrawing saved(dc);
    CPen pen(PS_SOLID, 1, kMarkColor);
    CBrush brush(kMarkColor);
    dc->SelectObject(&pen);
    dc->SelectObject(&brush);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    JobStripIndex& index = Index().Marks();
    index.Show(scale, m_MarkFirst, m_MarkLast);
    const int number = index.Names().Find(name);
    WaveLane lane(dc, scale, left, CanvasRight(), y - kLowLevel, kMarkColor);
    const auto tickAt = [&](int i) {
        const std::uint64_t time = index.Records()[static_cast<std::size_t>(i)].m_StartTime;
        if (time < m_TimeOffset || index.Names().At(i) != number) return true;
        return lane.Tick(time);
    };
    for (int i = m_MarkFirst; i < m_MarkFirst + index.Leading(); ++i)
        if (!tickAt(i)) break;
    for (std::size_t c = 0; number >= 0 && c < index.Columns().size(); ++c) {
        const RecordColumn& column = index.Columns()[c];
        const bool isMarked =
            index.HasBeforeLast(c, number) || index.Names().At(column.m_Last - 1) == number;
        if (isMarked) lane.TickAt(column.m_X);
    }
    lane.Finish();
    DrawLabel(dc, name, left, y);
}
