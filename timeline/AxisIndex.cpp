#include "timeline/AxisIndex.h"

#include "log/McuJobList.h"

namespace vesk {

namespace {

DigitPyramid::Digits CountsOf(const McuJob* jobs) {
    return [jobs](int first, int last, std::uint8_t* digits) {
        for (int i = first; i < last; ++i) *digits++ = DigitsOf(jobs[i].m_TimeCount);
    };
}

DigitPyramid::Digits NewFramesOf(const McuJob* jobs) {
    return [jobs](int first, int last, std::uint8_t* digits) {
        std::int32_t before = first == 0 ? -1 : jobs[first - 1].m_TimeStamp;
        for (int i = first; i < last; ++i) {
            const std::int32_t frame = jobs[i].m_TimeStamp;
            *digits++ = frame == before ? DigitPyramid::kNoNumber : DigitsOf(frame);
            before = frame;
        }
    };
}

}  // namespace

AxisIndex::AxisIndex(const McuJobList& list)
    : m_Counts(list.GetSize(), CountsOf(list.data())),
      m_NewFrames(list.GetSize(), NewFramesOf(list.data())) {}

}  // namespace vesk
