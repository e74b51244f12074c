#pragma once

#include <cstdint>
#include <vector>

#include "timeline/RecordOrder.h"

namespace vesk {

// How the last record of a column goes on, in pixels from the column on.
struct ColumnEnd {
    std::int64_t m_Length;  // 0 for less than a pixel
    int m_To;               // the pixel it ends on, at most the canvas's right edge
    bool m_IsShown;         // does not end before the left edge
    bool m_EndsInOrder;     // nor before it starts
};

// The ends of all columns of a view: worked out once, whatever number of lanes asks for them.
class ColumnEnds {
public:
    // Times of columns and records of one sequence; the log's end is that of a last record without
    // one of its own.
    void Find(const std::vector<McuJob>& records, const std::vector<RecordColumn>& columns,
              const TimeScale&, int right, std::uint64_t logEnd);
    const ColumnEnd& operator[](std::size_t column) const { return m_Ends[column]; }

private:
    std::vector<ColumnEnd> m_Ends;
};

}  // namespace vesk
