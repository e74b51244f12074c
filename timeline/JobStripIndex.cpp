#include "timeline/JobStripIndex.h"

#include <algorithm>
#include <span>

#include "timeline/AxisIndex.h"

namespace vesk {

namespace {

constexpr std::size_t kChunk = 256;  // records that stay in the nearest cache
constexpr std::size_t kAhead = 16;   // columns

}  // namespace

JobStripIndex::JobStripIndex(const std::vector<McuJob>& records, AxisIndex* labels)
    : m_Records(records), m_Order(records) {
    m_Names.Reserve(records.size());
    const std::span<const McuJob> all(records);
    for (std::size_t i = 0; i < all.size(); i += kChunk) {
        const std::span<const McuJob> chunk = all.subspan(i, std::min(kChunk, all.size() - i));
        m_Names.Add(chunk);
        m_Order.Add(chunk);
        if (labels) labels->Add(chunk);
    }
    m_Names.Finish();
    if (labels) labels->Finish();
}

bool JobStripIndex::Show(const TimeScale& scale, int first, int last) {
    if (m_Scale == scale && m_First == first && m_Last == last) return false;
    m_Scale = scale;
    m_First = first;
    m_Last = last;
    m_Leading = m_Order.FindColumns(scale, first, last, m_Columns);
    FindLastNames();
    m_Sets.clear();
    return true;
}

void JobStripIndex::FindLastNames() {
    m_LastNames.resize(m_Columns.size());
    for (std::size_t i = 0; i < m_Columns.size(); ++i) {
        const RecordColumn& ahead = m_Columns[std::min(i + kAhead, m_Columns.size() - 1)];
        m_Names.Prefetch(ahead.m_Last - 1);
        m_LastNames[i] = m_Names.At(m_Columns[i].m_Last - 1);
    }
}

void JobStripIndex::CollectNames() const {
    m_Sets.assign(m_Columns.size() * m_Names.Words(), 0);
    for (std::size_t i = 0; i < m_Columns.size(); ++i) {
        const RecordColumn& ahead = m_Columns[std::min(i + kAhead, m_Columns.size() - 1)];
        m_Names.Prefetch(ahead.m_First, ahead.m_Last);
        m_Names.Collect(m_Columns[i].m_First, m_Columns[i].m_Last - 1,
                        &m_Sets[i * m_Names.Words()]);
    }
}

}  // namespace vesk
