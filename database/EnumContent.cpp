#include "database/EnumContent.h"

void EnumContent::Add(const std::string& name, std::int32_t value) {
    m_ByName.emplace(name, m_Entries.size());
    m_ByValue.emplace(value, m_Entries.size());
    m_Entries.emplace_back(name, value);
}

bool EnumContent::GetValue(const std::string& name, int& value) const {
    const auto found = m_ByName.find(name);
    if (found == m_ByName.end()) return false;
    value = m_Entries[found->second].second;
    return true;
}

bool EnumContent::GetName(int value, std::string& name) const {
    auto found = m_ByValue.find(value);
    const auto cut = m_Width == 1   ? m_ByValue.find(value & 0xFF)
                     : m_Width == 2 ? m_ByValue.find(value & 0xFFFF)
                                    : m_ByValue.end();
    // Of the whole value and the cut one, the enumerator that was declared first answers.
    if (cut != m_ByValue.end() && (found == m_ByValue.end() || cut->second < found->second))
        found = cut;
    if (found == m_ByValue.end()) return false;
    name = m_Entries[found->second].first;
    return true;
}
