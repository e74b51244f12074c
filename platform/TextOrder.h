#pragma once

#include <string_view>

namespace vesk {

// Order of the lines of sorted lists: by bytes, without regard to the case of a to z. Below 0,
// 0 or above 0 as a comes before b, counts as the same, or comes after it.
int CompareFolded(std::string_view a, std::string_view b);

}  // namespace vesk
