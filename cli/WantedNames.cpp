#include "cli/WantedNames.h"

#include <algorithm>

#include "cli/ExitCode.h"
#include "cli/TextEncoding.h"

namespace vesk {

namespace {

// The library's matcher calls itself for each character, and names come from files.
constexpr std::size_t kMostMatched = 1000;

std::string InCapitals(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

std::regex RegexOf(const std::string& text) {
    try {
        return std::regex(text, std::regex::ECMAScript | std::regex::icase | std::regex::optimize);
    } catch (const std::regex_error&) {
        throw Stop(ExitCode::kUsage, "--regex: cannot use \"" + Latin1ToUtf8(text) + "\"");
    }
}

}  // namespace

WantedNames::WantedNames(const std::string& name, bool isRegex)
    : m_Name(InCapitals(name)),
      m_IsRegex(isRegex),
      m_Regex(isRegex ? RegexOf(name) : std::regex()) {}

bool WantedNames::Fits(const std::string& name) const {
    if (!m_IsRegex) return InCapitals(name) == m_Name;
    const std::size_t length = std::min(name.size(), kMostMatched);
    return std::regex_search(name.data(), name.data() + length, m_Regex);
}

}  // namespace vesk
