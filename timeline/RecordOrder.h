#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "log/McuJob.h"
#include "timeline/TimeBlocks.h"

namespace vesk {

// When a record ends as far as the timeline is concerned: at its recorded end, else where the next
// record of its sequence starts; the last one of all at the end of the log.
inline std::uint64_t EffectiveEnd(const std::vector<McuJob>& records, int index,
                                  std::uint64_t logEnd) {
    const auto i = static_cast<std::size_t>(index);
    if (records[i].m_EndTime > records[i].m_StartTime) return records[i].m_EndTime;
    return i + 1 < records.size() ? records[i + 1].m_StartTime : logEnd;
}

// The last record that starts before a time, 0 if none does. The records ascend in start, and there
// are some; `near` is one that is likely close.
int LastBefore(const std::vector<McuJob>& records, std::uint64_t time, int near);

// The records of one pixel column that start at or after the left edge.
struct RecordColumn {
    int m_X;
    int m_First;
    int m_Last;       // exclusive
    bool m_IsSimple;  // all but the last one lie within the column, one after the other
};

// How a sequence of records lies in time, so that a column's records need not be looked at one by
// one. About half a byte per record.
class RecordOrder {
public:
    // The records are borrowed. All of them are then added, in order.
    explicit RecordOrder(const std::vector<McuJob>& records) : m_Records(records) {
        m_Blocks.Reserve(records.size());
    }
    void Add(std::span<const McuJob>);
    void AddAll() { Add(m_Records); }
    // Whether each record starts at or after the one before it.
    bool IsAscending() const { return m_IsAscending; }

    // Groups records [first, last) by column, left to right, up to where x leaves 31 bits. Gives
    // the number of records at the front that belong to no column because they start before the
    // left edge: these are to be looked at one by one. That is all of them where the records do
    // not ascend in start.
    int FindColumns(const TimeScale&, int first, int last, std::vector<RecordColumn>& columns);

    // Whether each record starts at or after the end of those before it.
    bool FollowEachOther() const { return m_IsAscending && m_Overlaps.empty(); }

private:
    void NoteOverlap(int record);
    bool EndInOrder(int first, int last) const;

    const std::vector<McuJob>& m_Records;
    TimeBlocks m_Blocks;
    std::vector<int> m_Overlaps;  // blocks with a record that ends after the next one's start
    std::uint64_t m_LastStart = 0;
    std::uint64_t m_LastEnd = 0;
    bool m_IsAscending = true;
    std::vector<ColumnRun> m_Runs;
};

}  // namespace vesk
