// Lanes: square waves of tasks, interrupts and hardware events, ticks of source marks.
#include <algorithm>

#include "host/VESKUIDoc.h"
#include "log/McuJobList.h"
#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "timeline/CMcuView.h"
#include "timeline/EventLane.h"
#include "timeline/JobLanes.h"
#include "timeline/SavedDrawing.h"
#include "timeline/TimelineIndex.h"
#include "timeline/WaveLane.h"

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

void DrawLabel(CMcuView& view, CDC* dc, const std::string& name, int left, int y) {
    const int width = view.Index().Names().Of(*dc, name).Width();
    dc->TextOut((left - width) / 2, y - kLabelHeight, name);
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
    vesk::JobLanes& lanes = Index().Lanes();
    lanes.Show(scale, m_JobFirst, m_JobLast, CanvasRight());
    WaveLane lane(dc, scale, left, CanvasRight(), y - kLowLevel, color);
    lanes.Draw(lane, lanes.Index().Names().Find(name));
    lane.Finish();
    DrawLabel(*this, dc, name, left, y);
}

void CMcuView::DrawHWJob(CDC* dc, std::string name, int left, int y, int first, int last) {
    vesk::EventLane* events = Index().Events(name);
    if (!events) return;
    const vesk::SavedDrawing saved(dc);
    CPen pen(PS_SOLID, 1, RGB(0, 0, 0));
    dc->SelectObject(&pen);
    const TimeScale scale{m_TimeOffset, m_PixelsPerQbit, left};
    events->Show(scale, first, last, CanvasRight());
    WaveLane lane(dc, scale, left, CanvasRight(), y - kLowLevel, RGB(0, 0, 0));
    events->Draw(lane);
    lane.Finish();
    DrawLabel(*this, dc, name, left, y);
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
        const bool isMarked = index.HasBeforeLast(c, number) || index.LastName(c) == number;
        if (isMarked) lane.TickAt(column.m_X);
    }
    lane.Finish();
    DrawLabel(*this, dc, name, left, y);
}
