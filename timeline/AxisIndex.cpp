#include "timeline/AxisIndex.h"

#include <algorithm>
#include <cstdlib>

#include "log/McuJobList.h"

namespace vesk {

namespace {

// Of numbers without signs, the least one has the least digits.
DigitPyramid::LeastDigits CountsOf(const McuJob* jobs) {
    return [jobs](int first, int last) {
        std::uint32_t least = jobs[first].m_TimeCount;
        for (int i = first + 1; i < last; ++i) least = std::min(least, jobs[i].m_TimeCount);
        return DigitsOf(least);
    };
}

DigitPyramid::LeastDigits NewFramesOf(const McuJob* jobs) {
    return [jobs](int first, int last) {
        std::int64_t least = INT64_MAX;
        std::int32_t before = first == 0 ? -1 : jobs[first - 1].m_TimeStamp;
        for (int i = first; i < last; ++i) {
            const std::int32_t frame = jobs[i].m_TimeStamp;
            if (frame != before) least = std::min(least, std::abs(std::int64_t{frame}));
            before = frame;
        }
        return least == INT64_MAX ? DigitPyramid::kNoNumber : DigitsOf(least);
    };
}

}  // namespace

AxisIndex::AxisIndex(const McuJobList& list)
    : m_Counts(list.GetSize(), CountsOf(list.data())),
      m_NewFrames(list.GetSize(), NewFramesOf(list.data())) {}

}  // namespace vesk
