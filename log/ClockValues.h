#pragma once

#include <cstdint>
#include <string>

class McuJobList;
class EnumContent;

namespace vesk {

// Values that a log's clock takes from the target's database. Each operation appends the text of
// what is missing and gives false.

// The enumeration that holds them; null, with the text, if there is none.
EnumContent* FindClockEnum(const McuJobList&, std::string& error);

// Wrap of the counter and clock rate / origin rate, which must be positive and finite.
bool FindClock(const McuJobList&, std::uint32_t& wrap, float& ratio, std::string& error);

// Counts per frame, where the frame number is computed.
bool FindCountsPerFrame(const McuJobList&, std::uint32_t& counts, std::string& error);

}  // namespace vesk
