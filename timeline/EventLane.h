#pragma once

#include <cstdint>
#include <vector>

#include "timeline/ColumnEnds.h"
#include "timeline/RecordOrder.h"

namespace vesk {

class WaveLane;

// The lane of the hardware events of one name. Borrows the events.
class EventLane {
public:
    EventLane(const std::vector<McuJob>& events, std::uint64_t logEnd);

    // Turns to events [first, last) as one span shows them on a canvas. Costs nothing while that
    // stays the same.
    void Show(const TimeScale&, int first, int last, int right);
    void Draw(WaveLane&) const;

private:
    bool DrawEvent(WaveLane&, int event) const;
    void DrawColumn(WaveLane&, std::size_t column) const;

    const std::vector<McuJob>& m_Events;
    const std::uint64_t m_LogEnd;
    RecordOrder m_Order;
    TimeScale m_Scale;
    int m_First = 0;
    int m_Last = 0;
    int m_Right = 0;
    int m_Leading = 0;
    std::vector<RecordColumn> m_Columns;
    ColumnEnds m_Ends;
};

}  // namespace vesk
