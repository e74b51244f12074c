#include "host/McuColorMap.h"

// Unsigned steps wrap; characters above 127 count as negative.
std::int32_t vesk::ColorKey(std::string_view name) {
    std::uint32_t key = 0;
    for (const char c : name)
        key = key * 256 + static_cast<std::uint32_t>(static_cast<signed char>(c));
    return static_cast<std::int32_t>(key);
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
