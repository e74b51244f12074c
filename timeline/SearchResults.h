#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "log/McuJob.h"

class McuJobList;

namespace vesk {

// What is searched for a name: tasks and interrupts, function segments, function calls with their
// context switch time, or source marks.
enum class SearchTarget { kJobs, kSegments, kCalls, kMarks };

// All records of one kind whose name fits, in ascending start; records with the same start stay in
// the order of their container, calls in that of their lanes. Borrows the list, which must not
// change meanwhile, and keeps eight bytes a hit.
class SearchResults {
public:
    // Asked once for each distinct name, whatever the number of records.
    using Fits = std::function<bool(const std::string& name)>;

    SearchResults(const McuJobList&, SearchTarget, const Fits&);

    int Count() const { return static_cast<int>(m_Hits.size()); }
    // hit is from 0 to below Count().
    const McuJob& At(int hit) const { return *m_Hits[static_cast<std::size_t>(hit)]; }
    // The first hit that starts at or after time (QBit); Count() if none does.
    int FirstFrom(std::uint64_t time) const;

private:
    void AddRecords(const std::vector<McuJob>&, const Fits&);
    void AddCalls(const McuJobList&, const Fits&);
    void Sort();

    std::vector<const McuJob*> m_Hits;
};

}  // namespace vesk
