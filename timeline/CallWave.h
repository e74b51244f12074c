#pragma once

#include <cstdint>

#include "log/McuJob.h"
#include "timeline/LaneInk.h"
#include "timeline/TimeScale.h"

class CDC;

namespace vesk {

// Draws the lane of one function from its calls, which may overlap, left to right, with the
// context's pen and brush. Finish ends the lane. Borrows the context.
class CallWave {
public:
    // The lane's base line is y, its colour that of pen and brush.
    CallWave(CDC*, const TimeScale&, int left, int right, int y, std::uint32_t color);

    // A call before the first one of the view ends at this time, right of the left edge.
    void BeginHigh(std::uint64_t end);
    // A call with its effective end. False, and nothing is drawn, if it or the latest end so far
    // lies beyond what can be seen.
    bool Take(const McuJob& call, std::uint64_t end);
    // Calls without a pixel of their own, in the column of the call taken last; the latest of their
    // ends.
    void Skip(int x, std::uint64_t latestEnd);
    // Calls that lie within a column right of that of the call taken last, and end by a time that
    // lies in it, too. False as for one call.
    bool Column(int x, std::uint64_t latestEnd);
    void Finish();

private:
    void LeadIn(int x);
    // What stands between the calls before and x. True if the call overlaps one of them.
    bool Approach(int x, std::uint64_t start);

    CDC* m_DC;
    LaneInk m_Ink;
    const TimeScale m_Scale;
    const int m_Left;
    const int m_Right;
    const int m_Y;
    int m_X;
    std::uint64_t m_LatestEnd = 0;
    bool m_BeginsHigh = false;
    bool m_IsFirst = true;
};

}  // namespace vesk
