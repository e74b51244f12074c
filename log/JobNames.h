#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

#include "log/SharedName.h"

namespace vesk {

// A task, an interrupt or "%Lost", with what its jobs add up to.
struct JobName {
    SharedName m_Name;
    bool m_IsTick = false;      // the tick interrupt's name
    int m_Jobs = 0;             // jobs stored
    std::uint64_t m_Total = 0;  // QBit
};

// The names of a log's jobs, each text once: equal names have equal addresses. Addresses stay
// valid as long as the table.
class JobNames {
public:
    // tickName is the text of the tick interrupt; an empty one makes the empty name the tick.
    explicit JobNames(std::string tickName) : m_TickName(std::move(tickName)) {}

    JobName* Intern(const std::string& text);

    // Null if no job has that name.
    const JobName* Find(const std::string& text) const;

    const std::deque<JobName>& All() const { return m_Names; }

private:
    std::string m_TickName;
    std::deque<JobName> m_Names;
    std::unordered_map<std::string_view, JobName*> m_ByText;  // views into m_Names
};

}  // namespace vesk
