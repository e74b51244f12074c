#pragma once

#include <map>
#include <regex>
#include <string>
#include <unordered_set>

namespace vesk {

// The names of a log that a search is after. Case of a to z doesn't count.
class WantedNames {
public:
    // A whole name, or a regular expression (ECMAScript) that any part of a name may fit. Throws
    // Stop for an expression that is none.
    WantedNames(const std::string& name, bool isRegex);

    // Turns to the names of a log, which are the keys.
    template <class Value>
    void Choose(const std::map<std::string, Value>& names) {
        m_Chosen.clear();
        for (const auto& [name, value] : names)
            if (Fits(name)) m_Chosen.insert(name);
    }
    bool Has(const std::string& name) const { return m_Chosen.count(name) != 0; }

private:
    bool Fits(const std::string& name) const;

    std::string m_Name;  // in capitals
    bool m_IsRegex;
    std::regex m_Regex;
    std::unordered_set<std::string> m_Chosen;
};

}  // namespace vesk
