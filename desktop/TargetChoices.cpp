#include "desktop/TargetChoices.h"

namespace vesk {

void TargetChoices::Choose(const std::string& log, const std::string& target) {
    std::erase_if(m_Choices, [&](const auto& choice) { return choice.first == log; });
    if (m_Choices.size() >= kMost) m_Choices.erase(m_Choices.begin());
    m_Choices.emplace_back(log, target);
    if (!target.empty()) m_Default = target;
}

std::optional<std::string> TargetChoices::Of(const std::string& log) const {
    for (const auto& [path, target] : m_Choices)
        if (path == log) return target;
    return {};
}

}  // namespace vesk
