#pragma once

#include <cstdint>
#include <map>

// Time markers: times in QBit by the number that the user sees. Numbers run from 0 to below the
// capacity and say nothing about the order of the times.
class McuMarkerMap : public std::map<std::int32_t, std::uint64_t> {
public:
    static constexpr std::int32_t kCapacity = 50;

    // Gives the time the lowest free number, unless a marker stands there already. False: all
    // numbers are in use.
    bool AddMarker(std::uint64_t time);

    // Moves a marker, possibly onto another. False: there is no such marker.
    bool SetMarkerTime(std::int32_t key, std::uint64_t time);

    // 0 if there is no such marker.
    std::uint64_t GetMarkerTime(std::int32_t key) const;

    // False: there is no such marker.
    bool RemoveMarker(std::int32_t key);

    std::int32_t m_Capacity = kCapacity;
};
