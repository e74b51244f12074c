#include "timeline/CustomIndex.h"

#include <iterator>

#include "log/McuJobList.h"

namespace vesk {

SegmentIndex& CustomIndex::Segments() {
    if (!m_Segments)
        m_Segments = std::make_unique<SegmentIndex>(m_List.m_CustomJobs, m_List.m_EndTime);
    return *m_Segments;
}

CallIndex* CustomIndex::Calls(const std::string& function) {
    const auto known = m_Calls.find(function);
    if (known != m_Calls.end()) return &known->second;
    const auto lane = m_List.m_CustomJobsCS.find(function);
    if (lane == m_List.m_CustomJobsCS.end()) return nullptr;
    const auto place = std::distance(m_List.m_CustomJobsCS.begin(), lane);
    return &m_Calls.try_emplace(function, static_cast<int>(place), lane->second, m_List.m_EndTime)
                .first->second;
}

CallOrder& CustomIndex::Order() {
    if (!m_Order) m_Order = std::make_unique<CallOrder>(m_List);
    return *m_Order;
}

SliceIndex& CustomIndex::Slices(JobStripIndex& jobs) {
    if (!m_Slices) m_Slices = std::make_unique<SliceIndex>(m_List, jobs, Order());
    return *m_Slices;
}

}  // namespace vesk
