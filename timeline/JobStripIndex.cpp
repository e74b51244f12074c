#include "timeline/JobStripIndex.h"

namespace vesk {

JobStripIndex::JobStripIndex(const std::vector<McuJob>& records)
    : m_Records(records), m_Order(records) {
    m_Names.Reserve(records.size());
    for (const McuJob& record : records) {
        m_Order.Add(record);
        m_Names.Add(record.m_Name);
    }
    m_Names.Finish();
}

void JobStripIndex::Show(const TimeScale& scale, int first, int last) {
    const bool isSame = m_Scale.m_Offset == scale.m_Offset && m_Scale.m_Left == scale.m_Left &&
                        m_Scale.m_PixelsPerQbit == scale.m_PixelsPerQbit && m_First == first &&
                        m_Last == last;
    if (isSame) return;
    m_Scale = scale;
    m_First = first;
    m_Last = last;
    m_Leading = m_Order.FindColumns(scale, first, last, m_Columns);
    m_Sets.assign(m_Columns.size() * m_Names.Words(), 0);
    for (std::size_t i = 0; i < m_Columns.size(); ++i)
        m_Names.Collect(m_Columns[i].m_First, m_Columns[i].m_Last - 1,
                        &m_Sets[i * m_Names.Words()]);
}

}  // namespace vesk
