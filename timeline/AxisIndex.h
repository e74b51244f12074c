#pragma once

#include "timeline/DigitPyramid.h"

class McuJobList;

namespace vesk {

// The numbers that label jobs: which are short enough for the room that is left, in any run of
// jobs. Borrows the list, which must not change meanwhile.
class AxisIndex {
public:
    explicit AxisIndex(const McuJobList&);

    DigitPyramid& Counts() { return m_Counts; }
    // Only jobs whose frame number differs from that of the job before; -1 stands before the first.
    DigitPyramid& NewFrames() { return m_NewFrames; }

private:
    DigitPyramid m_Counts;
    DigitPyramid m_NewFrames;
};

}  // namespace vesk
