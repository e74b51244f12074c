#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "log/McuJob.h"
#include "timeline/DigitPyramid.h"

namespace vesk {

// The numbers that label jobs: which are short enough for the room that is left, in any run of
// jobs. An eighth of a byte a job.
class AxisIndex {
public:
    // The jobs are borrowed. All of them are then added, in order, each time but the last a
    // multiple of DigitPyramid::kGroup of them.
    explicit AxisIndex(const std::vector<McuJob>& jobs);
    void Add(std::span<const McuJob>);
    void Finish();

    const DigitPyramid& Counts() const { return m_Counts; }
    // Only jobs whose frame number differs from that of the job before; -1 stands before the first.
    const DigitPyramid& NewFrames() const { return m_NewFrames; }

private:
    const std::vector<McuJob>& m_Jobs;
    DigitPyramid m_Counts;
    DigitPyramid m_NewFrames;
    std::int32_t m_LastFrame = -1;
};

}  // namespace vesk
