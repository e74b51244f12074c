#include "log/JobNames.h"

namespace vesk {

JobName* JobNames::Intern(const std::string& text) {
    if (const auto found = m_ByText.find(text); found != m_ByText.end()) return found->second;
    JobName& name = m_Names.emplace_back(JobName{SharedName(text)});
    name.m_IsTick = text == m_TickName;
    m_ByText.emplace(name.m_Name.Text(), &name);
    return &name;
}

const JobName* JobNames::Find(const std::string& text) const {
    const auto found = m_ByText.find(text);
    return found == m_ByText.end() ? nullptr : found->second;
}

}  // namespace vesk
