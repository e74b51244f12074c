#include "host/McuColorMap.h"

#include <algorithm>

// Unsigned steps wrap; characters above 127 count as negative.
std::int32_t vesk::ColorKey(std::string_view name) {
    std::uint32_t key = 0;
    for (const char c : name)
        key = key * 256 + static_cast<std::uint32_t>(static_cast<signed char>(c));
    return static_cast<std::int32_t>(key);
}

std::string vesk::NameEnd(std::int32_t key) {
    std::string end(4, '\0');
    auto rest = static_cast<std::uint32_t>(key);
    for (std::size_t i = end.size(); i-- > 0;) {
        const auto c = static_cast<signed char>(rest & 0xFF);
        end[i] = static_cast<char>(c);
        rest = (rest - static_cast<std::uint32_t>(c)) >> 8;
    }
    return end.substr(std::min(end.find_first_not_of('\0'), end.size()));
}

COLORREF McuColorMap::Lookup(std::int32_t key) const {
    const auto found = m_Colors.find(key);
    return found == m_Colors.end() ? 0 : found->second;
}

bool McuColorMap::Update(std::int32_t key, COLORREF color) {
    const auto found = m_Colors.find(key);
    if (found == m_Colors.end()) return false;
    found->second = color;
    return true;
}
