#include "host/McuMarkerMap.h"

#include <algorithm>

bool McuMarkerMap::AddMarker(std::uint64_t time) {
    if (std::any_of(begin(), end(), [time](const auto& marker) { return marker.second == time; }))
        return true;
    for (std::int32_t key = 0; key < m_Capacity; ++key)
        if (emplace(key, time).second) return true;
    return false;
}

bool McuMarkerMap::SetMarkerTime(std::int32_t key, std::uint64_t time) {
    const auto marker = find(key);
    if (marker == end()) return false;
    marker->second = time;
    return true;
}

std::uint64_t McuMarkerMap::GetMarkerTime(std::int32_t key) const {
    const auto marker = find(key);
    return marker == end() ? 0 : marker->second;
}

bool McuMarkerMap::RemoveMarker(std::int32_t key) {
    return erase(key) > 0;
}
