#include "timeline/TimelineIndex.h"

#include "log/McuJobList.h"
#include "timeline/AxisIndex.h"
#include "timeline/CurveIndex.h"
#include "timeline/CustomIndex.h"
#include "timeline/EventLane.h"
#include "timeline/FrameIndex.h"
#include "timeline/JobLanes.h"
#include "timeline/JobStripIndex.h"
#include "timeline/RecordHits.h"

namespace vesk {

namespace {

// The part, which is made from a whole list or one of its containers when it is first asked for.
template <class Part, class Source>
Part& Built(std::unique_ptr<Part>& part, const Source& source) {
    if (!part) part = std::make_unique<Part>(source);
    return *part;
}

}  // namespace

TimelineIndex::TimelineIndex(const McuJobList& list) : m_List(list) {}
TimelineIndex::~TimelineIndex() = default;

JobStripIndex& TimelineIndex::Jobs() {
    if (!m_Jobs) {
        m_Axes = std::make_unique<AxisIndex>(m_List);
        m_Jobs = std::make_unique<JobStripIndex>(m_List, m_Axes.get());
    }
    return *m_Jobs;
}

JobStripIndex& TimelineIndex::Marks() {
    return Built(m_Marks, m_List.m_SourceMarks);
}

JobLanes& TimelineIndex::Lanes() {
    if (!m_Lanes) m_Lanes = std::make_unique<JobLanes>(Jobs(), m_List.m_EndTime);
    return *m_Lanes;
}

EventLane* TimelineIndex::Events(const std::string& name) {
    const auto events = m_List.m_HWJobs.find(name);
    if (events == m_List.m_HWJobs.end()) return nullptr;
    auto& lane = m_Events[name];
    if (!lane) lane = std::make_unique<EventLane>(events->second, m_List.m_EndTime);
    return lane.get();
}

CurveIndex& TimelineIndex::Curves() {
    return Built(m_Curves, m_List);
}

CustomIndex& TimelineIndex::Custom() {
    return Built(m_Custom, m_List);
}

const AxisIndex& TimelineIndex::Axes() {
    Jobs();
    return *m_Axes;
}

FrameIndex& TimelineIndex::Frames() {
    return Built(m_Frames, m_List);
}

const RecordHits& TimelineIndex::Hits(const std::vector<McuJob>& container) {
    auto& hits = m_Hits[&container];
    if (!hits) hits = std::make_unique<RecordHits>(container, m_List.m_EndTime);
    return *hits;
}

}  // namespace vesk
