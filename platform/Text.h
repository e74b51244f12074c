#pragma once

#include <string>

namespace vesk {

// printf-style text of any length.
std::string FormatText(const char* format, ...) __attribute__((format(printf, 1, 2)));

}  // namespace vesk
