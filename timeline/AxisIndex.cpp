#include "timeline/AxisIndex.h"

#include <algorithm>

namespace vesk {

namespace {

std::uint32_t SizeOf(std::int32_t frame) {
    const auto bits = static_cast<std::uint32_t>(frame);
    return frame < 0 ? 0 - bits : bits;
}

constexpr std::uint32_t kNoFrame = UINT32_MAX;  // no frame number is that large

std::uint8_t DigitsOfNewFrame(std::uint32_t size) {
    return size == kNoFrame ? DigitPyramid::kNoNumber : DigitsOf(size);
}

}  // namespace

AxisIndex::AxisIndex(const std::vector<McuJob>& jobs)
    : m_Jobs(jobs),
      m_Counts([&jobs](int i) { return DigitsOf(jobs[static_cast<std::size_t>(i)].m_TimeCount); }),
      m_NewFrames([&jobs](int i) {
          const auto at = static_cast<std::size_t>(i);
          const std::int32_t before = i == 0 ? -1 : jobs[at - 1].m_TimeStamp;
          const std::int32_t frame = jobs[at].m_TimeStamp;
          return DigitsOfNewFrame(frame == before ? kNoFrame : SizeOf(frame));
      }) {
    m_Counts.Reserve(jobs.size());
    m_NewFrames.Reserve(jobs.size());
}

// Of numbers without signs, the least one has the least digits.
void AxisIndex::Add(std::span<const McuJob> jobs) {
    for (std::size_t i = 0; i < jobs.size(); i += DigitPyramid::kGroup) {
        std::uint32_t leastCount = UINT32_MAX;
        std::uint32_t leastFrame = kNoFrame;
        std::int32_t before = m_LastFrame;
        const std::size_t count = std::min<std::size_t>(DigitPyramid::kGroup, jobs.size() - i);
        for (const McuJob& job : jobs.subspan(i, count)) {
            leastCount = std::min(leastCount, job.m_TimeCount);
            const std::int32_t frame = job.m_TimeStamp;
            if (frame != before) leastFrame = std::min(leastFrame, SizeOf(frame));
            before = frame;
        }
        m_LastFrame = before;
        m_Counts.Add(DigitsOf(leastCount));
        m_NewFrames.Add(DigitsOfNewFrame(leastFrame));
    }
}

void AxisIndex::Finish() {
    m_Counts.Finish(static_cast<int>(m_Jobs.size()));
    m_NewFrames.Finish(static_cast<int>(m_Jobs.size()));
}

}  // namespace vesk
