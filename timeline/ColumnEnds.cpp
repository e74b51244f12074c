#include "timeline/ColumnEnds.h"

#include <algorithm>

#include "platform/Prefetch.h"

namespace vesk {

namespace {

constexpr std::size_t kAhead = 16;  // columns

}  // namespace

void ColumnEnds::Find(const std::vector<McuJob>& records, const std::vector<RecordColumn>& columns,
                      const TimeScale& scale, int right, std::uint64_t logEnd) {
    m_Ends.clear();
    m_Ends.reserve(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const RecordColumn& ahead = columns[std::min(i + kAhead, columns.size() - 1)];
        Prefetch(&records[static_cast<std::size_t>(ahead.m_Last) - 1].m_StartTime);
        const int last = columns[i].m_Last - 1;
        const std::uint64_t start = records[static_cast<std::size_t>(last)].m_StartTime;
        const std::uint64_t end = EffectiveEnd(records, last, logEnd);
        const std::int64_t x = scale.PixelAt(end);
        const bool isOnCanvas = x >= 0 && x < right;
        m_Ends.push_back({end > start ? scale.Length(end - start) : 0,
                          isOnCanvas ? static_cast<int>(x) : right, end >= scale.m_Offset,
                          end >= start});
    }
}

}  // namespace vesk
