#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Options.h"
#include "log/McuJob.h"

namespace vesk {

// Which records a list shows: those with a wanted name that overlap the wanted time.
class RecordFilter {
public:
    explicit RecordFilter(const FilterOptions& options) : m_Options(options) {}

    // A record from start up to, but without, end overlaps the range from m_From up to, but
    // without, m_To if they share a QBit; a record without length if it starts in the range.
    bool Wants(std::string_view name, std::uint64_t start, std::uint64_t end) const;
    bool WantsTime(std::uint64_t start, std::uint64_t end) const;  // whatever its name

private:
    bool WantsName(std::string_view name) const;

    const FilterOptions& m_Options;
};

// Whether a name fits a pattern, in which * stands for any text and ? for any one byte.
bool MatchesPattern(std::string_view name, std::string_view pattern);

// End of the record at an index. One without recorded end runs until the next one of its vector
// starts, the last one until the log ends.
std::uint64_t EndOf(const std::vector<McuJob>& records, std::size_t index, std::uint64_t logEnd);

}  // namespace vesk
