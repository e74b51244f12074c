#include "timeline/EventLane.h"

#include <algorithm>

#include "timeline/WaveLane.h"

namespace vesk {

EventLane::EventLane(const std::vector<McuJob>& events, std::uint64_t logEnd)
    : m_Events(events), m_LogEnd(logEnd), m_Order(events) {
    m_Order.AddAll();
}

void EventLane::Show(const TimeScale& scale, int first, int last, int right) {
    if (m_Scale == scale && m_First == first && m_Last == last && m_Right == right) return;
    m_Scale = scale;
    m_First = first;
    m_Last = last;
    m_Right = right;
    m_Leading = m_Order.FindColumns(scale, first, last, m_Columns);
    m_Ends.Find(m_Events, m_Columns, scale, right, m_LogEnd);
}

bool EventLane::DrawEvent(WaveLane& lane, int event) const {
    const std::uint64_t end = EffectiveEnd(m_Events, event, m_LogEnd);
    if (end < m_Scale.m_Offset) return true;
    const std::uint64_t start = m_Events[static_cast<std::size_t>(event)].m_StartTime;
    return lane.High(std::max(start, m_Scale.m_Offset), end);
}

void EventLane::DrawColumn(WaveLane& lane, std::size_t at) const {
    const RecordColumn& column = m_Columns[at];
    if (!column.m_IsSimple || column.m_X > m_Right) {
        for (int i = column.m_First; i < column.m_Last; ++i) DrawEvent(lane, i);
        return;
    }
    if (column.m_Last - column.m_First > 1) lane.Column(column.m_X, true);
    if (m_Ends[at].m_IsShown) lane.HighAt(column.m_X, m_Ends[at].m_Length);
}

void EventLane::Draw(WaveLane& lane) const {
    for (int i = m_First; i < m_First + m_Leading; ++i)
        if (!DrawEvent(lane, i)) return;
    for (std::size_t i = 0; i < m_Columns.size(); ++i) DrawColumn(lane, i);
}

}  // namespace vesk
