#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "platform/CString.h"
#include "platform/Color.h"

namespace vesk {

// The key under which a name's colour is kept: its last four characters as a number, so names that
// end alike share a colour.
std::int32_t ColorKey(std::string_view name);

// The end of the names that have this key: up to four characters, without zeros ahead of them.
std::string NameEnd(std::int32_t key);

}  // namespace vesk

// Colours by key: a name's colour key, or an index. Black is what a missing key gives, and counts
// as not chosen.
class McuColorMap {
public:
    COLORREF Lookup(std::int32_t key) const;

    // Changes the colour of a key that the map holds. False, and nothing is added, for another.
    bool Update(std::int32_t key, COLORREF color);

    std::map<std::int32_t, COLORREF> m_Colors;
    CString m_Name = "SapColor";
};
