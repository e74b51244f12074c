#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vesk {

// Which target description goes with which log, as the user chose it. An empty description is a
// choice too: none.
class TargetChoices {
public:
    static constexpr std::size_t kMost = 200;

    // Keeps the choice for a log. A description becomes the default of logs without a choice; the
    // choice that was made longest ago falls off a full list.
    void Choose(const std::string& log, const std::string& target);

    // The choice for a log, if one was made.
    std::optional<std::string> Of(const std::string& log) const;

    // Log and target, the latest choice last.
    const std::vector<std::pair<std::string, std::string>>& All() const { return m_Choices; }

    std::string m_Default;  // chosen last; empty: none so far

private:
    std::vector<std::pair<std::string, std::string>> m_Choices;
};

}  // namespace vesk
