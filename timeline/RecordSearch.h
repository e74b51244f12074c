#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "log/McuJob.h"

namespace vesk {

class CallIndex;
class JobStripIndex;
class NameColumn;

// Finds records of a name near a time, as a walk from record to record would: where records ascend
// in start, their number does not matter. Borrows the index.
class RecordSearch {
public:
    // Among records of several names. Case doesn't count; the empty name fits all.
    RecordSearch(const JobStripIndex&, const std::string& name);
    // Among the calls of one function, all of which fit.
    explicit RecordSearch(const CallIndex&);

    // The first fitting record from index `from` on that starts after time, or -1.
    int FirstAfter(int from, std::uint64_t time) const;
    // The last fitting record up to index `last` that starts before time, or -1.
    int LastBefore(int last, std::uint64_t time) const;
    // First and last fitting record with an index in [first, last), or -1.
    int FirstOf(int first, int last) const;
    int LastOf(int first, int last) const;

    int Count() const { return static_cast<int>(m_Records.size()); }
    std::uint64_t StartOf(int record) const {
        return m_Records[static_cast<std::size_t>(record)].m_StartTime;
    }

private:
    const std::vector<McuJob>& m_Records;
    const NameColumn* m_Names = nullptr;  // null: every record fits
    std::vector<std::uint64_t> m_Set;     // names that fit
    bool m_IsAscending;
};

}  // namespace vesk
