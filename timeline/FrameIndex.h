#pragma once

#include <cstdint>
#include <vector>

#include "log/McuJob.h"
#include "timeline/Pyramid.h"

namespace vesk {

// Finds where the frame numbers of a row of jobs, which may fall too, pass a value. Keeps least
// and greatest number of 64 jobs, of 64 such groups, and so on: 1 byte for 8 jobs. A group is
// worked out when it is first looked at, so that a near frame is found at once.
class FrameIndex {
public:
    explicit FrameIndex(const std::vector<McuJob>& jobs);  // borrowed

    // The last job before an index whose frame number is below `frame`; -1 if there is none.
    int LastBelow(int before, std::int32_t frame);
    // The first job from an index on whose frame number is `frame` or above; the number of jobs if
    // there is none.
    int FirstFrom(int first, std::int32_t frame);

private:
    struct Range {
        std::int32_t m_Least = INT32_MAX;  // above the greatest: not worked out yet
        std::int32_t m_Greatest = INT32_MIN;

        void Add(const Range& other);
    };

    Pyramid Shape() const;
    const Range& Of(int level, int group);
    Range Below(int level, int place);

    const std::vector<McuJob>& m_Jobs;
    std::vector<std::vector<Range>> m_Levels;
};

}  // namespace vesk
