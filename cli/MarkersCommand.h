#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/ExitCode.h"
#include "cli/Options.h"
#include "cli/Terminal.h"

namespace vesk {

// Where markers come from, one after the other, and what is made of them.
struct MarkerOptions {
    void OfferTo(CLI::App&);

    struct Format {
        bool m_IsMarkerFile = false;
        TableFormat m_Table = TableFormat::kText;
    };

    std::string m_File;  // a marker file; empty: none
    std::string m_Csv;   // lines of marker and time; empty: none
    std::vector<std::pair<std::int32_t, std::uint64_t>> m_Set;
    std::optional<Format> m_Format;  // none: what fits the output's name
};

// vesk markers: markers as a table, or as a marker file.
ExitCode RunMarkers(const MarkerOptions&, const OutputOptions&, Terminal&);

}  // namespace vesk
