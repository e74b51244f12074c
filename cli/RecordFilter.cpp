#include "cli/RecordFilter.h"

#include <algorithm>

namespace vesk {

bool RecordFilter::Wants(std::string_view name, std::uint64_t start, std::uint64_t end) const {
    return WantsTime(start, end) && WantsName(name);
}

bool RecordFilter::WantsTime(std::uint64_t start, std::uint64_t end) const {
    return start < m_Options.m_To && (end > m_Options.m_From || start >= m_Options.m_From);
}

bool RecordFilter::WantsName(std::string_view name) const {
    const auto fits = [&](const std::string& pattern) { return MatchesPattern(name, pattern); };
    return m_Options.m_Names.empty() ||
           std::any_of(m_Options.m_Names.begin(), m_Options.m_Names.end(), fits);
}

// Only the last * needs a second try: what an earlier one took can stay as short as it was.
bool MatchesPattern(std::string_view name, std::string_view pattern) {
    std::size_t n = 0, p = 0;
    std::size_t star = std::string_view::npos, taken = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            taken = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            ++n;
            ++p;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

std::uint64_t EndOf(const std::vector<McuJob>& records, std::size_t index, std::uint64_t logEnd) {
    const McuJob& record = records[index];
    if (record.m_EndTime > record.m_StartTime) return record.m_EndTime;
    const bool isLast = index + 1 == records.size();
    return std::max(record.m_StartTime, isLast ? logEnd : records[index + 1].m_StartTime);
}

}  // namespace vesk
