#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "timeline/MeasuredText.h"

class McuJob;
class McuJobList;

namespace vesk {

class AxisIndex;
class CurveIndex;
class CustomIndex;
class EventLane;
class FrameIndex;
class JobLanes;
class JobStripIndex;
class RecordHits;

// What the timeline derives from a log so that painting costs what the window shows. Each part is
// built when it is first asked for. Borrows the job list, which must not change meanwhile.
class TimelineIndex {
public:
    explicit TimelineIndex(const McuJobList&);
    ~TimelineIndex();

    const McuJobList& List() const { return m_List; }
    JobStripIndex& Jobs();   // names present in any run of jobs
    JobStripIndex& Marks();  // the same for source marks
    JobLanes& Lanes();       // the jobs as a view shows them
    // The hardware events of a name; null for a name without any.
    EventLane* Events(const std::string& name);
    CurveIndex& Curves();     // least and greatest extra values in any run of samples
    CustomIndex& Custom();    // segments and calls of functions
    const AxisIndex& Axes();  // numbers of jobs that are short enough for a label
    FrameIndex& Frames();     // where frame numbers pass a value
    // Which records of one of the list's containers can lie under a point.
    const RecordHits& Hits(const std::vector<McuJob>& container);
    MeasuredNames& Names() { return m_Names; }  // widths of names

private:
    const McuJobList& m_List;
    std::unique_ptr<JobStripIndex> m_Jobs;
    std::unique_ptr<JobStripIndex> m_Marks;
    std::unique_ptr<JobLanes> m_Lanes;
    std::map<std::string, std::unique_ptr<EventLane>> m_Events;
    std::unique_ptr<CurveIndex> m_Curves;
    std::unique_ptr<CustomIndex> m_Custom;
    std::unique_ptr<AxisIndex> m_Axes;
    std::unique_ptr<FrameIndex> m_Frames;
    std::map<const std::vector<McuJob>*, std::unique_ptr<RecordHits>> m_Hits;
    MeasuredNames m_Names;
};

}  // namespace vesk
