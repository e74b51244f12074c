#include "timeline/CustomIndex.h"

#include <utility>

#include "log/McuJobList.h"

namespace vesk {

SegmentIndex& CustomIndex::Segments() {
    if (!m_Segments) m_Segments = std::make_unique<SegmentIndex>(m_List.m_CustomJobs);
    return *m_Segments;
}

CallIndex* CustomIndex::Calls(const std::string& function) {
    const auto known = m_Calls.find(function);
    if (known != m_Calls.end()) return &known->second;
    const auto lane = m_List.m_CustomJobsCS.find(function);
    if (lane == m_List.m_CustomJobsCS.end()) return nullptr;
    return &m_Calls.try_emplace(function, lane->second, m_List.m_EndTime).first->second;
}

SliceIndex& CustomIndex::Slices(const NameColumn& jobNames) {
    if (m_Slices) return *m_Slices;
    std::vector<CallIndex*> lanes;
    for (const auto& [function, calls] : m_List.m_CustomJobsCS) lanes.push_back(Calls(function));
    m_Slices = std::make_unique<SliceIndex>(m_List, jobNames, std::move(lanes));
    return *m_Slices;
}

}  // namespace vesk
