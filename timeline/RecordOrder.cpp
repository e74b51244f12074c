#include "timeline/RecordOrder.h"

#include <algorithm>

namespace vesk {

int LastBefore(const std::vector<McuJob>& records, std::uint64_t time, int near) {
    const auto isBefore = [&](int i) {
        return records[static_cast<std::size_t>(i)].m_StartTime < time;
    };
    return std::max(FindNear({0, static_cast<int>(records.size()), near + 1}, isBefore) - 1, 0);
}

void RecordOrder::Add(std::span<const McuJob> records) {
    std::uint64_t lastStart = m_LastStart;
    std::uint64_t lastEnd = m_LastEnd;
    bool isAscending = m_IsAscending;
    for (const McuJob& record : records) {
        const std::uint64_t start = record.m_StartTime;
        isAscending = isAscending && start >= lastStart;
        if (start < lastEnd) NoteOverlap(m_Blocks.Count() - 1);
        m_Blocks.Add(start);
        lastStart = start;
        lastEnd = std::max(record.m_EndTime, start);
    }
    m_LastStart = lastStart;
    m_LastEnd = lastEnd;
    m_IsAscending = isAscending;
}

void RecordOrder::NoteOverlap(int record) {
    const int block = record / TimeBlocks::kBlock;
    if (m_Overlaps.empty() || m_Overlaps.back() != block) m_Overlaps.push_back(block);
}

// A block with an overlap anywhere counts as out of order: it is only looked at more closely.
bool RecordOrder::EndInOrder(int first, int last) const {
    const auto overlap =
        std::lower_bound(m_Overlaps.begin(), m_Overlaps.end(), first / TimeBlocks::kBlock);
    return overlap == m_Overlaps.end() || *overlap > (last - 1) / TimeBlocks::kBlock;
}

int RecordOrder::FindColumns(const TimeScale& scale, int first, int last,
                             std::vector<RecordColumn>& columns) {
    columns.clear();
    if (first >= last) return 0;
    if (!m_IsAscending) return last - first;
    const auto start = [&](int i) -> const std::uint64_t& {
        return m_Records[static_cast<std::size_t>(i)].m_StartTime;
    };
    const int leading = m_Blocks.FirstFrom(first, last, scale.m_Offset, start) - first;
    m_Blocks.FindRuns(scale, first + leading, last, start, m_Runs);
    columns.reserve(m_Runs.size());
    for (const auto& [x, from, to] : m_Runs) {
        // None of the records but the last is longer than this, so none fills a pixel.
        const std::uint64_t longest = start(to - 1) - start(from);
        const bool isSimple = EndInOrder(from, to - 1) && scale.Length(longest) == 0;
        columns.push_back({x, from, to, isSimple});
    }
    return leading;
}

}  // namespace vesk
