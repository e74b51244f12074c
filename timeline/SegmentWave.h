#pragma once

#include <cstdint>

#include "log/McuJob.h"
#include "timeline/LaneInk.h"
#include "timeline/TimeScale.h"

class CDC;

namespace vesk {

// Draws the lane of one function from the segments of all functions, left to right, with the
// context's pen and brush: high while the function or one that it has called runs, low otherwise.
// The level may be drawn later than it is told; Finish ends the lane. Borrows the context.
class SegmentWave {
public:
    // The lane's base line is y, its colour that of pen and brush. isHigh tells whether the
    // function runs before the first segment.
    SegmentWave(CDC*, const TimeScale&, int left, int right, int y, std::uint32_t color,
                bool isHigh);

    // A segment of the function, with its effective end. False, and nothing is drawn, if it lies
    // beyond what can be seen.
    bool Own(const McuJob& segment, std::uint64_t end);
    // A segment that ended left of the view.
    void OwnBefore(const McuJob& segment) { SetHigh(segment); }
    // A segment of another function, up to its effective end.
    void Other(std::uint64_t end);

    void OtherTo(int x);  // the pixel of that

    // The lane may go on to a column on the canvas that is not left of where it has come to.
    bool CanGoOnTo(int x) const { return x >= m_X && x <= m_Right; }
    // Segments of other functions without a pixel of their own, in one column.
    void Skip(int x) { m_X = x; }
    // Segments, some of them of the function, without a pixel of their own, in one column: whether
    // one has an edge, and which level they leave.
    void Column(int x, bool hasEdges, bool isHigh);

    void Finish();

private:
    void LevelTo(int x);
    void DrawLevel();
    void SetHigh(const McuJob& segment) { SetHigh((segment.m_Flags & kClosedLastCall) == 0); }
    void SetHigh(bool isHigh);
    // Draws the high level of a segment, and moves there. False if it leaves the canvas.
    bool HighTo(int x, std::int64_t width);

    CDC* m_DC;
    LaneInk m_Ink;
    const TimeScale m_Scale;
    const int m_Left;
    const int m_Right;
    const int m_Y;
    bool m_IsHigh;
    int m_X;     // where the lane has come to
    int m_From;  // its level is not drawn yet from here on
};

}  // namespace vesk
