#pragma once

#include <cstdint>
#include <string>

namespace vesk {

// printf-style text of any length.
std::string FormatText(const char* format, ...) __attribute__((format(printf, 1, 2)));

// A number with a comma between groups of three digits.
std::string GroupedNumber(std::uint64_t);

}  // namespace vesk
