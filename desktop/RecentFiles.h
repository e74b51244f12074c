#pragma once

#include <vector>

#include "desktop/LogFiles.h"

namespace vesk {

// The logs that were opened last, the latest first.
class RecentFiles {
public:
    static constexpr std::size_t kMost = 10;

    // Puts a log in front; the oldest falls off a full list.
    void Add(const LogFiles&);
    void Remove(const LogFiles&);
    const std::vector<LogFiles>& All() const { return m_Logs; }

private:
    std::vector<LogFiles> m_Logs;
};

}  // namespace vesk
