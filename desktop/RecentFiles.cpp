#include "desktop/RecentFiles.h"

namespace vesk {

void RecentFiles::Add(const LogFiles& log) {
    Remove(log);
    m_Logs.insert(m_Logs.begin(), log);
    if (m_Logs.size() > kMost) m_Logs.resize(kMost);
}

void RecentFiles::Remove(const LogFiles& log) {
    std::erase(m_Logs, log);
}

}  // namespace vesk
