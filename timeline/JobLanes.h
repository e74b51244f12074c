#pragma once

#include <cstdint>

#include "timeline/ColumnEnds.h"
#include "timeline/JobStripIndex.h"

namespace vesk {

class WaveLane;

// The jobs of a view by pixel column, with all that their strip and the lanes of all names have in
// common. Borrows the index.
class JobLanes {
public:
    JobLanes(JobStripIndex& index, std::uint64_t logEnd) : m_Index(index), m_LogEnd(logEnd) {}

    // Turns to jobs [first, last) as one span shows them on a canvas.
    void Show(const TimeScale&, int first, int last, int right);

    const JobStripIndex& Index() const { return m_Index; }
    const ColumnEnd& EndOf(std::size_t column) const { return m_Ends[column]; }

    // Draws the wave of one name, by its number; negative for a name without a job.
    void Draw(WaveLane&, int name) const;

private:
    bool DrawJob(WaveLane&, int job, int name) const;
    void DrawColumn(WaveLane&, std::size_t column, int name) const;

    JobStripIndex& m_Index;
    const std::uint64_t m_LogEnd;
    ColumnEnds m_Ends;
    TimeScale m_Scale;
    int m_First = 0;
    int m_Last = 0;
    int m_Right = 0;
};

}  // namespace vesk
