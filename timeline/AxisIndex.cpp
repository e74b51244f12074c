#include "timeline/AxisIndex.h"

#include "log/McuJobList.h"

namespace vesk {

namespace {

std::uint8_t NewFrameDigits(const McuJob* jobs, int i) {
    const std::int32_t before = i == 0 ? -1 : jobs[i - 1].m_TimeStamp;
    return jobs[i].m_TimeStamp == before ? DigitPyramid::kNoNumber : DigitsOf(jobs[i].m_TimeStamp);
}

}  // namespace

AxisIndex::AxisIndex(const McuJobList& list)
    : m_Counts(list.GetSize(),
               [jobs = list.data()](int i) { return DigitsOf(jobs[i].m_TimeCount); }),
      m_NewFrames(list.GetSize(), [jobs = list.data()](int i) { return NewFrameDigits(jobs, i); }) {
}

}  // namespace vesk
