#include "timeline/JobLanes.h"

#include <algorithm>

#include "timeline/WaveLane.h"

namespace vesk {

void JobLanes::Show(const TimeScale& scale, int first, int last, int right) {
    const bool isNew = m_Index.Show(scale, first, last) || m_Right != right || m_Scale != scale ||
                       m_First != first || m_Last != last;
    if (!isNew) return;
    m_Scale = scale;
    m_First = first;
    m_Last = last;
    m_Right = right;
    m_Ends.Find(m_Index.Records(), m_Index.Columns(), scale, right, m_LogEnd);
}

bool JobLanes::DrawJob(WaveLane& lane, int job, int name) const {
    const std::uint64_t end = EffectiveEnd(m_Index.Records(), job, m_LogEnd);
    if (end < m_Scale.m_Offset) return true;
    const std::uint64_t start = m_Index.Records()[static_cast<std::size_t>(job)].m_StartTime;
    if (m_Index.Names().At(job) == name) return lane.High(std::max(start, m_Scale.m_Offset), end);
    lane.Low(end);
    return true;
}

// Of a simple column only its last job can have a length. The others are an edge at most.
void JobLanes::DrawColumn(WaveLane& lane, std::size_t at, int name) const {
    const RecordColumn& column = m_Index.Columns()[at];
    if (!column.m_IsSimple || column.m_X > m_Right) {
        for (int i = column.m_First; i < column.m_Last; ++i) DrawJob(lane, i, name);
        return;
    }
    if (column.m_Last - column.m_First > 1)
        lane.Column(column.m_X, name >= 0 && m_Index.HasBeforeLast(at, name));
    const ColumnEnd& end = m_Ends[at];
    if (!end.m_IsShown) return;
    if (m_Index.LastName(at) == name) {
        lane.HighAt(column.m_X, end.m_Length);
    } else {
        lane.LowTo(end.m_To);
    }
}

void JobLanes::Draw(WaveLane& lane, int name) const {
    for (int i = m_First; i < m_First + m_Index.Leading(); ++i)
        if (!DrawJob(lane, i, name)) return;
    for (std::size_t i = 0; i < m_Index.Columns().size(); ++i) DrawColumn(lane, i, name);
}

}  // namespace vesk
