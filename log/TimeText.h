#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vesk {

// 1 QBit is 12/13 microseconds.

// Rounded to 3 and to 1 decimals, without the unit's name.
std::string MillisecondsText(std::uint64_t qbits);
std::string MicrosecondsText(std::uint64_t qbits);

// A time as a user writes it: whole QBit, or a number with one of the units us, ms and s, rounded
// to the nearest QBit. Nothing if it is no such time or too late for any log.
std::optional<std::uint64_t> ParseTime(std::string_view text);

}  // namespace vesk
