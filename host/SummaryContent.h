#pragma once

#include <cstdint>
#include <string>
#include <vector>

class McuJobList;

namespace vesk {

// Which of the document's colour maps a group's keys belong to.
enum class SummaryColors { kNone, kJobs, kFunctions, kExtraValues };

struct SummaryEntry {
    std::string m_Name;
    std::string m_Value;
    std::int32_t m_ColorKey = 0;
};

// Entries of one sort under a title.
struct SummaryGroup {
    std::string m_Title;
    SummaryColors m_Colors = SummaryColors::kNone;
    std::vector<SummaryEntry> m_Entries;
};

// What a summary says of a log: first the facts about the log as a whole, then its names. Groups
// without entries are left out. Made once per log, so that painting only places texts.
std::vector<SummaryGroup> Summarize(const McuJobList&);

// A number with a comma between groups of three digits.
std::string GroupedNumber(std::uint64_t);

}  // namespace vesk
