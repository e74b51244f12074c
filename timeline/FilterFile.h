#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "platform/Color.h"

namespace vesk {

// An entry of one of the filter's lists: what it is known by again, and what is chosen for it.
struct FilterRecord {
    std::int32_t m_Key = 0;      // vesk::ColorKey of a name, or a position in the list
    std::int32_t m_Checked = 0;  // 0: off
    COLORREF m_Color = 0;        // 0xFFFFFF: has none

    friend bool operator==(const FilterRecord&, const FilterRecord&) = default;
};

// The filter file (docs/viewer-files.md): the choices of four lists, each a section of records in
// the order of the file, which is that of the list from its last entry to its first.
class FilterFile {
public:
    enum Section : std::uint8_t { kTasks, kFunctions, kExtraValues, kLabels };
    static constexpr std::size_t kSections = 4;

    // Takes as much as is really there: a count that cannot be read, or is negative, counts as 0; a
    // record that is cut off is dropped. False, with a text for the user and nothing taken, for
    // what is no filter file or one of a later version.
    bool Read(const std::string& path, std::string& error);
    bool Read(std::FILE*, std::string& error);

    // Writes beside the path and renames into place. False, with a text for the user and nothing
    // left behind, if that fails.
    bool Write(const std::string& path, std::string& error) const;
    std::string Bytes() const;

    std::array<std::vector<FilterRecord>, kSections> m_Sections;
    bool m_CutOff = false;  // what was read ended before its last section did
};

}  // namespace vesk
